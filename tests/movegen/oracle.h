// The literal move generator, kept as the oracle that every faster version is proven against:
// ray walks square by square for the attack and line tests, generators that append every
// pseudo-legal word, and a filter that tries each word on a copy of the board.
#pragma once

#include "board.h"

namespace oracle {

int attacked_by_white(const Board &board, int square);
int attacked_by_black(const Board &board, int square);
int black_king_line_attacked(const Board &board, int square, int direction);
int white_king_line_attacked(const Board &board, int square, int direction);

// The legal list, word for word and in order, as the engine must give it.
void generate_moves(Board board, MoveList *list);
void generate_captures(Board board, MoveList *list);

} // namespace oracle
