// King placement and opening development: castling, the king's pawn shield, the central pawns,
// minor pieces leaving home and the queen coming out early.
#pragma once

#include "eval/terms.h"
#include "position/board.h"

namespace eval {

// A king on g1 or c1 counts as castled, however it got there, and pays 10 for each pawn
// missing from the three squares in front of it. A king still on e1 is charged while it
// keeps a castling right, to make castling pay; one that has lost both rights is not.
constexpr std::int32_t castled_bonus[3] = { 14, 8, 0 }; // by phase
constexpr std::int32_t uncastled_penalty[3] = { 18, 24, 0 };
constexpr std::int32_t missing_shield_pawn = 10;

template <int us> std::int32_t shield_penalty(int king, Bitboard pawns)
{
    Bitboard shield = 0;
    if (king == relative_square<us>(g1))
        shield = relative_bit<us>(f2) | relative_bit<us>(g2) | relative_bit<us>(h2);
    else if (king == relative_square<us>(c1))
        shield = relative_bit<us>(a2) | relative_bit<us>(b2) | relative_bit<us>(c2);
    return missing_shield_pawn * square_count(shield & ~pawns);
}

template <int us, class Out> void king_development_terms(const eval_input &in, Out &out)
{
    const int king = in.king_square[us];
    std::int32_t score = 0;
    if (king == relative_square<us>(g1) || king == relative_square<us>(c1))
        score = castled_bonus[in.phase];
    else if (king == relative_square<us>(e1) && in.castling[us])
        score = -uncastled_penalty[in.phase];
    put<us, king_development_score>(out, score);
    put<us, castled_shield_penalty>(out, in.pawn_king.shield[us]);
}

// Pawns that have taken the centre: 5 on d3 or e3, 12 on d4 or e4.
template <int us> std::int32_t central_pawn_score(Bitboard pawns)
{
    std::int32_t score = 0;
    if (pawns & relative_bit<us>(d3)) score += 5;
    if (pawns & relative_bit<us>(e3)) score += 5;
    if (pawns & relative_bit<us>(d4)) score += 12;
    if (pawns & relative_bit<us>(e4)) score += 12;
    return score;
}

template <int us, class Out> void central_pawn_opening_terms(const eval_input &in, Out &out)
{
    put<us, central_pawn_opening_score>(out, in.pawn_king.central_pawns[us]);
}

// Knights on b1 and g1, and with them bishops on c1 and f1: the minor pieces not yet out.
template <int us> int knights_at_home(const eval_input &in)
{
    return square_count(in.knights[us] & (relative_bit<us>(b1) | relative_bit<us>(g1)));
}
template <int us> int minors_at_home(const eval_input &in)
{
    return knights_at_home<us>(in)
        + square_count(in.bishops[us] & (relative_bit<us>(c1) | relative_bit<us>(f1)));
}

// Both central pawns still at home: 28 while most minor pieces are undeveloped, and 16 for
// each knight gone from home (moved on or captured) before a central pawn has moved.
template <int us, class Out> void no_central_pawn_terms(const eval_input &in, Out &out)
{
    const Bitboard centre_pawns = relative_bit<us>(d2) | relative_bit<us>(e2);
    std::int32_t penalty = 0;
    if ((in.pawns[us] & centre_pawns) == centre_pawns) {
        if (minors_at_home<us>(in) > 2) penalty += 28;
        penalty += 16 * (2 - knights_at_home<us>(in));
    }
    put<us, no_central_pawn_penalty>(out, penalty);
}

// No own queen on d1 while two or more minor pieces are still at home: 14 for each beyond
// the first. A lost queen pays like one that went out.
template <int us, class Out> void early_queen_terms(const eval_input &in, Out &out)
{
    const int home = minors_at_home<us>(in);
    const bool queen_out = !(in.queens[us] & relative_bit<us>(d1));
    put<us, early_queen_penalty>(out, queen_out && home > 1 ? 14 * (home - 1) : 0);
}

} // namespace eval
