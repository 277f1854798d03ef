// The command dispatcher: one line in, the command carried out to its end.
#pragma once

// Runs the command on `text` (any length; not written to) in the mode the engine is in. Returns 1
// after `quit`, else 0.
int handle_command(const char *text);

// The same in the default mode, the protocol's literals as they stand.
int default_command(const char *text);

// The name and version in the `uci` answer: fixed text, whatever the release (--version gives
// the release and the commit).
constexpr char engine_version[] = "Korvane 1.0";
