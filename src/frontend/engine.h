// Start-up and the command loop.
#pragma once

#include "frontend/session.h"

// Builds the tables, the start position with its key and history, and the dialect's hash table,
// and hands the input poll its rules. Does not return when the hash table can't be had.
void engine_init(const Session &session);

// Reads and runs command lines until `quit` or the end of input, then frees the hash table.
void command_loop(Session *session);
