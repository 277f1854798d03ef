// The legal move list: the one way into move generation.
#pragma once

#include "position/board.h"

// Appends to `list` (whose count the caller has set, normally to 0) every legal move of the side
// to move, in generation order: pawns, rooks, knights, bishops, queens, king, each kind in
// a1-to-h8 order. Every word is complete: capture, captured and gives_check are set. The list
// keeps the first legal moves that fit its slots and drops the rest; a count outside 0..218 is
// taken as 0. A side without a king has every pseudo-legal move legal, and a missing enemy king
// is never in check.
void generate_moves(Board board, MoveList *list);

// generate_moves cut down to the words with the capture bit, in the same order.
void generate_captures(Board board, MoveList *list);

// The literal way, for any board: the generators write every pseudo-legal word, and each is tried
// on a copy of the board and walked. The engine takes it for boards the fast way declines (no
// king, stacked pieces, the side not to move in check); the tests prove the fast way against it.
void generate_moves_literal(Board board, MoveList *list);
void generate_captures_literal(Board board, MoveList *list);
