// The piece-square tables: what the pieces are worth by square.
#pragma once

#include "eval/terms.h"
#include "position/board.h"

namespace eval {

// Where a colour reads a table for a piece of kind `piece` on `square`: white at the square
// itself; black at the board turned by 180 degrees (files reversed too), except that a black king
// on the eighth rank reads its own file on the first.
template <int us> constexpr int table_index(int piece, int square)
{
    if constexpr (us == white) return square;
    if (piece == king && square_rank(square) == 7) return square_file(square);
    return 63 - square;
}

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

// Sum of the table over a set of pieces of one kind, read from the colour's side, square by
// square: for the king, which is one piece.
template <int us> std::int32_t table_sum(const square_table &table, int piece, Bitboard set)
{
    std::int32_t sum = 0;
    for (; set; set &= set - 1) sum += table[table_index<us>(piece, first_square(set))];
    return sum;
}

// The same table as bit planes, for the kinds that come several at a time: the value on a
// square is `low` plus 2^k for each plane k that holds the square, so the sum over a set is
// low * count(set) plus 2^k * count(set & plane k), with no walk over the squares. The planes
// are worked out from the table above when compiling, for each colour through table_index.
constexpr int plane_count = 3;
struct table_planes {
    std::int32_t low;
    Bitboard plane[plane_count];
};

template <int us> constexpr table_planes make_planes(const square_table &table, int piece)
{
    table_planes planes {};
    planes.low = table[0];
    for (int s = 0; s < 64; s++)
        if (table[s] < planes.low) planes.low = table[s];
    for (int s = 0; s < 64; s++) {
        const std::int32_t rest = table[table_index<us>(piece, s)] - planes.low;
        for (int k = 0; k < plane_count; k++)
            if (rest >> k & 1) planes.plane[k] |= square_bit(s);
    }
    return planes;
}

// Whether every value of the table is `low` plus a sum of the planes' powers of two.
constexpr bool fits_planes(const square_table &table)
{
    std::int32_t low = table[0], high = table[0];
    for (int s = 0; s < 64; s++) {
        if (table[s] < low) low = table[s];
        if (table[s] > high) high = table[s];
    }
    return high - low < (1 << plane_count);
}
static_assert(fits_planes(rook_table) && fits_planes(knight_table) && fits_planes(bishop_table)
    && fits_planes(queen_table) && fits_planes(pawn_table) && fits_planes(pawn_table_ending));

// Both colours' planes of one table.
struct colour_planes {
    table_planes of[2];
};
constexpr colour_planes planes_of(const square_table &table, int piece)
{
    return { { make_planes<white>(table, piece), make_planes<black>(table, piece) } };
}

constexpr colour_planes rook_planes = planes_of(rook_table, rook);
constexpr colour_planes knight_planes = planes_of(knight_table, knight);
constexpr colour_planes bishop_planes = planes_of(bishop_table, bishop);
constexpr colour_planes queen_planes = planes_of(queen_table, queen);
constexpr colour_planes pawn_planes = planes_of(pawn_table, pawn);
constexpr colour_planes pawn_planes_ending = planes_of(pawn_table_ending, pawn);

inline std::int32_t planes_sum(const table_planes &planes, Bitboard set)
{
    return planes.low * square_count(set) + square_count(set & planes.plane[0])
        + 2 * square_count(set & planes.plane[1]) + 4 * square_count(set & planes.plane[2]);
}
static_assert(plane_count == 3, "planes_sum reads three planes");

// The piece tables of one colour's rooks, knights, bishops and queens. When no square holds two
// of them, as on every real board, each plane is laid over the four kinds at once: the sum is
// the lows times the counts plus 2^k times the count of the union of each kind's set and its
// plane k, three population counts instead of twelve. A garbled board with pieces stacked on a
// square is summed kind by kind.
template <int us> std::int32_t piece_table_sum(const eval_input &in)
{
    const Bitboard rooks = in.rooks[us], knights = in.knights[us], bishops = in.bishops[us],
                   queens = in.queens[us];
    const table_planes &r = rook_planes.of[us], &n = knight_planes.of[us],
                       &b = bishop_planes.of[us], &q = queen_planes.of[us];
    const int rook_count = in.rook_count[us], knight_count = in.knight_count[us],
              bishop_count = in.bishop_count[us], queen_count = in.queen_count[us];
    if (square_count(rooks | knights | bishops | queens)
        != rook_count + knight_count + bishop_count + queen_count)
        return planes_sum(r, rooks) + planes_sum(n, knights) + planes_sum(b, bishops)
            + planes_sum(q, queens);
    Bitboard plane[plane_count];
    for (int k = 0; k < plane_count; k++)
        plane[k] = (rooks & r.plane[k]) | (knights & n.plane[k]) | (bishops & b.plane[k])
            | (queens & q.plane[k]);
    return r.low * rook_count + n.low * knight_count + b.low * bishop_count + q.low * queen_count
        + square_count(plane[0]) + 2 * square_count(plane[1]) + 4 * square_count(plane[2]);
}

// The king and pawn table values of a colour, with the ending's tables or the others.
template <int us> std::int32_t king_pawn_table_sum(bool end, Bitboard king_set, Bitboard pawns)
{
    return table_sum<us>(end ? king_table_ending : king_table, king, king_set)
        + planes_sum(end ? pawn_planes_ending.of[us] : pawn_planes.of[us], pawns);
}

template <int us, class Out> void table_terms(const eval_input &in, Out &out)
{
    if (term_active[piece_tables][in.phase]) put<us, piece_tables>(out, piece_table_sum<us>(in));
    const bool end = in.phase == ending;
    put<us, king_pawn_tables>(out, in.pawn_king.king_pawn_tables[us][end]);
}

} // namespace eval
