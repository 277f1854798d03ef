// The shortcuts that the engine's search takes over the literal algorithm. Each one gives the
// same result as the literal step it replaces: the search is one body, compiled twice, with all
// of them on for the engine and all of them off for the tests, which prove every figure of the
// one against the other.
#pragma once

#include "movegen/legal.h"
#include "position/board.h"

struct Shortcuts {
    // The evaluation after each move, which the ordering works out, is handed down to the child
    // as its own static score instead of being worked out again there.
    bool hand_down_evals;
    // A child takes its check status from the check bit of the move that led to it, and the
    // horizon hands its own to quiescence, instead of testing the king's square again.
    bool check_bit;
    // Captures that the delta rule skips against quiescence's first best are left out before the
    // sort, which saves their evaluations: the best only rises, so they would be skipped anyway.
    bool delta_before_sort;
    // The fast legal generator, with its captures-only twin, instead of the literal one.
    bool fast_generator;
};

constexpr Shortcuts engine_shortcuts { true, true, true, true };
constexpr Shortcuts no_shortcuts { false, false, false, false };

// The legal list and the captures, by the generator that `s` names.
template <Shortcuts s> void legal_moves(const Board &board, MoveList *list)
{
    if constexpr (s.fast_generator)
        generate_moves(board, list);
    else
        generate_moves_literal(board, list);
}

template <Shortcuts s> void legal_captures(const Board &board, MoveList *list)
{
    if constexpr (s.fast_generator)
        generate_captures(board, list);
    else
        generate_captures_literal(board, list);
}
