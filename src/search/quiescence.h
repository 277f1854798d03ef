// Quiescence: a small search of captures, check evasions and a few quiet checks that settles a
// position at the horizon before its score is believed.
#pragma once

#include <climits>
#include <cstdint>

#include "position/board.h"
#include "search/shortcuts.h"

constexpr std::int32_t quiescence_mate_score = -9999; // in check with no move; carries no ply

// Entries into quiescence since the caller last set it to 0; the search itself never reads it.
extern std::uint64_t quiescence_node_count;

// Score of `board` for its side to move, within the window (alpha, beta), with the shortcuts `s`.
// `depth` is a budget spent only by evasions and quiet checks; captures are free. Returns 0 at
// once when search_stop is up. `known_eval`, when not INT32_MIN (unknown_eval), is evaluate of
// `board` for its side to move, already worked out by the caller (the ordering of the parent's
// moves). `known_check` is 1 or 0 when the caller knows whether the side to move is in check
// (the check bit of the move that led here), -1 when it doesn't.
template <Shortcuts s>
std::int32_t quiescence_with(Board board, std::int32_t depth, std::int32_t alpha, std::int32_t beta,
    std::int32_t known_eval, std::int32_t known_check);

// The engine's quiescence.
inline std::int32_t quiescence(Board board, std::int32_t depth, std::int32_t alpha,
    std::int32_t beta, std::int32_t known_eval = INT32_MIN, std::int32_t known_check = -1)
{
    return quiescence_with<engine_shortcuts>(board, depth, alpha, beta, known_eval, known_check);
}

// The literal algorithm, with no shortcut: the oracle for the engine's.
inline std::int32_t quiescence_literal(
    Board board, std::int32_t depth, std::int32_t alpha, std::int32_t beta)
{
    return quiescence_with<no_shortcuts>(board, depth, alpha, beta, INT32_MIN, -1);
}

// True when the side to move in `board` is in check.
bool side_in_check(const Board &board);
