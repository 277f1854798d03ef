// King placement and opening development: castling, the king's pawn shield, the central pawns,
// minor pieces leaving home and the queen coming out early.
#pragma once

#include "eval/terms.h"

namespace eval {

// King Development Score and Castled Shield Penalty of both colours, with the values of
// in.phase (opening or middlegame).
void king_development_terms(const eval_input &in, term_values &out);

// Central Pawn Opening Score, No Central Pawn Penalty and Early Queen Penalty of both colours.
void central_pawn_opening_terms(const eval_input &in, term_values &out);
void no_central_pawn_terms(const eval_input &in, term_values &out);
void early_queen_terms(const eval_input &in, term_values &out);

} // namespace eval
