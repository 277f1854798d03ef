// Pawn structure, the bishop pair, knights on the rim, and pieces shut in by their own pawns or
// king: fixed patterns of pieces on squares.
#pragma once

#include "eval/terms.h"

namespace eval {

// Each fills its term for both colours. The callers decide the phase; the terms themselves
// have one set of values.
void pawn_structure_terms(const eval_input &in, term_values &out);
void bishop_pair_terms(const eval_input &in, term_values &out);
void knight_edge_terms(const eval_input &in, term_values &out);
void bishop_block_terms(const eval_input &in, term_values &out);
void bishop_king_pawn_block_terms(const eval_input &in, term_values &out);
void king_side_bishop_trap_terms(const eval_input &in, term_values &out);
void rook_corner_trap_terms(const eval_input &in, term_values &out);

} // namespace eval
