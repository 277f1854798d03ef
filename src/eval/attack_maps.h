// The squares each colour attacks, every square at once: the evaluation's king-safety and centre
// terms read these maps instead of testing squares one by one.
#pragma once

#include "eval/terms.h"
#include "movegen/attacks.h"

namespace eval {

// The up to eight neighbours of a king square; nothing for the 64 of an empty king set, for
// which no table has an entry.
inline Bitboard king_neighbours(int king_square)
{
    return king_square < 64 ? king_attacks[king_square] : 0;
}

// Looks up the attack set of each of the colour's rooks, bishops, knights and queens into
// in.reach, and returns every square the colour attacks: square s is in it exactly when
// attacked_by_white (attacked_by_black) of s gives 1. A piece on p attacks s exactly when the
// same look-up from s meets p, with the same blockers, so the union of the pieces' own sets
// answers every square at once. Reads the piece sets, `all` and `king_square` of `in`.
template <int us> Bitboard attacked_squares(eval_input &in)
{
    piece_reach &reach = in.reach[us];
    const Bitboard all = in.all;
    Bitboard attacked
        = king_neighbours(in.king_square[us]) | pawn_attacks<us == white>(in.pawns[us]);
    int n = 0;
    for (Bitboard set = in.knights[us]; set; set &= set - 1, n++)
        attacked |= reach.knight[n] = knight_attacks[first_square(set)];
    n = 0;
    for (Bitboard set = in.bishops[us]; set; set &= set - 1, n++) {
        const int square = first_square(set);
        attacked |= reach.bishop_diagonal[n] = diagonal_lookup(square, all);
        attacked |= reach.bishop_antidiagonal[n] = antidiagonal_lookup(square, all);
    }
    n = 0;
    for (Bitboard set = in.rooks[us]; set; set &= set - 1, n++) {
        const int square = first_square(set);
        attacked |= reach.rook_rank[n] = rank_lookup(square, all);
        attacked |= reach.rook_file[n] = file_lookup(square, all);
    }
    n = 0;
    for (Bitboard set = in.queens[us]; set; set &= set - 1, n++) {
        const int square = first_square(set);
        attacked |= reach.queen[n] = rook_attacks(square, all) | bishop_attacks(square, all);
    }
    return attacked;
}

} // namespace eval
