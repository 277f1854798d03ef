// The piece move generators: pseudo-legal moves of the side to move, appended kind by kind to
// the list being filled, and the occupant tables that name the piece on each square.
#pragma once

#include <cstdint>

#include "position/board.h"

// Room for the pseudo-legal moves of any board a FEN can give, far beyond what a game reaches.
// Appending stops at the last slot, so even a board with stacked sets writes nothing out of
// bounds; generate_moves then keeps the first max_moves legal words.
constexpr int max_pseudo_moves = 2048;

struct PseudoMoveList {
    Move moves[max_pseudo_moves];
    std::int32_t count;
};

// Shared state, set by generate_moves before it runs the generators and only read by them.
extern PseudoMoveList *gen_list; // the list being filled
extern Board gen_board; // the position moves are generated for
extern Bitboard gen_occupied, gen_white, gen_black, gen_not_white, gen_not_black;
extern std::uint8_t gen_white_king_square, gen_black_king_square; // 64 when the set is empty

// Piece code of the piece of that colour on each square, 0 elsewhere; a1 first.
extern std::uint8_t white_occupants[64];
extern std::uint8_t black_occupants[64];

// Empties `list` and sets up the shared state for `board`: the sets, their complements and the
// king squares.
void set_generator_state(const Board &board, PseudoMoveList *list);

// Fresh words: the mover's fields, to which the generators add from and to; capture, captured
// and gives_check are added by generate_moves.
constexpr Move pawn_word = mover_bits(pawn), rook_word = mover_bits(rook);
constexpr Move knight_word = mover_bits(knight), bishop_word = mover_bits(bishop);
constexpr Move king_word = mover_bits(king), queen_word = mover_bits(queen);
constexpr Move en_passant_word = pawn_word | move_en_passant;
constexpr Move promotion_word = pawn_word | move_promoted;

// Castling as the king's two squares.
constexpr Move castling_word(int colour, int wing)
{
    return make_move(castling[colour][wing].king_from, castling[colour][wing].king_to, king);
}
constexpr Move white_oo_word = castling_word(0, 0), white_ooo_word = castling_word(0, 1);
constexpr Move black_oo_word = castling_word(1, 0), black_ooo_word = castling_word(1, 1);

// Each appends to gen_list, pieces in a1-to-h8 order and, for all but pawns, each piece's
// targets in a1-to-h8 order too. A pawn on its last rank has nowhere to go and no moves.
void white_pawn_moves();
void black_pawn_moves();
void rook_moves();
void knight_moves();
void bishop_moves();
void queen_moves();
// Ordinary king steps, then king-side and queen-side castling. No king, no moves.
void king_moves();

// Rebuild the occupant table of one colour from gen_board.
void fill_white_occupants();
void fill_black_occupants();
