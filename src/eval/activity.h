// Piece activity: what the rooks, bishops, knights and queens see, the rooks' files, and rooks
// and queens standing connected.
#pragma once

#include "eval/terms.h"
#include "position/board.h"

namespace eval {

// Mobility and Attack of every piece kind, and the free figure: counted with the attack map.
template <int us, class Out> void mobility_terms(const eval_input &in, Out &out)
{
    const std::int32_t *count = in.activity[us].count;
    put<us, rook_mobility>(out, count[rook_mobility]);
    put<us, rook_attack>(out, count[rook_attack]);
    put<us, bishop_mobility>(out, count[bishop_mobility]);
    put<us, bishop_attack>(out, count[bishop_attack]);
    put<us, knight_mobility>(out, count[knight_mobility]);
    put<us, knight_attack>(out, count[knight_attack]);
    put<us, queen_mobility>(out, count[queen_mobility]);
    put<us, queen_attack>(out, count[queen_attack]);
    put<us, free_squares>(out, in.activity[us].free);
}

// A rook on a file without own pawns: 12 when the file is open, 7 when only enemy pawns
// stand on it. Its rank plays no part.
constexpr std::int32_t open_file_bonus = 12, half_open_file_bonus = 7;

template <int us, class Out> void rook_file_terms(const eval_input &in, Out &out)
{
    constexpr int them = 1 - us;
    std::int32_t score = 0;
    for (Bitboard set = in.rooks[us]; set; set &= set - 1) {
        const Bitboard file = file_a << square_file(first_square(set));
        if (in.pawns[us] & file) continue;
        score += in.pawns[them] & file ? half_open_file_bonus : open_file_bonus;
    }
    put<us, rook_file_score>(out, score);
}

// Two pieces are connected when they share a rank or a file with nothing between them,
// which is when one stands in the other's rook look-up. Pairs of rooks and rook-queen pairs
// count; queen pairs and diagonals don't. Only a colour's ten lowest rooks and ten lowest
// queens take part, which cuts nothing in a real game. A rook and a queen on one square, which
// only a garbled board has, are not connected.
constexpr std::int32_t rook_pair_bonus = 16, rook_queen_bonus = 10;
constexpr int coord_list_size = 10;

// The lowest `count` squares of a set.
constexpr Bitboard lowest_squares(Bitboard set, int count)
{
    Bitboard kept = 0;
    for (int i = 0; i < count && set; i++, set &= set - 1) kept |= set & (0 - set);
    return kept;
}

template <int us, class Out> void coord_terms(const eval_input &in, Out &out)
{
    Bitboard rooks = in.rooks[us], queens = in.queens[us];
    if (square_count(rooks) > coord_list_size) rooks = lowest_squares(rooks, coord_list_size);
    if (square_count(queens) > coord_list_size) queens = lowest_squares(queens, coord_list_size);
    std::int32_t score = 0;
    int n = 0; // the lowest rooks, so the n-th of them is the n-th of the reach lists
    for (Bitboard set = rooks; set; set &= set - 1, n++) {
        const int square = first_square(set);
        const Bitboard reach = in.activity[us].rook_reach[n];
        // Each pair of rooks once: only partners on higher squares.
        const Bitboard higher = ~Bitboard(0) << square << 1;
        score += rook_pair_bonus * square_count(reach & rooks & higher);
        score += rook_queen_bonus * square_count(reach & queens);
    }
    put<us, coord_score>(out, score);
}

} // namespace eval
