// The vocabulary every subsystem speaks: squares, piece codes, the Board record, the Move word
// and the MoveList, with the text form of a move.
#pragma once

#include <bit>
#include <cstdint>

using Bitboard = std::uint64_t;
using Move = std::uint32_t;

// Squares: a1 = 0, b1 = 1, ..., h1 = 7, a2 = 8, ..., h8 = 63.
constexpr int square_file(int square) { return square & 7; }
constexpr int square_rank(int square) { return square >> 3; }
constexpr Bitboard square_bit(int square) { return Bitboard(1) << square; }

// clang-format off
enum : int {
    a1 = 0, b1, c1, d1, e1, f1, g1, h1,
    a2, b2, c2, d2, e2, f2, g2, h2,
    a3, b3, c3, d3, e3, f3, g3, h3,
    a4, b4, c4, d4, e4, f4, g4, h4,
    a5, b5, c5, d5, e5, f5, g5, h5,
    a6, b6, c6, d6, e6, f6, g6, h6,
    a7, b7, c7, d7, e7, f7, g7, h7,
    a8, b8, c8, d8, e8, f8, g8, h8,
};
// clang-format on

// Piece codes: the colour is never part of the code; 0 is no piece.
enum : int { no_piece = 0, pawn = 1, rook = 2, knight = 3, bishop = 4, king = 5, queen = 6 };

// Indexed by code - 1.
constexpr char piece_letters[7] = "prnbkq";
constexpr int piece_values[6] = { 100, 500, 300, 320, 0, 900 };

// Value of a piece code: 0 for the king and for any value that names no piece.
constexpr int value_of(int code) { return code >= 1 && code <= 6 ? piece_values[code - 1] : 0; }

// The material of so many pawns, knights, bishops, rooks and queens; the king has none.
constexpr std::int32_t material_of_counts(
    int pawns, int knights, int bishops, int rooks, int queens)
{
    return value_of(pawn) * pawns + value_of(knight) * knights + value_of(bishop) * bishops
        + value_of(rook) * rooks + value_of(queen) * queens;
}

// A position as a flat value: copied for every trial of a move, never undone.
struct Board {
    // Piece sets, one bit per square; within a colour rooks, knights, bishops, queens, king, pawns.
    Bitboard white_rooks, white_knights, white_bishops, white_queens, white_king, white_pawns;
    Bitboard black_rooks, black_knights, black_bishops, black_queens, black_king, black_pawns;
    // Castling rights not yet lost through a king or rook move; they say nothing of the rook.
    std::int32_t white_ooo, white_oo, black_ooo, black_oo;
    // Half-moves since the last pawn move or capture. The fixed dialect reads it modulo 256.
    std::uint16_t fifty_move;
    // File of the pawn that has just made a double step, -1 for none.
    std::int8_t enpassant_file;
    std::int32_t white_to_move;

    friend bool operator==(const Board &, const Board &) = default;
};

// The twelve piece sets by colour (0 white, 1 black) and piece code - 1, so that code which
// treats every set alike walks this table instead of naming the sets.
using PieceSet = Bitboard Board::*;
inline constexpr PieceSet piece_sets[2][6] = {
    { &Board::white_pawns, &Board::white_rooks, &Board::white_knights, &Board::white_bishops,
        &Board::white_king, &Board::white_queens },
    { &Board::black_pawns, &Board::black_rooks, &Board::black_knights, &Board::black_bishops,
        &Board::black_king, &Board::black_queens },
};

constexpr Board start_board = {
    0x81,
    0x42,
    0x24,
    0x08,
    0x10,
    0xFF00,
    0x8100000000000000,
    0x4200000000000000,
    0x2400000000000000,
    0x0800000000000000,
    0x1000000000000000,
    0x00FF000000000000,
    1,
    1,
    1,
    1,
    0,
    -1,
    1,
};

constexpr Bitboard white_set(const Board &b)
{
    return b.white_rooks | b.white_knights | b.white_bishops | b.white_queens | b.white_king
        | b.white_pawns;
}
constexpr Bitboard black_set(const Board &b)
{
    return b.black_rooks | b.black_knights | b.black_bishops | b.black_queens | b.black_king
        | b.black_pawns;
}

// Exactly one king of each colour, which the search needs: its check tests start from the
// king's square.
constexpr bool one_king_each(const Board &b)
{
    return std::has_single_bit(b.white_king) && std::has_single_bit(b.black_king);
}

// Move word, 32 bits:
//
//   31..29   28..26  25 24  23        22          21 20           19..16  15..12     11..6  5..0
//   captured mover   0  0   promoted  en_passant  capture  gives_check  0       promotion  to from
//
// captured: code of the piece on `to` (0 for quiet moves and en passant); mover: code of the
// moving piece before promotion; promotion: code of the new piece (6, 2, 4, 3) or 0. Castling is
// a king move of two files; a double step is known by its squares. No other code shifts these bits.
constexpr int move_from_shift = 0, move_to_shift = 6, move_promotion_shift = 12;
constexpr int move_mover_shift = 26, move_captured_shift = 29;
constexpr Move move_square_mask = 63, move_code_mask = 7;
constexpr Move move_promotion_mask = 0xF000;
constexpr Move move_gives_check = 1u << 20;
constexpr Move move_capture = 1u << 21;
constexpr Move move_en_passant = 1u << 22;
constexpr Move move_promoted = 1u << 23;

constexpr int move_from(Move m) { return int((m >> move_from_shift) & move_square_mask); }
constexpr int move_to(Move m) { return int((m >> move_to_shift) & move_square_mask); }
constexpr int move_promotion(Move m)
{
    return int((m & move_promotion_mask) >> move_promotion_shift);
}
constexpr int move_mover(Move m) { return int((m >> move_mover_shift) & move_code_mask); }
constexpr int move_captured(Move m) { return int((m >> move_captured_shift) & move_code_mask); }
constexpr Move mover_bits(int code) { return Move(code) << move_mover_shift; }
constexpr Move captured_bits(int code) { return Move(code) << move_captured_shift; }
constexpr Move promotion_bits(int code) { return Move(code) << move_promotion_shift; }

// A word from its named fields; `flags` is any union of move_gives_check, move_capture,
// move_en_passant and move_promoted.
constexpr Move make_move(int from, int to, int mover = no_piece, int captured = no_piece,
    int promotion = no_piece, Move flags = 0)
{
    return Move(from) << move_from_shift | Move(to) << move_to_shift | mover_bits(mover)
        | captured_bits(captured) | promotion_bits(promotion) | flags;
}

// Room for every move of any position a legal game can reach.
constexpr int max_moves = 218;

// Pawn geometry, by colour (0 white, 1 black): the step forward and the captures toward the h
// and the a file as square offsets, the rank a double step starts from, the rank a pawn takes en
// passant from, the first square of the rank it lands on then, the rank a move forward promotes
// from, and the last rank.
struct PawnGeometry {
    int forward, toward_h, toward_a;
    int double_rank, enpassant_rank, enpassant_row, promotion_rank, last_rank;
};
inline constexpr PawnGeometry pawn_geometry[2] = {
    { 8, 9, 7, 1, 4, a6, 6, 7 },
    { -8, -7, -9, 6, 3, a3, 1, 0 },
};

// Castling, by colour (0 white, 1 black) and wing (0 king side, 1 queen side): where the king and
// the rook stand and go, the squares the king stands on and crosses (none may be attacked), and
// the squares between king and rook (all must be empty; b1 or b8 may be attacked).
struct CastlingGeometry {
    int king_from, king_to, rook_from, rook_to;
    int crossed[3];
    Bitboard between;
};
inline constexpr CastlingGeometry castling[2][2] = {
    { { e1, g1, h1, f1, { e1, f1, g1 }, square_bit(f1) | square_bit(g1) },
        { e1, c1, a1, d1, { c1, d1, e1 }, square_bit(b1) | square_bit(c1) | square_bit(d1) } },
    { { e8, g8, h8, f8, { e8, f8, g8 }, square_bit(f8) | square_bit(g8) },
        { e8, c8, a8, d8, { c8, d8, e8 }, square_bit(b8) | square_bit(c8) | square_bit(d8) } },
};

struct MoveList {
    Move moves[max_moves];
    std::int32_t count;
};

// Lowest set square, 64 for the empty set.
constexpr int first_square(Bitboard bb) { return std::countr_zero(bb); }

// Number of squares in a set. Without the processor's population count instruction the
// library's generic routine costs a call each time, and the evaluation counts some fifty sets per
// call, so the bit-parallel sum is written out here.
constexpr int square_count(Bitboard set)
{
#ifdef __POPCNT__
    return std::popcount(set);
#else
    set = set - ((set >> 1) & 0x5555555555555555);
    set = (set & 0x3333333333333333) + ((set >> 2) & 0x3333333333333333);
    set = (set + (set >> 4)) & 0x0F0F0F0F0F0F0F0F;
    return int((set * 0x0101010101010101) >> 56);
#endif
}

// Letter of a piece code 1..6; a blank for any other value.
char piece_letter(int code);

// Piece code of a lower-case letter (b 4, k 5, n 3, p 1, q 6, r 2); 0 for anything else.
int promotion_code(char letter);

// Long algebraic text ("e2e4", "e7e8q") into `text`, which holds at least six characters.
void move_to_text(Move move, char *text);

// The reverse, unchecked: characters outside a-h and 1-8 spill into other fields. Reads at most
// five characters and stops at the terminator.
Move text_to_move(const char *text);

// Removes slot `index` of a move list (a MoveList, or the generator's longer list) and closes
// the gap, keeping the order of the rest; an index outside the list changes nothing.
template <class List> void remove_move(List *list, int index)
{
    if (index < 0 || index >= list->count) return;
    for (int j = index; j + 1 < list->count; j++) list->moves[j] = list->moves[j + 1];
    list->count--;
}

// The position the engine stands in, and its key kept by incremental update.
extern Board current_board;
extern std::uint64_t current_key;
