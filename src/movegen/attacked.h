// Square and line tests: whether a square is attacked, the engine's one notion of check, and the
// cheaper test of a single line through a king.
#pragma once

#include "position/board.h"

// 1 if a piece of that colour attacks `square`, else 0. What stands on the square plays no part;
// a king next to it counts. A square outside 0..63 (the king square of an empty king set) is
// attacked by nobody, and a missing king attacks nothing.
int attacked_by_white(const Board &board, int square);
int attacked_by_black(const Board &board, int square);

// Non-zero if the first piece met stepping from `square` in `direction` (1..8, numbered as in
// ray_direction) is a white slider that moves along that line (rook or queen on odd directions,
// bishop or queen on even ones); 0 otherwise, and for direction 0, a direction above 8 or a
// square outside 0..63.
int black_king_line_attacked(const Board &board, int square, int direction);
// The same for a black slider.
int white_king_line_attacked(const Board &board, int square, int direction);
