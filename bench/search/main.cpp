// Search benchmark: a dozen positions, each searched to a fixed depth with no time limit. Prints
// the nodes of every search, alpha-beta and quiescence apart, the time, and the total alpha-beta
// node count, which must match the figures pinned beside the positions.
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "bench/search/bench_positions.h"
#include "control/search_limits.h"
#include "movegen/attacks.h"
#include "platform/platform.h"
#include "position/fen.h"
#include "search/alpha_beta.h"
#include "search/iterate.h"
#include "search/quiescence.h"
#include "search/tt.h"

namespace {

void no_print(const iteration_report &) { }

} // namespace

int main(int argc, char **argv)
{
    // With --first N only the first N positions are searched.
    int count = int(sizeof bench_positions / sizeof bench_positions[0]);
    if (argc == 3 && std::strcmp(argv[1], "--first") == 0) {
        const int first = std::atoi(argv[2]);
        if (first > 0 && first < count) count = first;
    }
    init_attack_tables();
    if (!hash_allocate()) return 1;
    std::uint64_t total_nodes = 0, total_quiescence = 0;
    double total_ms = 0;
    bool all_match = true;
    for (int i = 0; i < count; i++) {
        const bench_position &p = bench_positions[i];
        char line[256];
        std::snprintf(line, sizeof line, "position fen %s", p.fen);
        set_position_fen(line);
        hash_clear();
        search_depth_limit = p.depth;
        search_time_limit_ms = 0;
        time_limit_active = 0;
        quiescence_node_count = 0;
        const double start = clock_ms_real();
        const char *best = iterate_search(no_print);
        const double ms = clock_ms_real() - start;
        const std::uint64_t nodes = std::uint64_t(node_count);
        const bool match = nodes == p.nodes;
        all_match = all_match && match;
        std::printf("%2d  depth %d  nodes %9llu  quiescence %10llu  %8.1f ms  best %s%s\n", i + 1,
            p.depth, static_cast<unsigned long long>(nodes),
            static_cast<unsigned long long>(quiescence_node_count), ms, best,
            match ? "" : "  (differs from the pinned count)");
        total_nodes += nodes;
        total_quiescence += quiescence_node_count;
        total_ms += ms;
    }
    const double per_second
        = total_ms > 0 ? double(total_nodes + total_quiescence) * 1000.0 / total_ms : 0;
    std::printf("total: %llu alpha-beta + %llu quiescence nodes in %.1f ms, %.0f nodes/s\n",
        static_cast<unsigned long long>(total_nodes),
        static_cast<unsigned long long>(total_quiescence), total_ms, per_second);
    std::printf("Bench: %llu\n", static_cast<unsigned long long>(total_nodes));
    return all_match ? 0 : 1;
}
