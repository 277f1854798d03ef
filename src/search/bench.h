// The search benchmark: a dozen positions, each searched to a fixed depth with no time limit.
// The benchmark program and the engine's `bench` argument both run it through here.
#pragma once

#include <cstdint>

struct bench_position {
    const char *fen;
    int depth;
    std::uint64_t nodes; // alpha-beta nodes of the whole search, all iterations (16 MiB table)
};

// A change of any pinned count is a change of the search's behaviour.
inline constexpr bench_position bench_positions[] = {
    { "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1", 7, 17810 },
    { "rnbqkbnr/pppppppp/8/8/4P3/8/PPPP1PPP/RNBQKBNR b KQkq - 0 1", 7, 24396 },
    { "r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1", 6, 48655 },
    { "r1bq1rk1/pp2ppbp/2np1np1/8/3NP3/2N1BP2/PPPQ2PP/R3KB1R w KQ - 0 1", 6, 20142 },
    { "r2q1rk1/ppp2ppp/2n1bn2/2b1p3/4P3/2NP1N2/PPPBBPPP/R2QK2R w KQ - 0 1", 6, 19116 },
    { "rnbq1k1r/pp1Pbppp/2p5/8/2B5/8/PPP1NnPP/RNBQK2R w KQ - 1 8", 6, 7535 },
    { "r4rk1/1pp1qppp/p1np1n2/2b1p1B1/2B1P1b1/P1NP1N2/1PP1QPPP/R4RK1 w - - 0 10", 6, 10232 },
    { "8/2p5/3p4/KP5r/1R3p1k/8/4P1P1/8 w - - 0 1", 8, 20886 },
    { "8/8/8/4k3/8/8/4P3/4K3 w - - 0 1", 8, 5396 },
    { "r1bqkb1r/pppp1ppp/2n2n2/4p3/2B1P3/5N2/PPPP1PPP/RNBQK2R w KQkq - 4 4", 6, 16586 },
    { "8/5pk1/6p1/8/3R4/6P1/5PK1/3r4 w - - 0 1", 8, 20772 },
    { "r1b2rk1/2q1b1pp/p2ppn2/1p6/3QP3/1BN1B3/PPP3PP/R4RK1 w - - 0 1", 6, 63782 },
};
inline constexpr int bench_position_count = int(sizeof bench_positions / sizeof bench_positions[0]);

// What one position's search gave.
struct bench_result {
    int index; // into bench_positions
    std::uint64_t nodes; // alpha-beta nodes
    std::uint64_t quiescence_nodes;
    double ms;
    const char *best; // the move found, as text; valid until the next search
};

using bench_reporter = void (*)(const bench_result &result);

// The table the benchmark searches with, whatever the dialect's: the table's size decides which
// positions share a slot, so the node count depends on it, and 16 MiB lets a testing framework
// run one benchmark per thread at once.
constexpr std::uint64_t bench_table_bytes = std::uint64_t(16) << 20;

// Searches the first `count` positions (all of them when `count` is out of range) in order, each
// in the fixed dialect to its depth, from an empty hash table of bench_table_bytes whose pages the
// system has backed before the clock starts, and reports each. Sets current_board on the way and
// leaves it so, and leaves the table at that size. Needs the attack tables. Returns the sums, with
// `index` the number of positions searched and `best` null; with `index` -1 when the table's
// memory can't be had.
bench_result run_bench(int count, bench_reporter report);
