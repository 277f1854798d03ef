// The standard dialect's options, declared once: the `uci` answer lists them and `setoption`
// sets them from the same table.
#pragma once

#include "frontend/session.h"

// The `option` lines of the `uci` answer.
void print_options();

// `setoption name <name> [value <value>]`; names in any case. A value out of range is refused
// with one `info string` line and changes nothing.
int run_setoption(Session *session, const char *line, char *rest);

// Reads `text` whole as a decimal integer into *value. Returns false for anything else.
bool read_number(const char *text, long long *value);
