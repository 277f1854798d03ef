// The move list and perft commands: looking at the move generator from the console.
#pragma once

#include <cstdint>

// `movlist`: the legal moves of current_board in generation order, one per line; nothing at all
// when there are none.
void print_moves();

// Counts the leaves `depth` plies below current_board and prints each root move with its count
// ("e2e4: 20\r\n"), or the move alone at depth 1. Returns the total; 1 with no lines for a depth
// below 1.
std::uint64_t perft_root(int depth);

// `perft n`: `rest` is the command line after the word. Prints "n=count" and the elapsed time.
// Without a number it prints nothing; a negative depth is refused the same way, in silence.
void perft_command(char *rest);
