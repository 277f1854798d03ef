// The move list and perft commands: looking at the move generator from the console.
#pragma once

#include <cstdint>

#include "frontend/session.h"

// `movlist`: the legal moves of current_board in generation order, one per line; nothing at all
// when there are none.
void print_moves();

// Counts the leaves `depth` plies below current_board and prints each root move with its count
// ("e2e4: 20\r\n"), or the move alone at depth 1. Returns the total; 1 with no lines for a depth
// below 1.
// `interrupted`, when given, is passed to perft: a count it ends is no count at all.
std::uint64_t perft_root(int depth, bool (*interrupted)() = nullptr);

// `perft n`: `rest` is the command line after the word. Prints "n=count" and the elapsed time.
// The fixed dialect prints nothing without a number and refuses a negative depth the same way,
// in silence; the standard dialect refuses a depth that is not a number from 0 to 20 with a line,
// and `stop` or `quit` ends the count (a line says so instead of the count).
int run_perft(Session *session, const char *line, char *rest);
