// The limits of `go` lines from a table, and the line length the parser reads.
#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "frontend/parse_go.h"
#include "position/board.h"

namespace {

std::string limits_of(const std::string &line, bool white_to_move)
{
    current_board = start_board;
    current_board.white_to_move = white_to_move;
    std::int32_t depth = -7, time_ms = -7, active = -7;
    parse_go(line.c_str(), &depth, &time_ms, &active);
    return std::to_string(depth) + " " + std::to_string(time_ms) + " " + std::to_string(active);
}

TEST(ParseGo, RecordedLimits)
{
    std::ifstream file(KORVANE_GO_LIMITS);
    ASSERT_TRUE(file) << KORVANE_GO_LIMITS;
    int rows = 0;
    for (std::string row; std::getline(file, row);) {
        if (row.empty() || row[0] == '#') continue;
        rows++;
        const std::size_t bar = row.find('|');
        EXPECT_EQ(limits_of(row.substr(bar + 1), row[0] == 'w'), row.substr(2, bar - 3)) << row;
    }
    EXPECT_GT(rows, 40);
}

TEST(ParseGo, OverlongLinesAreCut)
{
    // The value falls beyond character 4095 and is never read.
    EXPECT_EQ(limits_of("go" + std::string(4095 - 2 - 6, ' ') + "depth 7", true), "6 5500 1");
    EXPECT_EQ(limits_of("go" + std::string(4095 - 2 - 7, ' ') + "depth 7", true), "7 0 0");
}

} // namespace
