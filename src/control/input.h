// Input during a search: the poll that drains standard input without blocking, acts on `stop`
// and `quit` (and in the standard dialect on `isready` and `ponderhit`), and keeps every other
// line in a queue that the command loop serves first. How it does so is the dialect's.
#pragma once

#include <cstdint>

#include "control/dialect.h"

constexpr int command_size = 16384; // the fixed dialect's command line and its terminator

// -1 not yet known, 0 no, 1 yes.
extern std::int32_t input_is_pipe;

// What the poll needs of the front end: the dialect, and who answers `isready` during a search.
struct InputRules {
    const Dialect *dialect;
    void (*answer_isready)();
};

// Hands the poll its rules; until then it follows the fixed dialect and answers nothing.
void set_input_rules(const InputRules &rules);

// Drains what waits on standard input; never blocks. Called by the search and perft only. Once
// search_stop is up it reads nothing more: the search is ending, and what comes after is left in
// order for the command loop.
void poll_input();

// While held, the poll reads nothing (a search that must finish an iteration after a stop).
void hold_input(bool held);

// Moves the unfinished line that the poll has begun (its bytes came before anything still unread)
// into `text` (`size` bytes) and empties it. Returns its length, 0 when there is none; -1 when
// the line is already longer than the standard dialect takes (its rest is then skipped too).
int take_partial_line(char *text, int size);

// Takes the oldest queued line into `text` (`size` bytes). Returns 0 when none waits, 1 for a
// line, -1 for a line the standard dialect refused whole for its length.
int take_queued_line(char *text, int size);
