// Piece activity: what the rooks, bishops, knights and queens see, the rooks' files, and rooks
// and queens standing connected.
#pragma once

#include "eval/terms.h"
#include "position/board.h"

namespace eval {

// Running figures over the attack sets of one piece kind, walked in a fixed order. Mobility
// counts the own pieces in the sets (defended pieces, in effect), Attack the enemy pieces.
// The free figure takes each set's size less the running counts of all sets of the kind so
// far, so earlier blockers are charged again at every later set: it depends on the order of
// the sets and is negative in crowded positions.
struct set_counts {
    std::int32_t own = 0, enemy = 0, free = 0;

    void add(Bitboard set, Bitboard own_pieces, Bitboard enemy_pieces)
    {
        own += square_count(set & own_pieces);
        enemy += square_count(set & enemy_pieces);
        free += square_count(set) - own - enemy;
    }
};

// Rooks by ascending square, each rank set before its file set; bishops likewise with the
// a1-h8 diagonal before the a8-h1 one; knights one set each. Queens count own and enemy
// pieces over all four lines but have no free figure.
template <int us> void mobility_terms(const eval_input &in, term_values &out)
{
    constexpr int them = 1 - us;
    const Bitboard own = in.pieces[us], enemy = in.pieces[them];
    const piece_reach &reach = in.reach[us];
    set_counts rooks, bishops, knights, queens;
    const int rook_count = in.rook_count[us];
    for (int n = 0; n < rook_count; n++) {
        rooks.add(reach.rook_rank[n], own, enemy);
        rooks.add(reach.rook_file[n], own, enemy);
    }
    const int bishop_count = in.bishop_count[us];
    for (int n = 0; n < bishop_count; n++) {
        bishops.add(reach.bishop_diagonal[n], own, enemy);
        bishops.add(reach.bishop_antidiagonal[n], own, enemy);
    }
    const int knight_count = in.knight_count[us];
    for (int n = 0; n < knight_count; n++) knights.add(reach.knight[n], own, enemy);
    const int queen_count = in.queen_count[us];
    for (int n = 0; n < queen_count; n++) queens.add(reach.queen[n], own, enemy);
    std::int32_t *value = out.value[us];
    value[rook_mobility] = rooks.own;
    value[rook_attack] = rooks.enemy;
    value[bishop_mobility] = bishops.own;
    value[bishop_attack] = bishops.enemy;
    value[knight_mobility] = knights.own;
    value[knight_attack] = knights.enemy;
    value[queen_mobility] = queens.own;
    value[queen_attack] = queens.enemy;
    value[free_squares] = rooks.free + bishops.free + knights.free;
}

// A rook on a file without own pawns: 12 when the file is open, 7 when only enemy pawns
// stand on it. Its rank plays no part.
constexpr std::int32_t open_file_bonus = 12, half_open_file_bonus = 7;

template <int us> void rook_file_terms(const eval_input &in, term_values &out)
{
    constexpr int them = 1 - us;
    std::int32_t score = 0;
    for (Bitboard set = in.rooks[us]; set; set &= set - 1) {
        const Bitboard file = file_a << square_file(first_square(set));
        if (in.pawns[us] & file) continue;
        score += in.pawns[them] & file ? half_open_file_bonus : open_file_bonus;
    }
    out.value[us][rook_file_score] = score;
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

template <int us> void coord_terms(const eval_input &in, term_values &out)
{
    Bitboard rooks = in.rooks[us], queens = in.queens[us];
    if (square_count(rooks) > coord_list_size) rooks = lowest_squares(rooks, coord_list_size);
    if (square_count(queens) > coord_list_size) queens = lowest_squares(queens, coord_list_size);
    std::int32_t score = 0;
    int n = 0; // the lowest rooks, so the n-th of them is the n-th of the reach lists
    for (Bitboard set = rooks; set; set &= set - 1, n++) {
        const int square = first_square(set);
        const Bitboard reach = in.reach[us].rook_rank[n] | in.reach[us].rook_file[n];
        // Each pair of rooks once: only partners on higher squares.
        const Bitboard higher = ~Bitboard(0) << square << 1;
        score += rook_pair_bonus * square_count(reach & rooks & higher);
        score += rook_queen_bonus * square_count(reach & queens);
    }
    out.value[us][coord_score] = score;
}

} // namespace eval
