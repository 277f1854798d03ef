// Search benchmark: the engine's bench positions, each searched to a fixed depth with no time
// limit. Prints the nodes of every search, alpha-beta and quiescence apart, the time, and the
// total; fails when an alpha-beta node count differs from the figure pinned beside its position.
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "movegen/attacks.h"
#include "search/bench.h"
#include "search/tt.h"

namespace {

bool all_match = true;

void print_result(const bench_result &r)
{
    const bench_position &p = bench_positions[r.index];
    const bool match = r.nodes == p.nodes;
    all_match = all_match && match;
    std::printf("%2d  depth %d  nodes %9llu  quiescence %10llu  %8.1f ms  best %s%s\n", r.index + 1,
        p.depth, static_cast<unsigned long long>(r.nodes),
        static_cast<unsigned long long>(r.quiescence_nodes), r.ms, r.best,
        match ? "" : "  (differs from the pinned count)");
}

} // namespace

int main(int argc, char **argv)
{
    // With --first N only the first N positions are searched.
    int count = bench_position_count;
    if (argc == 3 && std::strcmp(argv[1], "--first") == 0) count = std::atoi(argv[2]);
    init_attack_tables();
    const bench_result total = run_bench(count, print_result);
    const double per_second
        = total.ms > 0 ? double(total.nodes + total.quiescence_nodes) * 1000.0 / total.ms : 0;
    std::printf("total: %llu alpha-beta + %llu quiescence nodes in %.1f ms, %.0f nodes/s\n",
        static_cast<unsigned long long>(total.nodes),
        static_cast<unsigned long long>(total.quiescence_nodes), total.ms, per_second);
    std::printf("Bench: %llu\n", static_cast<unsigned long long>(total.nodes));
    return all_match ? 0 : 1;
}
