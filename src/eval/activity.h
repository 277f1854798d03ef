// Piece activity: what the rooks, bishops, knights and queens see, the rooks' files, and rooks
// and queens standing connected.
#pragma once

#include "eval/terms.h"

namespace eval {

// Mobility and Attack of every piece kind, and free_squares, for both colours.
void mobility_terms(const eval_input &in, term_values &out);

// Rook File Score of both colours: rooks on files without own pawns.
void rook_file_terms(const eval_input &in, term_values &out);

// Coord Score of both colours: rooks connected with rooks and with queens.
void coord_terms(const eval_input &in, term_values &out);

} // namespace eval
