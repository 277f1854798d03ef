// FEN records and the position command: setting up current_board and the key history.
#pragma once

#include "position/board.h"

// Removes blanks and tabs from both ends of `text`, in place.
void trim_blanks(char *text);

// Reads a FEN record. Never fails: text it can't use gives the all-zero Board.
Board parse_fen(const char *text);

// `position fen <fen> [moves ...]` and `position startpos [moves ...]`, given the whole line.
void set_position_fen(const char *line);
void set_position_start(const char *line);

// Starts the key history afresh from current_board (the ucinewgame command).
void new_game();

// The one way a game is set up, whichever dialect read it: current_board becomes `board` with a
// fresh key history, then each move is played on it with play_game_move.
void start_game(const Board &board);
void play_game_move(Move move);
