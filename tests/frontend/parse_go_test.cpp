// The limits of `go` lines in both dialects from a table, and the line length the fixed dialect
// reads.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

#include "frontend/go_command.h"
#include "position/board.h"
#include "tests/frontend/capture.h"

namespace {

// The fixed dialect's limits as "depth time timed"; the standard dialect's as "depth time soft
// timed nodes waits ponder-budget roots".
std::string limits_of(const std::string &line, char side)
{
    const bool standard = side == 'W' || side == 'B';
    current_board = start_board;
    current_board.white_to_move = side == 'w' || side == 'W';
    static SearchRequest request;
    std::string copy(line.size() > 3 ? line.c_str() + 3 : "");
    testing::internal::CaptureStdout(); // the standard dialect's notes
    read_go(standard ? standard_session : fixed_session, line.c_str(), copy.data(), &request);
    testing::internal::GetCapturedStdout();
    const SearchLimits &l = request.limits;
    std::ostringstream out;
    out << l.depth << " " << l.time_ms;
    if (standard)
        out << " " << l.soft_time_ms << " " << l.timed << " " << l.nodes << " " << l.waits_for_stop
            << " " << l.ponder_budget_ms << " " << request.root_move_count;
    else
        out << " " << l.timed;
    return out.str();
}

TEST(ReadGo, RecordedLimits)
{
    std::ifstream file(KORVANE_GO_LIMITS);
    ASSERT_TRUE(file) << KORVANE_GO_LIMITS;
    int rows = 0;
    for (std::string row; std::getline(file, row);) {
        if (row.empty() || row[0] == '#') continue;
        rows++;
        const std::size_t bar = row.find('|');
        EXPECT_EQ(limits_of(row.substr(bar + 1), row[0]), row.substr(2, bar - 3)) << row;
    }
    EXPECT_GT(rows, 60);
}

TEST(ReadGo, OverlongLinesAreCut)
{
    // The value falls beyond character 4095 and is never read.
    EXPECT_EQ(limits_of("go" + std::string(4095 - 2 - 6, ' ') + "depth 7", 'w'), "6 5500 1");
    EXPECT_EQ(limits_of("go" + std::string(4095 - 2 - 7, ' ') + "depth 7", 'w'), "7 0 0");
}

} // namespace
