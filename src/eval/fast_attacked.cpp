// Square attack tests of the evaluation, and the same answers for every square at once.
#include "eval/fast_attacked.h"

#include "movegen/attacks.h"

namespace eval {

namespace {

template <int us> int fast_attacked_by(Board board, int square)
{
    const Bitboard all = white_set(board) | black_set(board);
    const Bitboard knights = us == white ? board.white_knights : board.black_knights;
    const Bitboard king = us == white ? board.white_king : board.black_king;
    const Bitboard bishops = us == white ? board.white_bishops : board.black_bishops;
    const Bitboard rooks = us == white ? board.white_rooks : board.black_rooks;
    const Bitboard queens = us == white ? board.white_queens : board.black_queens;
    const Bitboard pawns = us == white ? board.white_pawns : board.black_pawns;
    const Bitboard target = square_bit(square);

    if (knight_attacks[square] & knights) return 1;
    if (king_neighbours(first_square(king)) & target) return 1;
    if (bishop_attacks(square, all) & (bishops | queens)) return 1;
    if (rook_attacks(square, all) & (rooks | queens)) return 1;
    return pawn_strikes<us == white>(pawns, square);
}

// A piece on p attacks s exactly when the same look-up from s meets p, with the same
// blockers, so the union of the pieces' own sets answers every square at once. The sets are
// kept for the terms that count over them.
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

} // namespace

Bitboard attacked_squares_white(eval_input &in) { return attacked_squares<white>(in); }
Bitboard attacked_squares_black(eval_input &in) { return attacked_squares<black>(in); }

} // namespace eval

int fast_attacked_by_white(Board board, int square)
{
    return eval::fast_attacked_by<eval::white>(board, square);
}
int fast_attacked_by_black(Board board, int square)
{
    return eval::fast_attacked_by<eval::black>(board, square);
}
