// What a search may spend: the limits of a `go` command, the clock and the deadline test, and
// the flag that ends a running search.
#pragma once

#include <cstdint>

// Set to 1 to end the running search: by `stop` or `quit` during a search, or by the clock.
extern std::int32_t search_stop;

extern std::int32_t search_depth_limit; // the last iteration the search may run, 1..12
extern std::int32_t search_time_limit_ms; // 0 when time_limit_active is 0
extern std::int32_t time_limit_active; // 1: the time limit holds; 0: depth (or stop) alone
extern double search_start_ms; // clock_ms_real() when the search started

constexpr int default_depth = 6, default_time_ms = 10000;

// The standard UCI mode (korvane --uci), for GUIs and analysis: 0 until it is turned on at
// start-up. What it changes is named where it changes it.
extern std::int32_t standard_mode;
// Standard mode only: nodes of both kinds a `go nodes` search may visit, 0 for no such limit,
// counted from node_limit_start (the clock's node counter when the search began); the budget
// a ponder search gets at `ponderhit`, -1 for none; and 1 while a `go infinite` or `go ponder`
// search must wait for `stop` (or `ponderhit`) before it may answer.
extern std::uint64_t node_limit, node_limit_start;
extern std::int32_t ponder_budget_ms;
extern std::int32_t waits_for_stop;
constexpr int depth_ceiling = 12, time_ceiling_ms = 5500;
constexpr int default_moves_to_go = 30, lowest_budget_ms = 20, clock_margin_ms = 10;

// The time a clock gives one move, in ms: the remaining time over the moves to go (30 when 0)
// and 0.8 of the increment, at least 20 ms, 10 ms less than the remaining time once it comes
// within 9 ms of it, then at most `ceiling` and at least `floor`.
std::int64_t clock_budget(std::int64_t remaining, std::int64_t increment, std::int64_t moves_to_go,
    std::int64_t ceiling, std::int64_t floor);

// The absolute difference of two clock readings, cut to a 32-bit integer.
std::int32_t elapsed_ms(double now, double start);

// Sets search_stop once the elapsed time is strictly above the time limit, or the node limit is
// reached (both only while time_limit_active).
void check_deadline();

// `ponderhit` during a ponder search: from now on the search has the ponder budget, or, without
// one, runs on until `stop`.
void ponder_hit();

// Nodes of either kind, alpha-beta and quiescence, counted only to space the clock readings; it
// runs on from search to search, and nothing else reads it.
extern std::uint32_t clock_tick_count;

// Called at every node of either kind: reads the clock at every 256th. A quiescence tree can hold
// many thousands of nodes between two alpha-beta nodes; reading the clock (some tens of
// nanoseconds) this often stops a search within a fraction of a millisecond of its limit.
// Without a time limit the clock isn't read, and the search goes exactly as it would without
// this call.
inline void clock_tick()
{
    if ((++clock_tick_count & 0xFF) == 0) check_deadline();
}
