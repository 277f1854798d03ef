// The engine's search against the literal one, the same body with every shortcut off: the same
// rows (depth, nodes, score, line), the same move, the same quiescence nodes and the same tables
// left behind, over fixed and random positions, and quiescence alone from random windows.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "control/search_limits.h"
#include "search/alpha_beta.h"
#include "search/bench.h"
#include "search/iterate.h"
#include "search/ordering.h"
#include "search/quiescence.h"
#include "tests/support/helpers.h"
#include "tests/support/random_boards.h"
#include "tests/support/search_setup.h"

namespace {

#ifdef KORVANE_SANITIZE
constexpr int depth_cut = 3, random_positions = 6, random_depth = 3;
#else
constexpr int depth_cut = 2, random_positions = 40, random_depth = 4;
#endif

// Everything that one search leaves to be seen: its rows, its move and its global tables.
struct outcome {
    std::vector<SearchRow> rows;
    std::string best;
    std::int32_t nodes;
    std::uint64_t quiescence_nodes;
    std::vector<Move> pv;
    std::vector<std::int32_t> pv_lengths;
    std::vector<std::uint32_t> alpha, cutoff;
};

outcome run(search_function search, int depth)
{
    quiescence_node_count = 0;
    outcome o;
    o.rows = search_rows(search, depth, &o.best);
    o.nodes = node_count;
    o.quiescence_nodes = quiescence_node_count;
    o.pv.assign(pv_table, pv_table + pv_rows * pv_columns);
    o.pv_lengths.assign(pv_length, pv_length + pv_rows);
    constexpr int cells = counter_plies * 64 * 64;
    o.alpha.assign(&alpha_counts[0][0][0], &alpha_counts[0][0][0] + cells);
    o.cutoff.assign(&cutoff_counts[0][0][0], &cutoff_counts[0][0][0] + cells);
    return o;
}

// Both searches of current_board to `depth`, compared in every figure.
void compare_searches(int depth, const std::string &label)
{
    const outcome expected = run(literal_search, depth);
    const outcome got = run(engine_search, depth);
    EXPECT_EQ(got.rows, expected.rows) << label;
    EXPECT_EQ(got.best, expected.best) << label;
    EXPECT_EQ(got.nodes, expected.nodes) << label;
    EXPECT_EQ(got.quiescence_nodes, expected.quiescence_nodes) << label;
    // The tables that the next `sortedmoves` reads.
    EXPECT_TRUE(got.pv == expected.pv && got.pv_lengths == expected.pv_lengths) << label;
    EXPECT_TRUE(got.alpha == expected.alpha && got.cutoff == expected.cutoff) << label;
}

TEST(Oracle, BenchPositionsSearchAlike)
{
    for (const bench_position &p : bench_positions) {
        std::string line = std::string("position fen ") + p.fen;
        set_position(line.c_str());
        compare_searches(p.depth - depth_cut, p.fen);
    }
}

// Positions reached by random play from the start, each searched by both.
TEST(Oracle, RandomPositionsSearchAlike)
{
    std::mt19937_64 rng(2024);
    for (int n = 0; n < random_positions; n++) {
        std::vector<Move> moves;
        random_game(rng, 4 + int(rng() % 60), start_board, &moves);
        std::string line = "position startpos moves";
        for (Move m : moves) line.append(" ").append(text_of(m));
        set_position(line.c_str());
        compare_searches(random_depth, line);
    }
}

// Quiescence alone, from random positions and windows.
TEST(Oracle, QuiescenceScoresAlike)
{
    std::mt19937_64 rng(77);
    for (int n = 0; n < 200; n++) {
        std::vector<Move> moves;
        const Board board = random_game(rng, 6 + int(rng() % 50), start_board, &moves).back();
        // The check bit of the last move played: what a parent hands down as known.
        const std::int32_t check = moves.empty() ? -1 : (moves.back() & move_gives_check) ? 1 : 0;
        const std::int32_t alpha = std::int32_t(rng() % 801) - 400;
        const std::int32_t beta = alpha + 1 + std::int32_t(rng() % 400);
        for (int budget : { 0, 4, 6 }) {
            const std::int32_t expected = quiescence_literal(board, budget, alpha, beta);
            EXPECT_EQ(quiescence(board, budget, alpha, beta), expected)
                << "position " << n << " budget " << budget;
            EXPECT_EQ(quiescence(board, budget, alpha, beta, INT32_MIN, check), expected)
                << "position " << n << " budget " << budget << " check " << check;
        }
    }
}

} // namespace
