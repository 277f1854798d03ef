// Input during a search: the poll that drains a piped standard input without blocking, acts on
// `stop` and `quit`, and parks every other line in a ring that the command loop serves first.
#pragma once

#include <cstdint>

constexpr int command_size = 16384; // a command line: at most 16383 characters and a terminator
constexpr int line_queue_slots = 64;

extern char input_line[command_size];
extern std::int32_t input_line_length;
extern char line_queue[line_queue_slots][command_size];
extern std::int32_t line_queue_count, line_queue_head, line_queue_tail;
// -1 not yet known, 0 no, 1 yes.
extern std::int32_t input_is_pipe;

// Drains what waits on a piped standard input; never blocks. Called by the search only. Once
// search_stop is up it reads nothing more: the search is ending, and what comes after is left in
// order for the command loop.
void poll_input();

// Stores a copy of `text`, cut to 16383 characters, in the ring. Returns 1 when stored, 0 when
// `text` is null or empty or the ring is full.
int queue_line(const char *text);

// Moves the unfinished line that the poll has begun (its bytes came before anything still unread)
// into `text` (command_size bytes) and empties it. Returns its length, 0 when there is none.
int take_partial_line(char *text);

// Takes the oldest queued line into `text` (command_size bytes). Returns 0 when none waits.
int take_queued_line(char *text);
