// Displays for a person at a console: the board picture and clearing the screen.
#pragma once

// Prints current_board as a picture, then its castling rights, counters and side to move.
void print_board();

// Clears the console; does nothing when standard output is not a terminal.
void clear_console();
