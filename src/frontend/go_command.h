// The search's command words: `go`, `sortedmoves`, and the `bench` argument.
#pragma once

#include "frontend/session.h"
#include "search/iterate.h"

// Reads a `go` line into `request`: the whole line as it came (`line`) and the dispatcher's copy
// behind the word (`rest`). The fixed dialect reads the first 4095 characters of the line, drops a
// value out of range (its token consumed) and ignores any word it does not know; the standard
// dialect ignores or clamps what it can't take and names each such word in one `info string`.
// The clock words are read for the side to move of current_board.
void read_go(const Session &session, const char *line, char *rest, SearchRequest *request);

// `go`: searches current_board as read_go reads the line, printing the `info` lines, then the
// `bestmove` line (and in the fixed dialect the elapsed time).
int run_go(Session *session, const char *line, char *rest);

// `sortedmoves`: the legal moves scored and sorted as the ordering sees them at the root, each
// marked "True" when the last search's line starts with it.
int run_sortedmoves(Session *session, const char *line, char *rest);

// The `bench` argument: searches the benchmark positions, printing a line for each, and ends
// with "<nodes> nodes <nps> nps" (alpha-beta and quiescence nodes). No earlier line holds either
// word, since the readers of this output take the first match. Returns false when the table's
// memory can't be had.
bool bench_command();
