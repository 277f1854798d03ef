// Whole searches: mates, draws, single replies, and quiescence on its own.
// The reference searches themselves run through the binary in tests/search_pipes.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "eval/evaluate.h"
#include "movegen/legal.h"
#include "position/apply.h"
#include "position/fen.h"
#include "search/alpha_beta.h"
#include "search/iterate.h"
#include "search/ordering.h"
#include "search/quiescence.h"
#include "tests/support/search_setup.h"

namespace {

struct result {
    std::vector<SearchRow> rows;
    std::string best;
};

// Sets up the position of a `position` line and searches it to `depth` with no time limit, as
// `go depth` does, keeping the info rows.
result search(const char *position_line, int depth)
{
    set_position(position_line);
    result r;
    r.rows = search_rows(iterate_search, depth, &r.best);
    return r;
}

// At depth 3 the printed line stops before a word left over from another branch, which is not
// legal after d7d5; the stored line keeps it, since the ordering reads it.
TEST(ReferenceSearch, ThirdIterationKeepsTheLeftOverWordInTheTable)
{
    search("position startpos", 3);
    ASSERT_EQ(pv_length[0], 3);
    char text[8];
    move_to_text(pv_cell(0, 2), text);
    EXPECT_STREQ(text, "e2e4");
}

TEST(Search, RepeatsItselfExactly)
{
    const result first = search("position startpos moves e2e4 e7e5 g1f3", 4);
    const result second = search("position startpos moves e2e4 e7e5 g1f3", 4);
    EXPECT_EQ(first.rows.size(), 4u);
    EXPECT_EQ(first.rows, second.rows);
    EXPECT_EQ(first.best, second.best);
}

TEST(Search, MateInOneScores9999AndGoesOnToTheDepthLimit)
{
    const result r = search("position fen 6k1/5ppp/8/8/8/8/8/R5K1 w - - 0 1", 3);
    ASSERT_EQ(r.rows.size(), 3u);
    for (const SearchRow &x : r.rows) EXPECT_EQ(x.score, 9999);
    EXPECT_EQ(r.best, "a1a8");
}

// A mated root scores -10000, a stalemated one 0; each prints empty lines and no move.
TEST(Search, RootWithoutMoves)
{
    for (const auto &[position, score] :
        { std::pair { "R5k1/5ppp/8/8/8/8/8/6K1 b - - 0 1", -10000 },
            std::pair { "7k/5Q2/6K1/8/8/8/8/8 b - - 0 1", 0 } }) {
        const result r = search((std::string("position fen ") + position).c_str(), 2);
        EXPECT_EQ(r.rows, (std::vector<SearchRow> { { 1, 1, score, "" }, { 2, 2, score, "" } }));
        EXPECT_EQ(r.best, "0000");
    }
}

TEST(Search, SingleReplyIsPlayedWithoutSearch)
{
    const result r = search("position fen 7k/8/8/8/8/8/8/6RK b - - 0 1", 5);
    EXPECT_TRUE(r.rows.empty());
    EXPECT_EQ(r.best, "h8h7");
    EXPECT_EQ(node_count, 1);
}

// Black, a queen down, can repeat the position a third time with the knight.
constexpr const char *repetition_line = "position fen k7/8/8/8/8/8/8/KQ5n b - - 0 1 moves h1g3 "
                                        "b1b2 g3h1 b2b1 h1g3 b1b2 g3h1 b2b1";

TEST(Search, ThirdRepetitionIsADraw)
{
    const result r = search(repetition_line, 1);
    ASSERT_EQ(r.rows.size(), 1u);
    EXPECT_EQ(r.rows[0].score, 0);
    EXPECT_EQ(r.best, "h1g3");
    // The game's history comes back as it was.
    EXPECT_EQ(key_history_count, 9);
}

TEST(Search, FiftiethHalfMoveIsADrawOnlyOnTheCountOfFifty)
{
    const result drawn = search("position fen k7/8/8/8/8/8/8/KQ5n b - - 49 1", 2);
    ASSERT_EQ(drawn.rows.size(), 2u);
    EXPECT_EQ(drawn.rows[1].score, 0);
    const result lost = search("position fen k7/8/8/8/8/8/8/KQ5n b - - 50 1", 2);
    ASSERT_EQ(lost.rows.size(), 2u);
    EXPECT_LT(lost.rows[1].score, -500);
}

Board board_of(const char *position_line)
{
    set_position(position_line);
    return current_board;
}

TEST(Quiescence, CheckmatedSideScoresMinus9999WhateverTheWindow)
{
    const Board mated = board_of("position fen R5k1/5ppp/8/8/8/8/8/6K1 b - - 0 1");
    EXPECT_EQ(quiescence(mated, 4, -50, 50), -9999);
    EXPECT_EQ(quiescence(mated, 0, 300, 400), -9999);
    EXPECT_EQ(quiescence(mated, 6, -20000, -10001), -9999);
}

TEST(Quiescence, StalematedSideGetsItsStaticScore)
{
    const Board stalemate = board_of("position fen 7k/5Q2/6K1/8/8/8/8/8 b - - 0 1");
    const std::int32_t stand_pat = evaluate(stalemate, 0, 0);
    EXPECT_LT(stand_pat, -800);
    EXPECT_EQ(quiescence(stalemate, 4, -100, 100), stand_pat);
}

TEST(Quiescence, QuietCheckWithoutCaptureIsNotTried)
{
    // Ra8 mates, but with no capture on the board the static score stands, even below alpha.
    const Board board = board_of("position fen 6k1/5ppp/8/8/8/8/8/R5K1 w - - 0 1");
    const std::int32_t stand_pat = evaluate(board, 1, 0);
    EXPECT_EQ(quiescence(board, 4, stand_pat + 100, 9000), stand_pat);
}

TEST(Quiescence, StandPatAtOrAboveBetaReturnsBeta)
{
    const Board board = board_of("position fen 4k3/8/8/8/8/8/3q4/R3K3 w - - 0 1");
    EXPECT_EQ(quiescence(board, 4, -30000, -29000), -29000);
}

} // namespace
