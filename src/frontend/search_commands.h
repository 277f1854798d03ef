// The command words of the search: `go` and `sortedmoves`.
#pragma once

// `go [depth n] [movetime m] [wtime ...]`: searches current_board within the limits, printing one
// `info` line per finished iteration, then the `bestmove` line and the elapsed time.
int run_go(const char *line, char *rest);

// `sortedmoves`: the legal moves scored and sorted as the ordering sees them at the root, each
// marked "True" when the last search's line starts with it.
int run_sortedmoves(const char *line, char *rest);

// The `bench` argument: searches the benchmark positions, printing a line for each, and ends
// with "<nodes> nodes <nps> nps" (alpha-beta and quiescence nodes). No earlier line holds either
// word, since the readers of this output take the first match.
void bench_command();
