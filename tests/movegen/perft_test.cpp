// Perft counts of the well-known test positions. The Release build runs each position at the
// deepest published depth within a few million leaves; the sanitizer build at a smaller one.
// Deeper counts run from tests/perft/deep_perft.sh.
#include <gtest/gtest.h>

#include <sstream>

#include "movegen/legal.h"
#include "movegen/perft.h"
#include "position/apply.h"
#include "tests/movegen/perft_cases.h"
#include "tests/support/helpers.h"

namespace {

#ifdef KORVANE_SANITIZE
constexpr std::uint64_t leaf_budget = 500000;
#else
constexpr std::uint64_t leaf_budget = 5000000;
#endif

// Per root move counts, to corner a faulty move when a total is wrong.
std::string divide(const Board &board, int depth)
{
    std::ostringstream out;
    MoveList list;
    list.count = 0;
    generate_moves(board, &list);
    for (int i = 0; i < list.count; i++) {
        Board copy = board;
        std::uint64_t key = 0;
        apply_move_keyed(&copy, list.moves[i], &key);
        out << text_of(list.moves[i]) << ": " << perft(depth - 1, copy) << "\n";
    }
    return out.str();
}

class Perft : public testing::TestWithParam<PerftCase> { };

TEST(PerftSuite, IsRead) { EXPECT_GE(perft_cases().size(), 40u); }

TEST_P(Perft, PublishedCounts)
{
    const PerftCase &c = GetParam();
    const Board board = fen(c.fen.c_str());
    const PerftCount *deepest = nullptr;
    for (const PerftCount &count : c.counts)
        if (count.nodes <= leaf_budget) deepest = &count;
    if (!deepest) GTEST_SKIP() << "every count is beyond this build's budget";
    const std::uint64_t nodes = perft(deepest->depth, board);
    EXPECT_EQ(nodes, deepest->nodes)
        << c.fen << " depth " << deepest->depth << "\n"
        << (nodes == deepest->nodes ? "" : divide(board, deepest->depth));
}

INSTANTIATE_TEST_SUITE_P(Positions, Perft, testing::ValuesIn(perft_cases()),
    [](const testing::TestParamInfo<PerftCase> &param) { return param.param.name; });

// Depth 0 is the leaf itself, and so is a negative depth: it never recurses. A board without
// kings, with castling rights and rooks at home, runs safely (the sanitizer build checks it).
TEST(PerftEdges, LeavesAndKinglessBoards)
{
    EXPECT_EQ(perft(0, start_board), 1u);
    EXPECT_EQ(perft(-1, start_board), 1u);
    EXPECT_EQ(perft(-2147483647 - 1, start_board), 1u);
    EXPECT_EQ(perft(2, fen("8/8/8/8/8/8/8/R7 w - - 0 1")), 0u); // black has no move at all
    perft(3, fen("r6r/8/8/3pP3/8/8/8/R6R w KQkq d6 0 1"));
}

} // namespace
