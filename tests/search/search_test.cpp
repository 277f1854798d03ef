// Fixed-depth searches over a table of positions, read by one loop: the node counts of both
// kinds, the move, every iteration's score and the last line, as recorded. With the pinned counts
// of the benchmark these are the search's guard: a change to its pruning or its move order shows
// in the counts even where the move and scores stay.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

#include "search/alpha_beta.h"
#include "search/quiescence.h"
#include "tests/support/search_setup.h"

namespace {

TEST(Search, RecordedSearches)
{
    std::ifstream file(KORVANE_SEARCHES);
    ASSERT_TRUE(file) << KORVANE_SEARCHES;
    int rows = 0;
    for (std::string row; std::getline(file, row);) {
        if (row.empty() || row[0] == '#') continue;
        rows++;
        const std::size_t bar = row.find(" | "), second = row.find(" | ", bar + 3);
        const std::string position = row.substr(bar + 3, second - bar - 3);
        std::istringstream in(row.substr(0, bar));
        int depth;
        in >> depth;
        set_position(position.c_str());
        quiescence_node_count = 0;
        std::string best;
        const std::vector<SearchRow> found = search_rows(engine_search, depth, &best);
        std::ostringstream got;
        got << depth << " " << node_count << " " << quiescence_node_count << " " << best;
        for (const SearchRow &r : found) got << " " << r.score;
        got << " | " << position << " | " << (found.empty() ? "" : found.back().pv);
        EXPECT_EQ(got.str(), row);
    }
    EXPECT_GT(rows, 100);
}

} // namespace
