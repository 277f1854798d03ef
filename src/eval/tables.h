// The piece-square tables: what the pieces are worth by square.
#pragma once

#include "eval/terms.h"

namespace eval {

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
