// What a search may spend: the limits of a `go` command as one record, the clock and the deadline
// test, and the flag that ends a running search.
#pragma once

#include <cstdint>

// Set to 1 to end the running search: by `stop` or `quit` during a search, or by the clock.
extern std::int32_t search_stop;

// The limits of one search, as the `go` reader makes them from its line.
struct SearchLimits {
    std::int32_t depth; // the last iteration the search may run
    std::int32_t time_ms; // the time limit, when `timed`
    std::int32_t soft_time_ms; // no new iteration starts past this, when `timed`
    bool timed; // the time limit (and the node limit) hold; else depth or stop alone
    std::uint64_t nodes; // nodes of either kind the search may visit; 0 for no limit
    bool waits_for_stop; // `go infinite` or `go ponder`: the answer waits for stop (or ponderhit)
    std::int32_t ponder_budget_ms; // the time a ponder search gets at ponderhit; -1 for none
    double start_ms; // clock_ms_real() when the clock started (the `go` line was taken)
};

// The deadline's state for the running search, written by start_clock, ponder_hit and the tests.
extern std::int32_t search_time_limit_ms;
extern std::int32_t search_soft_limit_ms; // no new iteration starts past it while timed
extern std::int32_t time_limit_active; // 1: the time limit holds; 0: depth (or stop) alone
extern double search_start_ms; // clock_ms_real() when the search started
// Nodes of both kinds the search may visit (0 for no such limit), counted from node_limit_start
// (the clock's node counter when the search began); the budget a ponder search gets at
// `ponderhit`, -1 for none; and 1 while a `go infinite` or `go ponder` search must wait for
// `stop` (or `ponderhit`) before it may answer.
extern std::uint64_t node_limit, node_limit_start;
extern std::int32_t ponder_budget_ms;
extern std::int32_t waits_for_stop;

constexpr int default_depth = 6, default_time_ms = 10000;
constexpr int default_moves_to_go = 30, clock_margin_ms = 10, least_clock_budget_ms = 20;

// Starts the deadline of a search within `limits`: clears search_stop, notes the start and the
// node counter.
void start_clock(const SearchLimits &limits);

// The time a clock gives one move in the fixed dialect, in ms: the remaining time over the moves
// to go (30 when 0) and 0.8 of the increment, at least 20 ms, 10 ms less than the remaining time
// once it comes within 9 ms of it, then at most `ceiling` and at least `floor`.
std::int64_t clock_budget(std::int64_t remaining, std::int64_t increment, std::int64_t moves_to_go,
    std::int64_t ceiling, std::int64_t floor);

// The time a tournament clock gives one move in the standard dialect: the remaining time less
// the overhead (what the GUI and the pipes lose per move), shared over the moves to go and one
// more (30 when none are given) with three quarters of the increment, and never more than a third
// of what is left, so that a last move before the time control or a nearly spent clock keeps a
// safe share against a machine that stalls the engine now and then; at least 1 ms.
// `soft` receives the time after which no new iteration starts.
std::int64_t tournament_budget(std::int64_t remaining, std::int64_t increment,
    std::int64_t moves_to_go, std::int64_t overhead, std::int64_t *soft);

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
