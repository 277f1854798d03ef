// King safety and centre control: the terms that ask which squares each colour attacks.
#pragma once

#include "eval/terms.h"
#include <array>

#include "eval/attack_maps.h"
#include "position/board.h"

namespace eval {

// Pawn cover squares by king square; entry 64 (no king) is empty.
template <int us> constexpr std::array<Bitboard, 65> make_pawn_cover()
{
    std::array<Bitboard, 65> table {};
    constexpr int forward = us == white ? 1 : -1;
    for (int square = 0; square < 64; square++)
        for (int step = 1; step <= 2; step++)
            for (int side = -1; side <= 1; side++) {
                const int file = square_file(square) + side;
                const int rank = square_rank(square) + forward * step;
                if (file >= 0 && file < 8 && rank >= 0 && rank < 8)
                    table[square] |= square_bit(rank * 8 + file);
            }
    return table;
}
constexpr std::array<Bitboard, 65> pawn_cover[2]
    = { make_pawn_cover<white>(), make_pawn_cover<black>() };

// One unit of danger for each attacked square of the king ring (the king's square and its
// neighbours) counted twice, one less for each own pawn on the cover squares, four more when
// the king itself is attacked (a check thus costs six). Never below zero, then weighed by the
// phase: danger matters most with the queens and rooks still on.
constexpr std::int32_t king_safety_factor[3] = { 6, 4, 1 };

// Own pawns on the cover squares of the colour's king.
template <int us> std::int32_t cover_pawns(int king_square, Bitboard pawns)
{
    return square_count(pawn_cover[us][king_square] & pawns);
}

template <int us, class Out> void king_safety_terms(const eval_input &in, Out &out)
{
    constexpr int them = 1 - us;
    const int square = in.king_square[us];
    const Bitboard ring = square < 64 ? king_neighbours(square) | square_bit(square) : 0;
    std::int32_t raw = 2 * square_count(ring & in.attacked[them]);
    raw -= in.pawn_king.cover[us];
    if (square < 64 && (in.attacked[them] & square_bit(square))) raw += 4;
    if (raw < 0) raw = 0;
    put<us, king_safety_penalty>(out, raw * king_safety_factor[in.phase]);
}

// The four centre squares d4, e4, d5, e5, the same for both colours. A colour scores for
// standing on each, a pawn more than another piece (the king included); in the opening it
// also scores for attacking each, more when the other colour does not.
constexpr Bitboard centre = square_bit(d4) | square_bit(e4) | square_bit(d5) | square_bit(e5);
constexpr std::int32_t centre_pawn[3] = { 10, 5, 0 }; // by phase
constexpr std::int32_t centre_piece[3] = { 6, 3, 0 };
constexpr std::int32_t centre_contested = 5, centre_held = 8;

template <int us, class Out> void center_terms(const eval_input &in, Out &out)
{
    constexpr int them = 1 - us;
    const Bitboard pawns = in.pawns[us] & centre;
    const Bitboard others = in.pieces[us] & centre & ~pawns;
    std::int32_t score = centre_pawn[in.phase] * square_count(pawns)
        + centre_piece[in.phase] * square_count(others);
    if (in.phase == opening) {
        const Bitboard ours = in.attacked[us] & centre, theirs = in.attacked[them] & centre;
        score += centre_contested * square_count(ours & theirs)
            + centre_held * square_count(ours & ~theirs);
    }
    put<us, center_score>(out, score);
}

} // namespace eval
