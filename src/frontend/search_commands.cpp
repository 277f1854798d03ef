// The `go` and `sortedmoves` words: the text side of the search.
#include "frontend/search_commands.h"

#include <cstdio>

#include "control/search_limits.h"
#include "frontend/parse_go.h"
#include "movegen/legal.h"
#include "platform/platform.h"
#include "position/board.h"
#include "position/output.h"
#include "search/bench.h"
#include "search/iterate.h"
#include "search/ordering.h"

namespace {

void print_info(const iteration_report &r)
{
    out_printf("info depth %d time %d nodes %llu score cp %d pv %s\n", r.depth, r.time_ms,
        static_cast<unsigned long long>(r.nodes), r.score, r.pv);
}

void print_bench_line(const bench_result &r)
{
    out_printf("%2d  depth %d  best %-5s  alpha-beta %9llu  quiescence %10llu  %8.1f ms\n",
        r.index + 1, bench_positions[r.index].depth, r.best,
        static_cast<unsigned long long>(r.nodes),
        static_cast<unsigned long long>(r.quiescence_nodes), r.ms);
}

} // namespace

int run_go(const char *line, char *)
{
    const std::uint64_t start = clock_ms();
    parse_go(line, &search_depth_limit, &search_time_limit_ms, &time_limit_active);
    // A board without exactly one king of each colour can't be searched: there is no move to
    // give, and the answer comes at once.
    const char *best = one_king_each(current_board) ? iterate_search(print_info) : "0000";
    out_printf("bestmove %s\r\n", best);
    out_printf("elapsed time: %llu ms\n", static_cast<unsigned long long>(clock_ms() - start));
    out_flush();
    return 0;
}

int run_sortedmoves(const char *, char *)
{
    // Without exactly one king of each colour there is no move list to show.
    if (!one_king_each(current_board)) return 0;
    MoveList list;
    list.count = 0;
    generate_moves(current_board, &list);
    if (list.count == 0) return 0;
    std::int32_t scores[max_moves];
    score_moves(0, current_board, &list, scores);
    const Move line_start = pv_length[0] > 0 ? pv_cell(0, 0) : 0;
    for (int i = 0; i < list.count; i++) {
        char text[8];
        move_to_text(list.moves[i], text);
        const bool marked = line_start != 0 && same_move(line_start, list.moves[i]);
        out_printf("%s: %d   %s\n", text, scores[i], marked ? "True" : "False");
    }
    return 0;
}

void bench_command()
{
    const bench_result total = run_bench(bench_position_count, print_bench_line);
    const std::uint64_t nodes = total.nodes + total.quiescence_nodes;
    const std::uint64_t per_second
        = total.ms > 0 ? std::uint64_t(double(nodes) * 1000.0 / total.ms) : 0;
    out_printf("%llu nodes %llu nps\n", static_cast<unsigned long long>(nodes),
        static_cast<unsigned long long>(per_second));
    out_flush();
}
