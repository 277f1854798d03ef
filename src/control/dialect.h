// The two dialects the engine speaks: its own fixed one, byte for byte as it has always been, and
// the standard UCI protocol that GUIs, tournament managers and testing frameworks expect. Every
// difference between the two is a field of this record; the front end picks one at start-up and
// hands it to each layer that behaves differently, so no layer rewrites another's settings.
#pragma once

#include <cstdint>

struct Dialect {
    // Output.
    bool standard; // the standard protocol: options, `info string` refusals, `bestmove (none)`
    bool lf_only; // every line ends in LF alone (the fixed dialect has CR LF in its literals)
    bool elapsed_line; // "elapsed time: N ms" after each bestmove
    bool reports_steering; // reported scores include the root's opening steering
    // Input.
    bool tabs_are_blanks; // a tab separates words like a blank
    int longest_line; // the longest command line taken whole, in characters
    bool splits_long_lines; // a longer line goes on as the next one (else it is refused whole)
    // Input during a search.
    bool stop_drops_rest; // a `stop` ends the read: what came behind it in the same read is lost
    int queued_lines; // lines kept for after the search; 0 for no limit
    bool polls_every_input; // a terminal or a file is read during a search too, not only a pipe
    bool input_end_stops; // the end of input ends the search (and then the program)
    bool answers_during_search; // `isready` answered and `ponderhit` taken while searching
    // Search.
    int deepest_iteration; // no deeper iteration runs
    std::int32_t time_ceiling_ms; // no move gets more time
    std::int32_t lowest_budget_ms; // a clock never gives a move less
    bool searches_single_reply; // a root with one legal move searches it instead of playing it
    bool fifty_from_hundred; // 100 half-moves and more draw; else exactly 50 (the count wraps)
    bool keeps_table; // the hash table lives from search to search, mates relative to their node
    int counter_rows; // rows of the move counters the search uses (deeper plies share the last)
    int pv_stride; // cells per row of the principal-variation store
    std::uint64_t table_bytes; // the hash table's size at start-up
};

inline constexpr std::uint64_t mib = 1 << 20;

// The engine's own dialect: the protocol's literals as they stand (CR LF), a dozen plies and 5.5 s
// at most, a fresh table for every search.
inline constexpr Dialect fixed_dialect = {
    .standard = false,
    .lf_only = false,
    .elapsed_line = true,
    .reports_steering = true,
    .tabs_are_blanks = false,
    .longest_line = 16383,
    .splits_long_lines = true,
    .stop_drops_rest = true,
    .queued_lines = 64,
    .polls_every_input = false,
    .input_end_stops = false,
    .answers_during_search = false,
    .deepest_iteration = 12,
    .time_ceiling_ms = 5500,
    .lowest_budget_ms = 20,
    .searches_single_reply = false,
    .fifty_from_hundred = false,
    .keeps_table = false,
    .counter_rows = 13,
    .pv_stride = 13,
    .table_bytes = 512 * mib,
};

// The standard UCI dialect (--uci, korvane-uci, the Makefile's build): every line that arrives is
// carried out in order, every `go` is answered, the clock is the tournament's.
inline constexpr Dialect standard_dialect = {
    .standard = true,
    .lf_only = true,
    .elapsed_line = false,
    .reports_steering = false,
    .tabs_are_blanks = true,
    .longest_line = 1 << 20,
    .splits_long_lines = false,
    .stop_drops_rest = false,
    .queued_lines = 0,
    .polls_every_input = true,
    .input_end_stops = true,
    .answers_during_search = true,
    .deepest_iteration = 63,
    .time_ceiling_ms = 2147483647,
    .lowest_budget_ms = 1,
    .searches_single_reply = true,
    .fifty_from_hundred = true,
    .keeps_table = true,
    .counter_rows = 64,
    .pv_stride = 64,
    .table_bytes = 16 * mib,
};
