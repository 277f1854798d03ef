// Square and line tests. The square tests read the slider look-ups, which give the same answer
// as walking each ray to its first piece; the line tests walk their one ray.
#include "movegen/attacked.h"

#include "movegen/attacks.h"

namespace {

// Steps of the eight directions, indexed by direction number.
constexpr int direction_step[9] = { 0, 8, 9, 1, -7, -8, -9, -1, 7 };

// One step from `square`; -1 when it leaves the board or wraps past the a- or h-file.
inline int step_from(int square, int step)
{
    const int next = square + step;
    if (next < 0 || next > 63) return -1;
    const int file_change = square_file(next) - square_file(square);
    if (file_change > 1 || file_change < -1) return -1;
    return next;
}

template <bool white> int attacked_by(const Board &b, int square)
{
    if (square < 0 || square > 63) return 0;
    const Bitboard knights = white ? b.white_knights : b.black_knights;
    const Bitboard king = white ? b.white_king : b.black_king;
    const Bitboard rooks = white ? b.white_rooks | b.white_queens : b.black_rooks | b.black_queens;
    const Bitboard bishops
        = white ? b.white_bishops | b.white_queens : b.black_bishops | b.black_queens;
    const Bitboard pawns = white ? b.white_pawns : b.black_pawns;
    const Bitboard all = white_set(b) | black_set(b);

    if (knight_attacks[square] & knights) return 1;
    if (king && (king_attacks[first_square(king)] & square_bit(square))) return 1;
    // Each ray's first piece, of either colour, is in the set: an attacker there counts.
    if (rook_attacks(square, all) & rooks) return 1;
    if (bishop_attacks(square, all) & bishops) return 1;

    return pawn_strikes<white>(pawns, square);
}

template <bool white_slider> int king_line_attacked(const Board &b, int square, int direction)
{
    if (direction < 1 || direction > 8 || square < 0 || square > 63) return 0;
    const bool rook_line = direction & 1;
    const Bitboard sliders = white_slider
        ? (rook_line ? b.white_rooks : b.white_bishops) | b.white_queens
        : (rook_line ? b.black_rooks : b.black_bishops) | b.black_queens;
    const Bitboard all = white_set(b) | black_set(b);
    for (int s = step_from(square, direction_step[direction]); s >= 0;
         s = step_from(s, direction_step[direction])) {
        if (sliders & square_bit(s)) return 1;
        if (all & square_bit(s)) return 0;
    }
    return 0;
}

} // namespace

int attacked_by_white(const Board &board, int square) { return attacked_by<true>(board, square); }
int attacked_by_black(const Board &board, int square) { return attacked_by<false>(board, square); }

int black_king_line_attacked(const Board &board, int square, int direction)
{
    return king_line_attacked<true>(board, square, direction);
}

int white_king_line_attacked(const Board &board, int square, int direction)
{
    return king_line_attacked<false>(board, square, direction);
}
