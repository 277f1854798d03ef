// The engine's only contact with the operating system: a monotonic clock, the one reader of
// standard input, and clearing a terminal.
#pragma once

#include <cstdint>

// Start-up of the standard streams, before anything is printed: the bytes the engine writes
// leave unchanged (no line-end translation).
void platform_init();

// Milliseconds of a monotonic clock; only differences mean anything.
std::uint64_t clock_ms();
// The same clock as a double, with the fraction of a millisecond.
double clock_ms_real();

// Standard input is read from its descriptor or handle into one buffer that both the command loop
// and the search's poll take from, so no line can hide where the other route can't see it.

// Copies the next line into `text`, as fgets would: up to and including its line feed, and at
// most size - 1 bytes; the rest of a longer line stays for the next call. Blocks until a whole
// line, the end of input or a full `text` is there. Returns the number of bytes copied, 0 at the
// end of input with nothing left.
int stdin_read_line(char *text, int size);

// True when standard input is a pipe or a socket (not a terminal or a regular file).
bool stdin_is_pipe();

// Takes up to `most` bytes that are already waiting, without blocking: what the buffer holds,
// else what one read of the descriptor brings if the descriptor is ready. The descriptor itself
// is asked at most once per tick of a coarse clock (a few milliseconds), since the search asks
// far more often than that and a poll(2) is a system call; in between, an empty buffer answers 0
// at once. Returns 0 when nothing waits, when the descriptor was asked within this tick, or when
// the input has ended.
int stdin_take_waiting(char *bytes, int most);

// True once standard input has ended and every byte of it has been taken.
bool stdin_closed();

// A zero-filled block of `bytes` bytes whose pages cost nothing until they are written; null when
// the system refuses it.
void *allocate_zeroed(std::uint64_t bytes);
// Gives the block back.
void release_zeroed(void *block, std::uint64_t bytes);
// Has the system back every page of the block with memory now rather than at each page's first
// write; what the block holds stays as it is.
void back_pages(void *block, std::uint64_t bytes);
// Makes the whole block read as zero again. Pages that were never written stay untouched, and
// written ones are handed back to the system rather than filled.
void rezero(void *block, std::uint64_t bytes);

// Sleeps for about `ms` milliseconds.
void sleep_ms(int ms);

// The machine's physical memory in bytes; 0 when the system doesn't say.
std::uint64_t physical_memory_bytes();

// Clears a terminal on standard output; prints nothing when it is a pipe or a file.
void clear_terminal();
