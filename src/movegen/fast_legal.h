// The legal list of an ordinary position straight from pin and check masks, without trying
// each move on a copy. Internal to generate_moves.
#pragma once

#include "position/board.h"

// Appends the legal moves of `board` to `list`, exactly as generate_moves defines them, and
// returns true; or returns false with the list untouched when the board is not one it handles:
// a king missing or doubled, pieces stacked on one square, a pawn on the first or last rank, or
// the side not to move in check.
bool generate_moves_fast(const Board &board, MoveList *list);

// The same for the captures alone (en passant included), in the order and with the words they
// have in the full list.
bool generate_captures_fast(const Board &board, MoveList *list);
