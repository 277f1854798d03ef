// The command dispatcher: one line in, the command carried out to its end.
#pragma once

#include "frontend/session.h"

// Runs the command on `text` (any length up to the dialect's longest line; not written to) as
// the session's dialect reads it. Returns 1 after `quit`, else 0.
int handle_command(Session *session, const char *text);

// The name and version in the `uci` answer: fixed text, whatever the release (--version gives
// the release and the commit).
constexpr char engine_version[] = "Korvane 1.0";
