// Evaluations per second over a fixed set of positions: openings, middlegames and endings.
// `eval_bench --checksum` prints the sum of all scores instead, which a test pins.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>
#include <vector>

#include "bench/eval/bench_positions.h"
#include "eval/evaluate.h"
#include "movegen/attacks.h"

namespace {

const std::vector<Board> &positions()
{
    static const std::vector<Board> set = bench_positions();
    return set;
}

std::int64_t checksum()
{
    std::int64_t sum = 0, index = 1;
    for (const Board &b : positions()) sum += index++ * evaluate(b, 1, 0);
    return sum;
}

void evaluate_all(benchmark::State &state)
{
    const std::vector<Board> &set = positions();
    for (auto _ : state)
        for (const Board &b : set) benchmark::DoNotOptimize(evaluate(b, b.white_to_move, 0));
    state.SetItemsProcessed(std::int64_t(state.iterations()) * std::int64_t(set.size()));
    state.counters["positions"] = double(set.size());
}
BENCHMARK(evaluate_all);

} // namespace

int main(int argc, char **argv)
{
    init_attack_tables();
    if (argc > 1 && std::strcmp(argv[1], "--checksum") == 0) {
        std::printf("positions %zu checksum %lld\n", positions().size(),
            static_cast<long long>(checksum()));
        return 0;
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
