// The engine's search against the literal oracle: the same rows (depth, nodes, score, line), the
// same move, and the same tables left behind, over fixed and random positions.
#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>

#include "control/search_limits.h"
#include "movegen/legal.h"
#include "position/apply.h"
#include "position/zobrist.h"
#include "search/alpha_beta.h"
#include "search/bench.h"
#include "search/iterate.h"
#include "search/ordering.h"
#include "search/quiescence.h"
#include "tests/search/literal_search.h"
#include "tests/support/search_setup.h"

namespace {

#ifdef KORVANE_SANITIZE
constexpr int depth_cut = 3, random_positions = 6, random_depth = 3;
#else
constexpr int depth_cut = 2, random_positions = 40, random_depth = 4;
#endif

std::vector<literal::search_row> rows;

void collect(const iteration_report &r) { rows.push_back({ r.depth, r.nodes, r.score, r.pv }); }

// Both searches of current_board to `depth`, compared in every figure.
void compare_searches(int depth, const std::string &label)
{
    search_depth_limit = depth;
    search_time_limit_ms = 0;
    time_limit_active = 0;
    const char *literal_best = nullptr;
    const std::vector<literal::search_row> expected = literal::iterate(&literal_best);
    const std::string expected_best = literal_best;
    std::vector<Move> expected_pv(pv_table, pv_table + pv_rows * pv_columns);
    std::vector<std::int32_t> expected_length(pv_length, pv_length + pv_rows);
    const std::int32_t expected_nodes = node_count;
    std::vector<std::uint32_t> expected_counts(
        &alpha_counts[0][0][0], &alpha_counts[0][0][0] + counter_plies * 64 * 64);

    rows.clear();
    const std::string best = iterate_search(collect);
    ASSERT_EQ(rows.size(), expected.size()) << label;
    for (std::size_t i = 0; i < rows.size(); i++) EXPECT_EQ(rows[i], expected[i]) << label;
    if (expected_best != "0000") { EXPECT_EQ(best, expected_best) << label; }
    EXPECT_EQ(node_count, expected_nodes) << label;
    EXPECT_TRUE(std::equal(expected_pv.begin(), expected_pv.end(), pv_table)) << label;
    EXPECT_TRUE(std::equal(expected_length.begin(), expected_length.end(), pv_length)) << label;
    EXPECT_TRUE(std::equal(expected_counts.begin(), expected_counts.end(), &alpha_counts[0][0][0]))
        << label;
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
    std::mt19937 rng(2024);
    for (int n = 0; n < random_positions; n++) {
        set_position("position startpos");
        std::string moves;
        const int plies = 4 + int(rng() % 60);
        for (int i = 0; i < plies; i++) {
            MoveList list;
            list.count = 0;
            generate_moves(current_board, &list);
            if (list.count == 0) break;
            char text[8];
            move_to_text(list.moves[rng() % unsigned(list.count)], text);
            moves += std::string(" ") + text;
        }
        const std::string line = "position startpos moves" + moves;
        set_position(line.c_str());
        compare_searches(random_depth, line);
    }
}

// Quiescence alone, from random positions and windows.
TEST(Oracle, QuiescenceScoresAlike)
{
    std::mt19937 rng(77);
    for (int n = 0; n < 200; n++) {
        set_position("position startpos");
        Board board = current_board;
        const int plies = 6 + int(rng() % 50);
        // The check bit of the last move played: what a parent hands down as known.
        std::int32_t check = -1;
        for (int i = 0; i < plies; i++) {
            MoveList list;
            list.count = 0;
            generate_moves(board, &list);
            if (list.count == 0) break;
            const Move m = list.moves[rng() % unsigned(list.count)];
            apply_move(&board, m);
            check = (m & move_gives_check) ? 1 : 0;
        }
        const std::int32_t alpha = std::int32_t(rng() % 801) - 400;
        const std::int32_t beta = alpha + 1 + std::int32_t(rng() % 400);
        for (int budget : { 0, 4, 6 }) {
            const std::int32_t expected = literal::quiescence(board, budget, alpha, beta);
            EXPECT_EQ(quiescence(board, budget, alpha, beta), expected)
                << "position " << n << " budget " << budget;
            EXPECT_EQ(quiescence(board, budget, alpha, beta, INT32_MIN, check), expected)
                << "position " << n << " budget " << budget << " check " << check;
        }
    }
}

} // namespace
