// Squares between two squares and whole lines through them, fixed at build time.
#pragma once

#include <array>

#include "position/board.h"

namespace lines_detail {

using square_table = std::array<std::array<Bitboard, 64>, 64>;

// Steps of the eight compass directions as (file, rank) changes.
constexpr int steps[8][2]
    = { { 0, 1 }, { 1, 1 }, { 1, 0 }, { 1, -1 }, { 0, -1 }, { -1, -1 }, { -1, 0 }, { -1, 1 } };

constexpr bool on_board(int file, int rank)
{
    return file >= 0 && file < 8 && rank >= 0 && rank < 8;
}

// between[a][b]: the squares strictly between a and b when they share a rank, file or
// diagonal; 0 otherwise. line[a][b]: the whole line through both, ends included; 0 otherwise.
template <bool whole> constexpr square_table make()
{
    square_table table {};
    for (int a = 0; a < 64; a++)
        for (const auto &step : steps) {
            // The line through a in this direction, walked both ways.
            Bitboard line = square_bit(a);
            for (int k = -1; k <= 1; k += 2)
                for (int f = square_file(a) + k * step[0], r = square_rank(a) + k * step[1];
                     on_board(f, r); f += k * step[0], r += k * step[1])
                    line |= square_bit(r * 8 + f);
            Bitboard passed = 0;
            for (int f = square_file(a) + step[0], r = square_rank(a) + step[1]; on_board(f, r);
                 f += step[0], r += step[1]) {
                table[a][r * 8 + f] = whole ? line : passed;
                passed |= square_bit(r * 8 + f);
            }
        }
    return table;
}

} // namespace lines_detail

inline constexpr lines_detail::square_table between_squares = lines_detail::make<false>();
inline constexpr lines_detail::square_table line_through = lines_detail::make<true>();
