// Material and the piece-square tables.
#include "tables.h"

#include "square_count.h"

namespace eval {

namespace {

// Each table is laid out a1 first, so every row is one rank read from a to h, with the first
// rank at the top (upside down from a board diagram). White's view; black reads through
// table_index.
using square_table = std::int32_t[64];

constexpr square_table king_table_ending = {
    0, 0, 0, 0, 0, 0, 0, 0, //
    0, 0, 0, 0, 0, 0, 0, 0, //
    0, 0, 1, 1, 1, 1, 0, 0, //
    0, 0, 1, 2, 2, 1, 0, 0, //
    0, 0, 1, 2, 2, 1, 0, 0, //
    0, 0, 1, 1, 1, 1, 0, 0, //
    0, 0, 0, 0, 0, 0, 0, 0, //
    0, 0, 0, 0, 0, 0, 0, 0, //
};

constexpr square_table king_table = {
    10, 15, 18, 15, 17, 15, 18, 10, //
    5, 10, 10, 10, 10, 10, 10, 5, //
    0, 5, 5, 5, 5, 5, 5, 0, //
    0, 0, 0, 0, 0, 0, 0, 0, //
    0, 0, 0, 0, 0, 0, 0, 0, //
    0, 0, 0, 0, 0, 0, 0, 0, //
    0, 0, 0, 0, 0, 0, 0, 0, //
    0, 0, 0, 0, 0, 0, 0, 0, //
};

constexpr square_table queen_table = {
    -2, -1, -1, 2, 2, -1, -1, -2, //
    -1, 1, 1, 1, 1, 1, 1, -1, //
    -1, 1, 1, 1, 1, 1, 1, -1, //
    -2, 1, 1, 1, 1, 1, 1, -2, //
    -2, 1, 1, 1, 1, 1, 1, -2, //
    -1, 1, 1, 1, 1, 1, 1, -1, //
    -1, 1, 1, 1, 1, 1, 1, -1, //
    -2, -1, -1, 2, 2, -1, -1, -2, //
};

constexpr square_table rook_table = {
    0, 0, 0, 0, 0, 0, 0, 0, //
    -1, 0, 0, 0, 0, 0, 0, -1, //
    -1, 0, 0, 0, 0, 0, 0, -1, //
    -1, 0, 0, 0, 0, 0, 0, -1, //
    -1, 0, 0, 0, 0, 0, 0, -1, //
    -1, 0, 0, 0, 0, 0, 0, -1, //
    -1, 0, 0, 0, 0, 0, 0, -1, //
    0, 0, 1, 1, 1, 1, 0, 0, //
};

constexpr square_table bishop_table = {
    -2, -1, -2, -1, -1, -2, -1, -2, //
    -1, 2, 0, 1, 1, 0, 2, -1, //
    -1, 0, 1, 1, 1, 1, 0, -1, //
    -1, 1, 2, 2, 2, 2, 1, -1, //
    -1, 1, 2, 2, 2, 2, 1, -1, //
    -1, 0, 1, 1, 1, 1, 0, -1, //
    -1, 2, 0, 1, 1, 0, 2, -1, //
    -2, -1, -2, -1, -1, -2, -1, -2, //
};

constexpr square_table knight_table = {
    -5, -2, -4, -4, -4, -4, -2, -5, //
    -4, -4, -3, -3, -3, 0, -4, -4, //
    -4, -3, 0, -1, -1, 0, -3, -4, //
    -4, -3, 0, 1, 1, 0, -3, -4, //
    -4, -3, 0, 1, 1, 0, -3, -4, //
    -4, -3, 0, -1, -1, 0, -3, -4, //
    -4, -4, -3, -3, -3, -3, -4, -4, //
    -5, -2, -4, -4, -4, -4, -2, -5, //
};

constexpr square_table pawn_table = {
    0, 0, 0, 0, 0, 0, 0, 0, //
    0, 1, 1, -1, -1, 1, 1, 0, //
    0, 0, -1, 0, 0, -1, 0, 0, //
    0, 0, 0, 3, 3, 0, 0, 0, //
    1, 1, 1, 3, 3, 1, 3, 1, //
    2, 2, 2, 4, 4, 2, 2, 2, //
    3, 3, 3, 3, 3, 3, 3, 3, //
    0, 0, 0, 0, 0, 0, 0, 0, //
};

constexpr square_table pawn_table_ending = {
    0, 0, 0, 0, 0, 0, 0, 0, //
    1, 1, 1, 1, 1, 1, 1, 1, //
    2, 2, 2, 2, 2, 2, 2, 2, //
    3, 3, 3, 3, 3, 3, 3, 3, //
    4, 4, 4, 4, 4, 4, 4, 4, //
    5, 5, 5, 5, 5, 5, 5, 5, //
    6, 6, 6, 6, 6, 6, 6, 6, //
    0, 0, 0, 0, 0, 0, 0, 0, //
};

// Sum of the table over a set of pieces of one kind, read from the colour's side.
template <int us> std::int32_t table_sum(const square_table &table, int piece, Bitboard set)
{
    std::int32_t sum = 0;
    for (; set; set &= set - 1) sum += table[table_index<us>(piece, first_square(set))];
    return sum;
}

template <int us> void table_terms(const eval_input &in, term_values &out)
{
    std::int32_t *value = out.value[us];
    if (term_active[piece_tables][in.phase])
        value[piece_tables] = table_sum<us>(rook_table, rook, in.rooks[us])
            + table_sum<us>(knight_table, knight, in.knights[us])
            + table_sum<us>(bishop_table, bishop, in.bishops[us])
            + table_sum<us>(queen_table, queen, in.queens[us]);
    const bool end = in.phase == ending;
    value[king_pawn_tables]
        = table_sum<us>(end ? king_table_ending : king_table, king, in.kings[us])
        + table_sum<us>(end ? pawn_table_ending : pawn_table, pawn, in.pawns[us]);
}

} // namespace

std::int32_t material_of(const eval_input &in, int us)
{
    return 100 * square_count(in.pawns[us]) + 500 * square_count(in.rooks[us])
        + 300 * square_count(in.knights[us]) + 320 * square_count(in.bishops[us])
        + 900 * square_count(in.queens[us]);
}

void table_terms(const eval_input &in, term_values &out)
{
    table_terms<white>(in, out);
    table_terms<black>(in, out);
}

} // namespace eval
