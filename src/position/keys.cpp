// Keys computed from scratch; the incremental updates live with the move appliers.
#include "position/zobrist.h"

std::uint64_t hash_piece_set(Bitboard set, int kind, std::uint64_t key)
{
    for (; set; set &= set - 1) key ^= piece_key(kind, first_square(set));
    return key;
}

bool enpassant_in_key(const Board &board)
{
    int file = board.enpassant_file;
    if (file < 0 || file > 7) return false;
    int rank = board.white_to_move ? 4 : 3;
    Bitboard pawns = board.white_to_move ? board.white_pawns : board.black_pawns;
    Bitboard beside = 0;
    if (file > 0) beside |= square_bit(8 * rank + file - 1);
    if (file < 7) beside |= square_bit(8 * rank + file + 1);
    return (pawns & beside) != 0;
}

std::uint64_t full_key(const Board *board)
{
    std::uint64_t key = 0;
    for (int colour = 0; colour < 2; colour++)
        for (int code = pawn; code <= queen; code++)
            key = hash_piece_set(board->*piece_sets[colour][code - 1],
                zobrist_kind_of[code - 1] + (colour == 0 ? 1 : 0), key);
    if (board->white_to_move) key ^= zobrist_table[zobrist_white_to_move];
    if (board->white_oo) key ^= zobrist_table[zobrist_white_oo];
    if (board->white_ooo) key ^= zobrist_table[zobrist_white_ooo];
    if (board->black_oo) key ^= zobrist_table[zobrist_black_oo];
    if (board->black_ooo) key ^= zobrist_table[zobrist_black_ooo];
    if (enpassant_in_key(*board)) key ^= enpassant_key(board->enpassant_file);
    return key;
}
