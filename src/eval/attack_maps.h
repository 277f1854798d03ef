// The squares each colour attacks, every square at once: the evaluation's king-safety and centre
// terms read these maps instead of testing squares one by one.
#pragma once

#include <array>

#include "eval/terms.h"
#include "movegen/attacks.h"
#include "position/board.h"

namespace eval {

// The up to eight neighbours of a king square; nothing for the 64 of an empty king set, for
// which no table has an entry.
inline Bitboard king_neighbours(int king_square)
{
    return king_square < 64 ? king_attacks[king_square] : 0;
}

// The a1-h8 diagonal through each square. A bishop's reach is the union of its look-ups along
// this diagonal and along the other one, which meet only on the bishop's own square, never in
// the reach; a rook's likewise of its rank and its file. So one look-up split by the line gives
// each line's set.
constexpr std::array<Bitboard, 64> make_diagonal_lines()
{
    std::array<Bitboard, 64> lines {};
    for (int square = 0; square < 64; square++)
        for (int other = 0; other < 64; other++)
            if (square_rank(other) - square_file(other)
                == square_rank(square) - square_file(square))
                lines[square] |= square_bit(other);
    return lines;
}
inline constexpr std::array<Bitboard, 64> diagonal_line = make_diagonal_lines();

// Running figures over the attack sets of one piece kind, walked in a fixed order. Mobility
// counts the own pieces in the sets (defended pieces, in effect), Attack the enemy pieces.
// The free figure takes each set's size less the running counts of all sets of the kind so
// far, so earlier blockers are charged again at every later set: it depends on the order of
// the sets and is negative in crowded positions.
struct set_counts {
    std::int32_t own, enemy, free;

    void add(Bitboard set, Bitboard own_pieces, Bitboard enemy_pieces)
    {
        own += square_count(set & own_pieces);
        enemy += square_count(set & enemy_pieces);
        free += square_count(set) - own - enemy;
    }
};

// Looks up the attack set of each of the colour's rooks, bishops, knights and queens, counts
// them into in.activity, and returns every square the colour attacks: square s is in it exactly
// when attacked_by_white (attacked_by_black) of s gives 1. A piece on p attacks s exactly when
// the same look-up from s meets p, with the same blockers, so the union of the pieces' own sets
// answers every square at once. Reads the piece sets, `pieces`, `all` and `king_square` of `in`.
//
// The sets of a kind are counted in this order: rooks by ascending square, each rank set before
// its file set; bishops likewise with the a1-h8 diagonal before the a8-h1 one; knights one set
// each. Queens count own and enemy pieces over all four lines but have no free figure.
template <int us> Bitboard attacked_squares(eval_input &in)
{
    piece_activity &activity = in.activity[us];
    const Bitboard all = in.all, own = in.pieces[us], enemy = in.pieces[1 - us];
    Bitboard attacked = in.pawn_king.attacked[us]; // by the pawns and the king
    set_counts rooks {}, bishops {}, knights {}, queens {};
    for (Bitboard set = in.knights[us]; set; set &= set - 1) {
        const Bitboard reach = knight_attacks[first_square(set)];
        attacked |= reach;
        knights.add(reach, own, enemy);
    }
    for (Bitboard set = in.bishops[us]; set; set &= set - 1) {
        const int square = first_square(set);
        const Bitboard reach = bishop_attacks(square, all);
        const Bitboard diagonal = reach & diagonal_line[square], antidiagonal = reach ^ diagonal;
        attacked |= reach;
        bishops.add(diagonal, own, enemy);
        bishops.add(antidiagonal, own, enemy);
    }
    int n = 0;
    for (Bitboard set = in.rooks[us]; set; set &= set - 1, n++) {
        const int square = first_square(set);
        const Bitboard reach = rook_attacks(square, all);
        const Bitboard rank = reach & (Bitboard(0xFF) << (square & 56)), file = reach ^ rank;
        attacked |= activity.rook_reach[n] = reach;
        rooks.add(rank, own, enemy);
        rooks.add(file, own, enemy);
    }
    for (Bitboard set = in.queens[us]; set; set &= set - 1) {
        const int square = first_square(set);
        const Bitboard reach = rook_attacks(square, all) | bishop_attacks(square, all);
        attacked |= reach;
        queens.own += square_count(reach & own);
        queens.enemy += square_count(reach & enemy);
    }
    std::int32_t *count = activity.count;
    count[rook_mobility] = rooks.own;
    count[rook_attack] = rooks.enemy;
    count[bishop_mobility] = bishops.own;
    count[bishop_attack] = bishops.enemy;
    count[knight_mobility] = knights.own;
    count[knight_attack] = knights.enemy;
    count[queen_mobility] = queens.own;
    count[queen_attack] = queens.enemy;
    activity.free = rooks.free + bishops.free + knights.free;
    return attacked;
}

} // namespace eval
