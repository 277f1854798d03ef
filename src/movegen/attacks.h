// Precomputed attack sets: sliders by a multiply-and-look-up scheme over the six inner squares
// of each line, knight and king jumps, and the direction from one square to another.
#pragma once

#include <array>
#include <cstdint>

#include "position/board.h"

// Slider tables, filled once at start-up by init_attack_tables() and read-only afterwards.
// Each attack set holds the first occupied square in every direction, of either colour, and
// never the slider's own square.
//
// rank_attacks[file][index]: a byte, bit x = file x reached, for a slider on that file of a rank.
extern std::uint8_t rank_attacks[8][64];
// file_attacks[7 - rank][index]: squares reached on the a-file (row 0 is a8, row 7 is a1); a
// slider on file f shifts the set left by f.
extern Bitboard file_attacks[8][64];
// [square][index]: squares reached along the a1-h8 sense (steps +9 and -9).
extern Bitboard diagonal_attacks[64][64];
// [square][index]: squares reached along the a8-h1 sense (steps +7 and -7).
extern Bitboard antidiagonal_attacks[64][64];
// The up to eight neighbours of a square.
extern Bitboard king_attacks[64];
// ray_direction[from][to]: the direction from the first square to the second, 0 when they are
// equal or share no line. Numbered clockwise from north: 1 N (+8), 2 NE (+9), 3 E (+1),
// 4 SE (-7), 5 S (-8), 6 SW (-9), 7 W (-1), 8 NW (+7). Odd numbers are rook lines, even ones
// bishop lines.
extern std::uint8_t ray_direction[64][64];

enum : int {
    direction_none = 0,
    north = 1,
    north_east = 2,
    east = 3,
    south_east = 4,
    south = 5,
    south_west = 6,
    west = 7,
    north_west = 8
};

// Each fills its table completely from nothing; none reads another's table.
void init_rank_attacks();
void init_file_attacks();
void init_diagonal_attacks();
void init_antidiagonal_attacks();
void init_king_attacks();
void init_ray_direction();

// Runs the six fillers above, in that order, then init_slider_tables. Called once, before the
// first command is read.
void init_attack_tables();

namespace attacks_detail {
// The up to eight knight jumps from every square, a1 first.
constexpr std::array<Bitboard, 64> make_knight_attacks()
{
    constexpr int jumps[8][2] = { { 1, 2 }, { 2, 1 }, { 2, -1 }, { 1, -2 }, { -1, -2 }, { -2, -1 },
        { -2, 1 }, { -1, 2 } };
    std::array<Bitboard, 64> table {};
    for (int square = 0; square < 64; square++)
        for (const auto &jump : jumps) {
            const int file = square_file(square) + jump[0], rank = square_rank(square) + jump[1];
            if (file >= 0 && file < 8 && rank >= 0 && rank < 8)
                table[square] |= square_bit(rank * 8 + file);
        }
    return table;
}
} // namespace attacks_detail

// Knight jumps by square; fixed at build time.
inline constexpr std::array<Bitboard, 64> knight_attacks = attacks_detail::make_knight_attacks();

// Inner squares of each line (the two end squares can never block anything), and the
// multipliers that gather them onto bits 57..62 of the product. Index bit j of a rank or a
// diagonal is its inner square on file j + 1 counted from the a-file side; index bit j of a
// file is its square on rank 7 - j (bit 0 the seventh rank).

// By rank: files b to g.
inline constexpr std::array<Bitboard, 8> rank_inner_mask = { 0x7EULL << 0, 0x7EULL << 8,
    0x7EULL << 16, 0x7EULL << 24, 0x7EULL << 32, 0x7EULL << 40, 0x7EULL << 48, 0x7EULL << 56 };

// By file: ranks 2 to 7.
inline constexpr std::array<Bitboard, 8> file_inner_mask
    = { 0x0001010101010100ULL << 0, 0x0001010101010100ULL << 1, 0x0001010101010100ULL << 2,
          0x0001010101010100ULL << 3, 0x0001010101010100ULL << 4, 0x0001010101010100ULL << 5,
          0x0001010101010100ULL << 6, 0x0001010101010100ULL << 7 };
inline constexpr std::array<std::uint64_t, 8> file_multiplier
    = { 0x8040201008040200ULL >> 0, 0x8040201008040200ULL >> 1, 0x8040201008040200ULL >> 2,
          0x8040201008040200ULL >> 3, 0x8040201008040200ULL >> 4, 0x8040201008040200ULL >> 5,
          0x8040201008040200ULL >> 6, 0x8040201008040200ULL >> 7 };

// By 7 - rank + file: 0 is the lone a8, 7 the long a1-h8, 14 the lone h1. Lines of one or two
// squares have no inner square; their mask and multiplier are 0, so their index is always 0.
inline constexpr std::array<Bitboard, 15> diagonal_inner_mask
    = { 0, 0, 0x0002000000000000, 0x0004020000000000, 0x0008040200000000, 0x0010080402000000,
          0x0020100804020000, 0x0040201008040200, 0x0000402010080400, 0x0000004020100800,
          0x0000000040201000, 0x0000000000402000, 0x0000000000004000, 0, 0 };
inline constexpr std::array<std::uint64_t, 15> diagonal_multiplier
    = { 0, 0, 0x0101010101010100, 0x0101010101010100, 0x0101010101010100, 0x0101010101010100,
          0x0101010101010100, 0x0101010101010100, 0x8080808080808000, 0x4040404040400000,
          0x2020202020000000, 0x1010101000000000, 0x0808080000000000, 0, 0 };

// By file + rank: 0 is the lone a1, 7 the long a8-h1, 14 the lone h8.
inline constexpr std::array<Bitboard, 15> antidiagonal_inner_mask
    = { 0, 0, 0x0000000000000200, 0x0000000000020400, 0x0000000002040800, 0x0000000204081000,
          0x0000020408102000, 0x0002040810204000, 0x0004081020400000, 0x0008102040000000,
          0x0010204000000000, 0x0020400000000000, 0x0040000000000000, 0, 0 };
inline constexpr std::array<std::uint64_t, 15> antidiagonal_multiplier
    = { 0, 0, 0x0101010101010100, 0x0101010101010100, 0x0101010101010100, 0x0101010101010100,
          0x0101010101010100, 0x0101010101010100, 0x0080808080808080, 0x0040404040404040,
          0x0020202020202020, 0x0010101010101010, 0x0008080808080808, 0, 0 };

// Look-ups along one line through `square` (0..63) with the blockers `occupied`. Each product
// keeps only its top seven bits; bit 63 is never set, so an index is below 64.
inline Bitboard rank_lookup(int square, Bitboard occupied)
{
    const int file = square_file(square), rank = square_rank(square);
    const int index = int((occupied & rank_inner_mask[rank]) >> (8 * rank + 1));
    return Bitboard(rank_attacks[file][index]) << (8 * rank);
}

inline Bitboard file_lookup(int square, Bitboard occupied)
{
    const int file = square_file(square), rank = square_rank(square);
    const int index = int(((occupied & file_inner_mask[file]) * file_multiplier[file]) >> 57);
    return file_attacks[7 - rank][index] << file;
}

inline Bitboard diagonal_lookup(int square, Bitboard occupied)
{
    const int line = 7 - square_rank(square) + square_file(square);
    const int index
        = int(((occupied & diagonal_inner_mask[line]) * diagonal_multiplier[line]) >> 57);
    return diagonal_attacks[square][index];
}

inline Bitboard antidiagonal_lookup(int square, Bitboard occupied)
{
    const int line = square_file(square) + square_rank(square);
    const int index
        = int(((occupied & antidiagonal_inner_mask[line]) * antidiagonal_multiplier[line]) >> 57);
    return antidiagonal_attacks[square][index];
}

// Rook and bishop reach in one look-up each. The blockers on the inner squares of the lines
// through a square, times a fixed multiplier, give in their top bits a slot of slider_slots
// that holds the reach for every blocker set sharing that slot. init_slider_tables fills the
// slots from the line look-ups above, so both ways give the same sets.
struct slider_entry {
    Bitboard mask; // inner squares of the square's lines, the square itself left out
    std::uint64_t multiplier;
    std::uint32_t offset; // first slot of the square in slider_slots
    std::uint32_t shift; // 64 minus the squares of mask
};
constexpr int rook_slot_count = 102400, bishop_slot_count = 5248;
// Until init_slider_tables runs, every entry is zero and reads slot 0, which holds the empty set.
extern slider_entry rook_entries[64], bishop_entries[64];
extern Bitboard slider_slots[rook_slot_count + bishop_slot_count];

// Fills rook_entries, bishop_entries and slider_slots from the line tables, which must be
// filled already.
void init_slider_tables();

// A rook's reach: its rank and its file, as rank_lookup | file_lookup gives it.
inline Bitboard rook_attacks(int square, Bitboard occupied)
{
    const slider_entry &e = rook_entries[square];
    return slider_slots[e.offset + ((occupied & e.mask) * e.multiplier >> e.shift)];
}

// A bishop's reach: both diagonals, as diagonal_lookup | antidiagonal_lookup gives it. A queen's
// is the union with rook_attacks.
inline Bitboard bishop_attacks(int square, Bitboard occupied)
{
    const slider_entry &e = bishop_entries[square];
    return slider_slots[e.offset + ((occupied & e.mask) * e.multiplier >> e.shift)];
}

constexpr Bitboard file_a = 0x0101010101010101, file_h = file_a << 7;

// Pawns strike one rank forward on the two neighbouring files. No square of the first two ranks
// counts as struck by a white pawn, none of the last two by a black one: a pawn of a real game
// never stands on its own first rank.

// Squares from which a pawn of that colour strikes `square` (0..63).
template <bool white> constexpr Bitboard pawn_attackers_of(int square)
{
    const int file = square_file(square);
    Bitboard from = 0;
    if constexpr (white) {
        if (square < 16) return 0;
        if (file < 7) from |= square_bit(square - 7);
        if (file != 0) from |= square_bit(square - 9);
    } else {
        if (square > 47) return 0;
        if (file != 0) from |= square_bit(square + 7);
        if (file < 7) from |= square_bit(square + 9);
    }
    return from;
}

// Every square that a pawn of `pawns` (of that colour) strikes.
template <bool white> constexpr Bitboard pawn_attacks(Bitboard pawns)
{
    if constexpr (white)
        return (((pawns << 7) & ~file_h) | ((pawns << 9) & ~file_a)) & ~Bitboard(0xFFFF);
    else
        return (((pawns >> 7) & ~file_a) | ((pawns >> 9) & ~file_h)) & ~Bitboard(0) >> 16;
}

// 1 when a pawn of `pawns` strikes `square` (0..63).
template <bool white> inline int pawn_strikes(Bitboard pawns, int square)
{
    return (pawns & pawn_attackers_of<white>(square)) != 0;
}
