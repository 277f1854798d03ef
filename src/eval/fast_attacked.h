// Square attack tests of the evaluation, driven by the slider look-ups: the same answers as the
// ray walks of the move generator, at table speed.
#pragma once

#include "eval/terms.h"
#include "movegen/attacks.h"
#include "position/board.h"

// 1 if a white (black) piece attacks `square` (0..63), else 0. Every piece of both colours
// blocks; what stands on the square itself plays no part. A colour with no king attacks nothing
// by king; one with several attacks by its lowest king only.
int fast_attacked_by_white(Board board, int square);
int fast_attacked_by_black(Board board, int square);

namespace eval {

// Looks up the attack set of each of the colour's rooks, bishops, knights and queens into
// in.reach, and returns every square the colour attacks, as one set: square s is in it exactly
// when fast_attacked_by_* of s gives 1. Reads the piece sets, `all` and `king_square` of `in`.
Bitboard attacked_squares_white(eval_input &in);
Bitboard attacked_squares_black(eval_input &in);

// The up to eight neighbours of a king square; nothing for the 64 of an empty king set, for
// which no table has an entry.
inline Bitboard king_neighbours(int king_square)
{
    return king_square < 64 ? king_attacks[king_square] : 0;
}

} // namespace eval
