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
