// Iterative deepening: the search that a `go` runs, from current_board within the limits, one
// full-window iteration after the other.
#pragma once

#include <cstdint>

#include "position/board.h"

// What one finished iteration makes public.
struct iteration_report {
    std::int32_t depth;
    std::int32_t time_ms; // since the search started
    std::uint64_t nodes; // alpha-beta nodes so far in this search
    std::int32_t score; // for the side to move at the root; mates as plain numbers
    const char *pv; // the line as text, moves divided by blanks
};

// Called once per finished iteration, while the search runs; the front end prints it.
using iteration_printer = void (*)(const iteration_report &report);

constexpr int move_text_size = 64, pv_text_size = 1024;

extern char best_move_text[move_text_size];
extern char pv_text[pv_text_size];

// Searches current_board to search_depth_limit iterations, within the time limit when
// time_limit_active is set, until search_stop. Leaves current_board and the key history as they
// were, and the counters and the principal variation for `sortedmoves`. Returns the move to
// play as text, "0000" when there is none.
const char *iterate_search(iteration_printer print);

// The same search with no shortcut anywhere in the tree: the literal algorithm, kept as the
// oracle that the tests prove the engine's search against.
const char *iterate_search_literal(iteration_printer print);
