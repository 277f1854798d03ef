// The command dispatcher: one line in, the command carried out to its end.
#pragma once

// Runs the command on `text` (any length; not written to). Returns 1 after `quit`, else 0.
int handle_command(const char *text);

// The name and version, as `uci` and --version give them.
constexpr char engine_version[] = "Korvane 1.0";
