// Pawn structure, the bishop pair, knights on the rim, and pieces shut in by their own pawns or
// king: fixed patterns of pieces on squares.
#pragma once

#include "eval/terms.h"
#include "position/board.h"

namespace eval {

// The squares of a set that have another square of the set further up the same file.
constexpr Bitboard with_one_above(Bitboard set)
{
    Bitboard below = set >> 8; // squares strictly below some square of the set
    below |= below >> 8;
    below |= below >> 16;
    below |= below >> 32;
    return set & below;
}

// Doubled pawns, by count on a file alone: 10 for each pawn beyond the first, 6 more for
// each beyond the second (0, 10, 26, 42, ... for 1, 2, 3, 4, ... pawns). On one file, the
// pawns with at least one own pawn above number n - 1, those with two above n - 2.
constexpr std::int32_t doubled_pawn_penalty(Bitboard pawns)
{
    const Bitboard stacked = with_one_above(pawns);
    const Bitboard tripled = with_one_above(stacked);
    return 10 * square_count(stacked) + 6 * square_count(tripled);
}

template <int us, class Out> void pawn_structure_terms(const eval_input &in, Out &out)
{
    put<us, pawn_structure_penalty>(out, in.pawn_king.pawn_structure[us]);
}

// Two bishops or more, whatever the colours of their squares.
template <int us, class Out> void bishop_pair_terms(const eval_input &in, Out &out)
{
    put<us, bishop_pair_bonus>(out, in.bishop_count[us] >= 2 ? 18 : 0);
}

// A knight on the board's rim: 7 on an edge, 12 in a corner.
constexpr Bitboard rim = file_a | file_h | rank_1 | rank_8;
constexpr Bitboard corners = square_bit(a1) | square_bit(h1) | square_bit(a8) | square_bit(h8);

template <int us, class Out> void knight_edge_terms(const eval_input &in, Out &out)
{
    put<us, knight_edge_penalty>(
        out, 7 * square_count(in.knights[us] & rim) + 5 * square_count(in.knights[us] & corners));
}

// A bishop whose two forward diagonal squares (one rank toward the enemy) hold own pawns:
// 7 for one, 11 for two. Squares off the board count as empty. Worked out for all bishops at
// once: the bishops blocked on the a-file side, those blocked on the h-file side, and those
// blocked on both, which pay 7 + 7 - 3.
constexpr std::int32_t bishop_block_one = 7, bishop_block_both = 11;

template <int us, class Out> void bishop_block_terms(const eval_input &in, Out &out)
{
    const Bitboard bishops = in.bishops[us], pawns = in.pawns[us];
    // A bishop on s with a pawn on its front square s + 7 (s - 9 for black), on the a-file side.
    const Bitboard left = bishops & ~file_a & (us == white ? pawns >> 7 : pawns << 9);
    // The same with s + 9 (s - 7 for black), on the h-file side.
    const Bitboard right = bishops & ~file_h & (us == white ? pawns >> 9 : pawns << 7);
    put<us, bishop_block_penalty>(out,
        bishop_block_one * square_count(left ^ right)
            + bishop_block_both * square_count(left & right));
}

// A bishop on e3 in front of its pawn on e2 holds up the king's pawn: 28, or 48 when the
// other bishop is still shut in on f1 behind a pawn on g2.
template <int us, class Out> void bishop_king_pawn_block_terms(const eval_input &in, Out &out)
{
    const Bitboard bishops = in.bishops[us], pawns = in.pawns[us];
    std::int32_t penalty = 0;
    if ((bishops & relative_bit<us>(e3)) && (pawns & relative_bit<us>(e2))) {
        penalty = 28;
        if ((bishops & relative_bit<us>(f1)) && (pawns & relative_bit<us>(g2))) penalty = 48;
    }
    put<us, bishop_king_pawn_block_penalty>(out, penalty);
}

// The king's bishop at home on f1 behind pawns on e2 and g2. No twin on the queen side.
template <int us, class Out> void king_side_bishop_trap_terms(const eval_input &in, Out &out)
{
    const Bitboard pawns = relative_bit<us>(e2) | relative_bit<us>(g2);
    const bool trapped = (in.bishops[us] & relative_bit<us>(f1)) && (in.pawns[us] & pawns) == pawns;
    put<us, king_side_bishop_trap_penalty>(out, trapped ? 16 : 0);
}

// A rook in its corner behind its own pawn with the king beside it on the knight's square:
// a1 with b1 and a2, h1 with g1 and h2. 16 for each such corner.
template <int us, class Out> void rook_corner_trap_terms(const eval_input &in, Out &out)
{
    const int king = in.king_square[us];
    const Bitboard rooks = in.rooks[us], pawns = in.pawns[us];
    std::int32_t penalty = 0;
    if (king == relative_square<us>(b1) && (rooks & relative_bit<us>(a1))
        && (pawns & relative_bit<us>(a2)))
        penalty += 16;
    if (king == relative_square<us>(g1) && (rooks & relative_bit<us>(h1))
        && (pawns & relative_bit<us>(h2)))
        penalty += 16;
    put<us, rook_corner_trap_penalty>(out, penalty);
}

} // namespace eval
