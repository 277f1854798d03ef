// King safety and centre control: the terms that ask which squares each colour attacks.
#pragma once

#include "eval/terms.h"

namespace eval {

// King Safety Penalty of both colours, after the phase factor. Reads in.attacked.
void king_safety_terms(const eval_input &in, term_values &out);

// Center Score of both colours, for the opening and the middlegame. Reads in.attacked.
void center_terms(const eval_input &in, term_values &out);

// The squares a colour's own pawns shield its king from: the king's file and its two
// neighbours, on the two ranks in front of the king from the colour's own side; only the squares
// on the board. Nothing for the 64 of an empty king set.
Bitboard pawn_cover_white(int king_square);
Bitboard pawn_cover_black(int king_square);

} // namespace eval
