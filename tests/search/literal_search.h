// The search exactly as its rules state it, kept as the oracle for the engine's faster search.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "position/board.h"

namespace literal {

struct search_row {
    int depth;
    std::uint64_t nodes;
    int score;
    std::string pv;
    bool operator==(const search_row &) const = default;
};

void order_moves(int ply, const Board &board, MoveList *list, std::uint64_t key);
void order_by_evaluation(const Board &board, MoveList *list);
std::int32_t quiescence(Board board, std::int32_t depth, std::int32_t alpha, std::int32_t beta);
std::int32_t alpha_beta(Board board, std::int32_t depth, std::int32_t alpha, std::int32_t beta,
    std::uint64_t key, int parent_ply);

// Searches current_board to search_depth_limit, with no time limit; returns the rows of the
// finished iterations and leaves the move to play in *best.
std::vector<search_row> iterate(const char **best);

} // namespace literal
