// What each system's module gives the shared standard-input buffer (stdin_buffer.cpp). Used
// inside src/platform only.
#pragma once

#include <cstdint>

// Reads at most `most` (> 0) bytes of standard input into `into`, blocking until some are there.
// Returns how many were read; 0 or less at the end of input or on an error.
int system_read(char *into, int most);

// How many bytes one system_read may ask for without blocking: 0 when nothing waits or when the
// input is not a pipe that can be looked into.
int system_waiting();

// A coarse clock in milliseconds that costs no call into the kernel; the input is looked into at
// most once per tick of it, since the search asks far more often than a look is worth.
std::uint64_t coarse_tick();
