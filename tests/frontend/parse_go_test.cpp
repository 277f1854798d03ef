// The limits of a `go` line and the clock budget.
#include <gtest/gtest.h>

#include <string>

#include "frontend/parse_go.h"
#include "position/board.h"

namespace {

struct limits {
    std::int32_t depth, time_ms, active;
    bool operator==(const limits &) const = default;
};

std::ostream &operator<<(std::ostream &out, const limits &l)
{
    return out << "{" << l.depth << ", " << l.time_ms << ", " << l.active << "}";
}

limits go(const char *line, bool white_to_move = true)
{
    current_board = start_board;
    current_board.white_to_move = white_to_move;
    limits l { -7, -7, -7 };
    parse_go(line, &l.depth, &l.time_ms, &l.active);
    return l;
}

constexpr limits bare { 6, 5500, 1 };

// One row per line of the outcome table.
TEST(ParseGo, OutcomeTable)
{
    EXPECT_EQ(go("go"), bare);
    EXPECT_EQ(go("go infinite"), bare);
    EXPECT_EQ(go("go infinite ponder nodes 5 mate 3 searchmoves e2e4"), bare);
    EXPECT_EQ(go("go depth 4"), (limits { 4, 0, 0 }));
    EXPECT_EQ(go("go depth 20"), (limits { 12, 0, 0 }));
    EXPECT_EQ(go("go movetime 700"), (limits { 12, 700, 1 }));
    EXPECT_EQ(go("go movetime 100000"), (limits { 12, 5500, 1 }));
    EXPECT_EQ(go("go depth 3 movetime 100"), (limits { 3, 100, 1 }));
    EXPECT_EQ(go("go depth 30 movetime 9000"), (limits { 12, 5500, 1 }));
    EXPECT_EQ(go("go wtime 60000 btime 60000"), (limits { 12, 2000, 1 }));
    EXPECT_EQ(go("go wtime 0 btime 60000"), bare);
    EXPECT_EQ(go("go btime 60000"), bare);
    EXPECT_EQ(go("go wtime 60000 depth 4"), (limits { 4, 0, 0 }));
    EXPECT_EQ(go("go wtime 60000 btime 60000 movetime 300"), (limits { 12, 300, 1 }));
    EXPECT_EQ(go("go wtime 60000 btime 60000 movetime 300 depth 5"), (limits { 5, 300, 1 }));
    EXPECT_EQ(go("go winc 100 movestogo 5"), bare); // clock words, mover's time absent
}

TEST(ParseGo, ValuesOutOfRangeAreDroppedButConsumed)
{
    EXPECT_EQ(go("go depth 0"), bare);
    EXPECT_EQ(go("go depth x"), bare);
    EXPECT_EQ(go("go movetime 0"), bare);
    EXPECT_EQ(go("go depth movetime 100"), bare);
    EXPECT_EQ(go("go movestogo 0 wtime 3000"), (limits { 12, 100, 1 }));
    // A word at the end of the line without a value does nothing.
    EXPECT_EQ(go("go depth"), bare);
    EXPECT_EQ(go("go depth 3 movetime"), (limits { 3, 0, 0 }));
}

TEST(ParseGo, WordsAreWholeAndCaseSensitive)
{
    EXPECT_EQ(go("go DEPTH 3"), bare);
    EXPECT_EQ(go("go depths 3"), bare);
    EXPECT_EQ(go("go\tdepth 3"), bare); // the blank is the only separator
    EXPECT_EQ(go("go   depth    3  "), (limits { 3, 0, 0 }));
    // A skipped token is looked at on its own: a word after it still counts.
    EXPECT_EQ(go("go foo depth 3"), (limits { 3, 0, 0 }));
    // The first token is dropped whatever it is.
    EXPECT_EQ(go("depth 3"), bare);
    EXPECT_EQ(go(""), bare);
}

TEST(ParseGo, RepeatedWordsOverride)
{
    EXPECT_EQ(go("go depth 3 depth 5"), (limits { 5, 0, 0 }));
    EXPECT_EQ(go("go depth 3 depth 0"), (limits { 3, 0, 0 }));
    EXPECT_EQ(go("go movetime 300 movetime 200"), (limits { 12, 200, 1 }));
}

TEST(ParseGo, ClockBudget)
{
    // 6000 + 800 is cut to 5500.
    EXPECT_EQ(
        go("go wtime 60000 btime 1000 winc 1000 binc 0 movestogo 10"), (limits { 12, 5500, 1 }));
    // The same for black: 1000 / 10 + 0.
    EXPECT_EQ(go("go wtime 60000 btime 1000 winc 1000 binc 0 movestogo 10", false),
        (limits { 12, 100, 1 }));
    // 0 is raised to 20, lowered to 5, and raised again to 20.
    EXPECT_EQ(go("go wtime 15 btime 15"), (limits { 12, 20, 1 }));
    // Lowered to remaining - 10 once it reaches remaining - 9: 33 + 958 = 991 is cut to 990,
    // 33 + 956 = 989 stays.
    EXPECT_EQ(go("go wtime 1000 winc 1198"), (limits { 12, 990, 1 }));
    EXPECT_EQ(go("go wtime 1000 winc 1196"), (limits { 12, 989, 1 }));
    EXPECT_EQ(go("go wtime 300 movestogo 1 winc 0"), (limits { 12, 290, 1 }));
    // Integer divisions truncate: 3059 / 30 is 101 and 9 * 8 / 10 is 7.
    EXPECT_EQ(go("go wtime 3059 winc 9"), (limits { 12, 108, 1 }));
    // Large increments do not overflow.
    EXPECT_EQ(go("go wtime 2147483647 winc 2147483647"), (limits { 12, 5500, 1 }));
    EXPECT_EQ(go("go btime 60000", false), (limits { 12, 2000, 1 }));
    EXPECT_EQ(go("go wtime 60000", false), bare);
}

TEST(ParseGo, OverlongLinesAreCut)
{
    // The value falls beyond character 4095 and is never read.
    const std::string line = "go" + std::string(4095 - 2 - 6, ' ') + "depth " + "7";
    EXPECT_EQ(go(line.c_str()), bare);
    const std::string fits = "go" + std::string(4095 - 2 - 7, ' ') + "depth 7";
    EXPECT_EQ(go(fits.c_str()), (limits { 7, 0, 0 }));
}

} // namespace
