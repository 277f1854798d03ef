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

// One line of an iteration of the standard mode's search.
struct analysis_line {
    std::int32_t depth;
    std::int32_t multipv; // 1 for the best line, 2 for the next best root move, ...
    std::int32_t score; // for the side to move at the root; mates as plain numbers
    std::int32_t time_ms; // since the search started
    std::uint64_t nodes; // alpha-beta and quiescence nodes so far in this search
    const char *pv;
};
using analysis_printer = void (*)(const analysis_line &line);

constexpr int most_lines = 256; // MultiPV's ceiling

// The standard mode's search of current_board: up to search_depth_limit iterations, at most
// counter_plies - 1 (63), each reporting the `lines` best root moves (1..most_lines, no more than
// there are), best first, among root_moves when root_move_count is not -1 (which it is again
// afterwards); within the limits,
// until search_stop. A stopped iteration is not reported and the move comes from the last whole
// one. Returns the move to play ("0000" when there is none) and writes the move the line expects
// in reply, or an empty text, to `ponder` (move_text_size bytes).
const char *analyse(int lines, analysis_printer print, char *ponder);

// The same search with no shortcut anywhere in the tree: the literal algorithm, kept as the
// oracle that the tests prove the engine's search against.
const char *iterate_search_literal(iteration_printer print);
