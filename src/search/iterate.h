// Iterative deepening: the one search loop that every `go` and the benchmark run, from
// current_board within a request's limits, one full-window iteration after the other, each
// reporting one line or, for MultiPV, several.
#pragma once

#include <cstdint>

#include "control/dialect.h"
#include "control/search_limits.h"
#include "position/board.h"
#include "search/shortcuts.h"

constexpr int move_text_size = 64, pv_text_size = 1024;
constexpr int most_lines = 256; // MultiPV's ceiling

// What a search is asked: its dialect, its limits, how many best lines each iteration reports,
// and the root moves it may play (every legal one when root_move_count is -1).
struct SearchRequest {
    const Dialect *dialect;
    SearchLimits limits;
    int lines;
    int root_move_count;
    Move root_moves[max_moves];
};

// One reported line of a finished iteration.
struct SearchLine {
    std::int32_t depth;
    std::int32_t multipv; // 1 for the best line, 2 for the next best root move, ...
    std::int32_t score; // for the side to move at the root; mates as plain numbers
    std::int32_t time_ms; // since the search started
    std::int64_t alpha_beta_nodes; // alpha-beta entries so far, as the 32-bit counter reads
    std::uint64_t nodes; // nodes of both kinds so far in this search
    const char *pv; // the line as text, moves divided by blanks
};

// Called for each reported line while the search runs; the front end prints it.
using line_printer = void (*)(const SearchLine &line);

// What a search leaves: the move to play ("0000" when the fixed dialect finds none), the reply
// the best line expects (empty when none), and the number of legal root moves (0: mate or
// stalemate, `mated` telling which).
struct SearchResult {
    char best[move_text_size];
    char ponder[move_text_size];
    int legal_moves;
    bool mated;
};

// Searches current_board as `request` asks, with the shortcuts `s` everywhere in the tree. Leaves
// current_board and the key history as they were, and the counters and the principal variation
// for `sortedmoves`. A stopped iteration is not reported: the move comes from the last whole one.
// In the standard dialect the move is always the first of the last line reported (an iteration
// stopped before any has ended is searched again to depth 1 without limits), and the table keeps
// what it learnt for the next search.
template <Shortcuts s>
void run_search_with(const SearchRequest &request, line_printer print, SearchResult *result);

// The engine's search: every shortcut taken.
inline void run_search(const SearchRequest &request, line_printer print, SearchResult *result)
{
    run_search_with<engine_shortcuts>(request, print, result);
}
