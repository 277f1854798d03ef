// What each system's module gives the shared standard-input buffer (stdin_buffer.cpp). Used
// inside src/platform only.
#pragma once

// Reads at most `most` (> 0) bytes of standard input into `into`, blocking until some are there.
// Returns how many were read; 0 or less at the end of input or on an error.
int system_read(char *into, int most);

// How many bytes one system_read may ask for without blocking: 0 when nothing waits, when the
// input is not a pipe that can be looked into, or when it was already asked within this tick of a
// coarse clock (the search asks far more often than a look is worth).
int system_waiting();
