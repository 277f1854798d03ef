// Start-up and position set-up for suites that test the search without the command dispatcher.
#pragma once

#include <cstring>

#include "position/fen.h"
#include "search/tt.h"

// Sets up the position of a whole `position startpos ...` or `position fen ...` line and clears
// the hash table, as the position command does.
inline void set_position(const char *line)
{
    if (std::strncmp(line, "position fen ", 13) == 0) set_position_fen(line);
    if (std::strncmp(line, "position startpos", 17) == 0) set_position_start(line);
    hash_clear();
}
