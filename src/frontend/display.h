// Displays for a person at a console: the board picture and clearing the screen.
#pragma once

// Prints current_board as a picture, then its castling rights, counters and side to move; the
// fifty-move count whole with `whole_count`, else modulo 256.
void print_board(bool whole_count);

// Clears the console; does nothing when standard output is not a terminal.
void clear_console();
