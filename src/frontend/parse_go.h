// Reading the limits of a `go` line.
#pragma once

#include <cstdint>

// Reads the arguments of a `go` line (the whole line) into the three limits; the clock words
// are read for the side to move of current_board.
void parse_go(const char *line, std::int32_t *depth, std::int32_t *time_ms, std::int32_t *active);
