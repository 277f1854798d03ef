// The boardscore command through the real binary, fed on a pipe as a GUI would.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "engine_pipe.h"
#include "start_report.h"

namespace {

std::string last_line(const std::string &text)
{
    const std::size_t end = text.find_last_of('\n');
    if (end == std::string::npos) return text;
    const std::size_t start = text.find_last_of('\n', end - 1);
    return text.substr(start == std::string::npos ? 0 : start + 1, end - start);
}

TEST(BoardscoreCommand, StartPosition)
{
    const std::string out = run_engine("boardscore\nquit\n");
    EXPECT_EQ(out, start_report() + "boardscore: 0\n");
}

TEST(BoardscoreCommand, ScoreIsForTheSideToMove)
{
    // The fourth reference position has black to move: -10 for black.
    const std::string fourth = run_engine("position fen 2r2rk1/pp2bppp/2n1bn2/q2p4/3P4/"
                                          "P1NBBN2/1PQ2PPP/2R2RK1 b - - 3 15\nboardscore\n");
    EXPECT_EQ(last_line(fourth), "boardscore: -10\n");
    const std::string moves = run_engine("position startpos moves e2e4 e7e5 g1f3 b8c6\n"
                                         "boardscore\nquit\n");
    EXPECT_EQ(last_line(moves), "boardscore: 21\n");
}

TEST(BoardscoreCommand, GarbledPositionStillReports)
{
    const std::string out = run_engine("position fen QQQQQQQQ/QQQQQQQQ/QQQQ4 w\nboardscore\n"
                                       "position fen nonsense\nboardscore\nquit\n");
    EXPECT_EQ(std::count(out.begin(), out.end(), '\n'), 2 * 49);
    EXPECT_EQ(last_line(out), "boardscore: 0\n");
}

} // namespace
