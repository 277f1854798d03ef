// The movlist and perft commands through the real binary: exact bytes on standard output.
#include <gtest/gtest.h>

#include <string>

#include "engine_pipe.h"

namespace {

const char *const start_moves[20]
    = { "a2a3", "a2a4", "b2b3", "b2b4", "c2c3", "c2c4", "d2d3", "d2d4", "e2e3", "e2e4", "f2f3",
          "f2f4", "g2g3", "g2g4", "h2h3", "h2h4", "b1a3", "b1c3", "g1f3", "g1h3" };

// The elapsed-time line holds a number we can't know; check its form and cut it off.
std::string without_elapsed_time(const std::string &out)
{
    static const std::string head = "elapsed time: ", tail = " ms\n";
    std::string result = out;
    for (std::size_t at = result.find(head); at != std::string::npos;
         at = result.find(head, at + 1)) {
        std::size_t end = at + head.size();
        while (end < result.size() && result[end] >= '0' && result[end] <= '9') end++;
        if (end == at + head.size() || result.compare(end, tail.size(), tail) != 0) continue;
        result.replace(at, end + tail.size() - at, "<elapsed>");
    }
    return result;
}

TEST(MoveCommands, MovlistPrintsTheLegalMovesInOrder)
{
    std::string expected;
    for (const char *m : start_moves) expected += std::string(m) + "\n";
    EXPECT_EQ(run_engine("movlist\n"), expected);
    EXPECT_EQ(run_engine("position fen 4k3/P7/8/8/8/8/8/4K3 w - - 0 1\nmovlist\n"),
        "a7a8q\na7a8r\na7a8b\na7a8n\ne1d1\ne1f1\ne1d2\ne1e2\ne1f2\n");
}

TEST(MoveCommands, MovlistPrintsNothingInMateOrStalemate)
{
    EXPECT_EQ(run_engine("position startpos moves f2f3 e7e5 g2g4 d8h4\nmovlist\n"), "");
    EXPECT_EQ(run_engine("position fen 7k/5Q2/6K1/8/8/8/8/8 b - - 0 1\nmovlist\n"), "");
}

TEST(MoveCommands, PerftPrintsEachRootMoveThenTheTotal)
{
    std::string two, one;
    for (const char *m : start_moves) {
        two += std::string(m) + ": 20\r\n";
        one += std::string(m) + "\r\n";
    }
    EXPECT_EQ(without_elapsed_time(run_engine("perft 2\n")), two + "2=400\n<elapsed>");
    EXPECT_EQ(without_elapsed_time(run_engine("perft 1\n")), one + "1=20\n<elapsed>");
    const std::string three = without_elapsed_time(run_engine("perft 3\n"));
    EXPECT_EQ(three.substr(0, 11), "a2a3: 380\r\n");
    EXPECT_NE(three.find("\r\n3=8902\n<elapsed>"), std::string::npos);
}

TEST(MoveCommands, PerftWithoutADepth)
{
    EXPECT_EQ(without_elapsed_time(run_engine("perft 0\n")), "0=1\n<elapsed>");
    EXPECT_EQ(without_elapsed_time(run_engine("perft x\n")), "0=1\n<elapsed>");
    EXPECT_EQ(run_engine("perft\nperft   \n"), "");
    // A negative depth is refused in silence.
    EXPECT_EQ(run_engine("perft -1\nperft -2147483648\n"), "");
}

TEST(MoveCommands, PerftLeavesTheGameAlone)
{
    const std::string before = run_engine("position startpos moves e2e4 c7c5\nboardkey\nmovlist\n");
    const std::string after
        = run_engine("position startpos moves e2e4 c7c5\nperft 2\nboardkey\nmovlist\n");
    ASSERT_NE(after.find("elapsed time"), std::string::npos);
    const std::size_t tail = after.find("ms\n", after.find("elapsed time")) + 3;
    EXPECT_EQ(after.substr(tail), before);
}

// Garbled positions: no king, crowded boards. Everything ends normally.
TEST(MoveCommands, GarbledPositionsAreSafe)
{
    int status = -1;
    const std::string out = run_engine("position fen 8/8/8/3pP3/8/8/8/8 w KQkq d6 0 1\nmovlist\n"
                                       "perft 3\nposition fen 8/8/8/8/8/8/8/8 w - - 0 1\nmovlist\n"
                                       "perft 2\nposition fen QQQQQQQk/Q6Q/Q4Q1Q/Q6Q/Q6Q/Q6Q/Q6Q/"
                                       "KQQQQQQQ w - - 0 1\nperft 1\n",
        &status);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(without_elapsed_time(out).substr(0, 10), "e5d6\ne5e6\n");
    EXPECT_NE(out.find("e5d6: 0\r\ne5e6: 1\r\n3=1\n"), std::string::npos);
    EXPECT_NE(out.find("2=0\n"), std::string::npos);
    EXPECT_NE(out.find("1=218\n"), std::string::npos);
}

} // namespace
