// The search benchmark's positions and loop.
#include "search/bench.h"

#include <cstdio>

#include "control/search_limits.h"
#include "platform/platform.h"
#include "position/fen.h"
#include "search/alpha_beta.h"
#include "search/iterate.h"
#include "search/quiescence.h"
#include "search/tt.h"

namespace {

void no_print(const SearchLine &) { }

} // namespace

bench_result run_bench(int count, bench_reporter report)
{
    if (count <= 0 || count > bench_position_count) count = bench_position_count;
    bench_result total = { count, 0, 0, 0, nullptr };
    if ((hash_table_bytes != bench_table_bytes || !hash_table) && !hash_resize(bench_table_bytes)) {
        total.index = -1;
        return total;
    }
    static SearchRequest request;
    static SearchResult result;
    for (int i = 0; i < count; i++) {
        const bench_position &p = bench_positions[i];
        char line[256];
        std::snprintf(line, sizeof line, "position fen %s", p.fen);
        set_position_fen(line);
        hash_clear();
        hash_touch(); // the time measures the search, not the system backing the table
        request = SearchRequest { &fixed_dialect, {}, 1, -1, {} };
        request.limits.depth = p.depth;
        const double start = clock_ms_real();
        request.limits.start_ms = start;
        run_search(request, no_print, &result);
        const bench_result one = { i, std::uint64_t(node_count), quiescence_node_count,
            clock_ms_real() - start, result.best };
        report(one);
        total.nodes += one.nodes;
        total.quiescence_nodes += one.quiescence_nodes;
        total.ms += one.ms;
    }
    return total;
}
