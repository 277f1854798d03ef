// Zobrist keys of the PolyGlot book format: the table, its named offsets and the key from scratch.
#pragma once

#include <cstdint>

#include "position/board.h"

// 0..767 piece on square (64 * kind + square), 768..771 castling, 772..779 en-passant file,
// 780 white to move.
extern const std::uint64_t zobrist_table[781];

// Kinds of the table: black pawn 0, white pawn 1, knights 2/3, bishops 4/5, rooks 6/7,
// queens 8/9, kings 10/11; the white kind is the black one plus 1.
enum : int {
    kind_pawn = 0,
    kind_knight = 2,
    kind_bishop = 4,
    kind_rook = 6,
    kind_queen = 8,
    kind_king = 10
};
// The black kind of each piece code, indexed by code - 1.
constexpr int zobrist_kind_of[6]
    = { kind_pawn, kind_rook, kind_knight, kind_bishop, kind_king, kind_queen };
constexpr int zobrist_white_oo = 768, zobrist_white_ooo = 769;
constexpr int zobrist_black_oo = 770, zobrist_black_ooo = 771;
constexpr int zobrist_enpassant = 772, zobrist_white_to_move = 780;

inline std::uint64_t piece_key(int kind, int square) { return zobrist_table[64 * kind + square]; }
inline std::uint64_t enpassant_key(int file) { return zobrist_table[zobrist_enpassant + file]; }

// The rook's two entries of each castling move, XORed together once.
constexpr std::uint64_t castle_rook_a1_d1 = 0x7F74AD66ABDEC13D;
constexpr std::uint64_t castle_rook_h1_f1 = 0x1B93B2CC78A7EE0F;
constexpr std::uint64_t castle_rook_a8_d8 = 0x198AB177A42DADAB;
constexpr std::uint64_t castle_rook_h8_f8 = 0x1413A9298DAAEF78;

// `key` with the entry of `kind` on each square of `set` XORed in.
std::uint64_t hash_piece_set(Bitboard set, int kind, std::uint64_t key);

// True when the side to move has a pawn beside the en-passant file, on the rank where the double
// step ended: the only case in which the file enters the key. Files outside 0..7 (a garbled FEN
// field) never do.
bool enpassant_in_key(const Board &board);

// The key of `board` computed from nothing.
std::uint64_t full_key(const Board *board);
