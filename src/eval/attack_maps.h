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

// What one colour's pieces of one kind see: the running figures and the union of their sets.
struct kind_figures {
    set_counts counts;
    Bitboard reach;
};
enum piece_kind : int { knight_kind, bishop_kind, rook_kind, queen_kind, kind_count };

// The figures of one kind, from its set, the blockers and the two colours' pieces. The sets of
// a kind are counted in this order: by ascending square; a rook's rank set before its file set,
// a bishop's a1-h8 diagonal before its a8-h1 one; knights one set each. Queens count own and
// enemy pieces over all four lines but have no free figure. Rook reaches (rank and file
// together) go to `rook_reach`, rooks by ascending square, as far as the connection term
// reads them. Inlined into each caller: a call costs a tenth of its work.
template <piece_kind kind>
[[gnu::always_inline]] inline kind_figures kind_look_up(
    Bitboard set, Bitboard all, Bitboard own, Bitboard enemy, Bitboard *rook_reach)
{
    kind_figures k {};
    for (int n = 0; set; set &= set - 1, n++) {
        const int square = first_square(set);
        if constexpr (kind == knight_kind) {
            const Bitboard reach = knight_attacks[square];
            k.reach |= reach;
            k.counts.add(reach, own, enemy);
        } else if constexpr (kind == bishop_kind) {
            const Bitboard reach = bishop_attacks(square, all);
            const Bitboard diagonal = reach & diagonal_line[square];
            k.reach |= reach;
            k.counts.add(diagonal, own, enemy);
            k.counts.add(reach ^ diagonal, own, enemy);
        } else if constexpr (kind == rook_kind) {
            const Bitboard reach = rook_attacks(square, all);
            const Bitboard rank = reach & (Bitboard(0xFF) << (square & 56));
            if (n < rook_reach_count) rook_reach[n] = reach;
            k.reach |= reach;
            k.counts.add(rank, own, enemy);
            k.counts.add(reach ^ rank, own, enemy);
        } else {
            const Bitboard reach = rook_attacks(square, all) | bishop_attacks(square, all);
            k.reach |= reach;
            k.counts.own += square_count(reach & own);
            k.counts.enemy += square_count(reach & enemy);
        }
    }
    return k;
}

// Writes the Mobility and Attack counts and the free figure of the four kinds into `activity`
// and returns the union of their sets.
inline Bitboard gather_activity(piece_activity &activity, const kind_figures *kinds)
{
    std::int32_t *count = activity.count;
    count[rook_mobility] = kinds[rook_kind].counts.own;
    count[rook_attack] = kinds[rook_kind].counts.enemy;
    count[bishop_mobility] = kinds[bishop_kind].counts.own;
    count[bishop_attack] = kinds[bishop_kind].counts.enemy;
    count[knight_mobility] = kinds[knight_kind].counts.own;
    count[knight_attack] = kinds[knight_kind].counts.enemy;
    count[queen_mobility] = kinds[queen_kind].counts.own;
    count[queen_attack] = kinds[queen_kind].counts.enemy;
    activity.free = kinds[rook_kind].counts.free + kinds[bishop_kind].counts.free
        + kinds[knight_kind].counts.free;
    return kinds[knight_kind].reach | kinds[bishop_kind].reach | kinds[rook_kind].reach
        | kinds[queen_kind].reach;
}

// Looks up the attack set of each of the colour's rooks, bishops, knights and queens, counts
// them into in.activity, and returns every square the colour attacks: square s is in it exactly
// when attacked_by_white (attacked_by_black) of s gives 1. A piece on p attacks s exactly when
// the same look-up from s meets p, with the same blockers, so the union of the pieces' own sets
// answers every square at once. Reads the piece sets, `pieces`, `all` and `pawn_king` of `in`.
// The figures of each kind also go to `kinds` (kind_count entries) when it isn't null.
// The figures of each kind also go to `kinds` (kind_count entries) when it isn't null.
template <int us> Bitboard attacked_squares(eval_input &in, kind_figures *kinds = nullptr)
{
    const Bitboard all = in.all, own = in.pieces[us], enemy = in.pieces[1 - us];
    Bitboard *rook_reach = in.activity[us].rook_reach;
    kind_figures local[kind_count];
    kind_figures *k = kinds ? kinds : local;
    k[knight_kind] = kind_look_up<knight_kind>(in.knights[us], all, own, enemy, rook_reach);
    k[bishop_kind] = kind_look_up<bishop_kind>(in.bishops[us], all, own, enemy, rook_reach);
    k[rook_kind] = kind_look_up<rook_kind>(in.rooks[us], all, own, enemy, rook_reach);
    k[queen_kind] = kind_look_up<queen_kind>(in.queens[us], all, own, enemy, rook_reach);
    return in.pawn_king.attacked[us] | gather_activity(in.activity[us], k);
}

} // namespace eval
