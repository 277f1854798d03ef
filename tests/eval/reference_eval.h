// The evaluation written out literally, square by square, with no attack table: the oracle that
// the fast evaluation is proven against.
#pragma once

#include <cstdint>

#include "eval/terms.h"
#include "position/board.h"

struct reference_scores {
    int phase;
    std::int32_t value[2][eval::term_count]; // the same layout as eval::term_values
    std::int32_t total[2];
};

// Every term of both colours and the totals, from the piece sets alone.
reference_scores reference_evaluate(const Board &board);

// The score for `side` (nonzero white), as evaluate gives it.
std::int32_t reference_score(const Board &board, int side);

// 1 if a piece of `colour` (eval::white or eval::black) attacks `square`: rays walked square by
// square, every piece a blocker, the lowest king only, no pawn attack on the attacker's first two
// ranks.
int reference_attacked(const Board &board, int colour, int square);
