// Material and the piece-square tables: what the pieces are worth by kind and by square.
#pragma once

#include "terms.h"

namespace eval {

// Material of one colour: pawn 100, rook 500, knight 300, bishop 320, queen 900; the king none.
std::int32_t material_of(const eval_input &in, int us);

// The table values of both colours into piece_tables and king_pawn_tables, for in.phase.
void table_terms(const eval_input &in, term_values &out);

// Where a colour reads a table for a piece of kind `piece` on `square`: white at the square
// itself; black at the board turned by 180 degrees (files reversed too), except that a black king
// on the eighth rank reads its own file on the first.
template <int us> constexpr int table_index(int piece, int square)
{
    if constexpr (us == white) return square;
    if (piece == king && square_rank(square) == 7) return square_file(square);
    return 63 - square;
}

} // namespace eval
