// The evaluation: one signed score for a position, worked out from the twelve piece sets at every
// call; only the figures of the pawn-and-king structure come from a cache, which changes no
// result.
#pragma once

#include <cstdint>

#include "eval/terms.h"
#include "position/board.h"

// The score in hundredths of a pawn: white's total minus black's when `side` is nonzero, black's
// minus white's when it is zero. Reads the twelve sets and the castling flags only, never the side
// to move. A nonzero `report` prints the term report before returning; the result is the same.
// Knows nothing of mate, draws or repetition, and is not clamped. A garbled board is scored as far
// as it goes, reading nothing outside a table: a colour without a king has no king safety or
// placement terms, one with several kings has them for its lowest king (every king still reads
// the table), and a square in two sets counts in both.
// The board is read in place, never changed.
std::int32_t evaluate(const Board &board, int side, int report);

namespace eval {

// Everything one call works out: the phase, every term of both colours before its weight (zero
// where the phase switches it off), and the two totals.
struct breakdown {
    int phase;
    term_values terms;
    std::int32_t total[2];
};

breakdown evaluate_terms(const Board &board);

} // namespace eval

// One position's evaluation kept whole, from which the positions a move away are scored: its
// facts (with its own copy of the pawn-and-king figures, since the cache slot may be taken by
// another structure meanwhile), the figures of each piece kind and every term. What a frame
// holds depends on the twelve sets and the castling flags alone.
struct eval_frame {
    eval::eval_input in;
    eval::kind_figures kinds[2][eval::kind_count];
    eval::term_values terms;
};

// Writes the frame of `board`.
void frame_position(const Board &board, eval_frame &frame);

// Whether `frame` holds what frame_position would write for `board`.
bool is_frame_of(const eval_frame &frame, const Board &board);

// Exactly evaluate(child, side, 0), for any board, from the frame of another position: what
// differs from it is worked out again, the rest is taken over, so the fewer sets differ the
// less work. The child's own frame goes to `child_frame` when it isn't null.
std::int32_t evaluate_child(
    const eval_frame &parent, const Board &child, int side, eval_frame *child_frame = nullptr);
