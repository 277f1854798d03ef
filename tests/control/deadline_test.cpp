// The elapsed time and the deadline test.
#include <gtest/gtest.h>

#include "control/search_limits.h"
#include "platform/platform.h"

namespace {

TEST(Clock, ElapsedIsTheAbsoluteDifference)
{
    EXPECT_EQ(elapsed_ms(1500.9, 1000.0), 500);
    EXPECT_EQ(elapsed_ms(1000.0, 1500.9), 500);
    EXPECT_EQ(elapsed_ms(7.0, 7.0), 0);
}

TEST(Clock, DeadlineIsStrict)
{
    search_stop = 0;
    time_limit_active = 1;
    search_time_limit_ms = 100;
    // Elapsed just above 100.2 ms counts as 100: not yet past the limit.
    search_start_ms = clock_ms_real() - 100.2;
    check_deadline();
    EXPECT_EQ(search_stop, 0);
    search_start_ms = clock_ms_real() - 101.5;
    check_deadline();
    EXPECT_EQ(search_stop, 1);
    // Without a time limit the clock is never looked at.
    search_stop = 0;
    time_limit_active = 0;
    search_start_ms = clock_ms_real() - 1e9;
    check_deadline();
    EXPECT_EQ(search_stop, 0);
    time_limit_active = 1;
}

// The clock is read at every 256th node of either kind; the node limit of the standard dialect is
// looked at with it, counted from the search's start.
TEST(Clock, ReadEvery256thNodeWithTheNodeLimit)
{
    search_stop = 0;
    time_limit_active = 1;
    search_time_limit_ms = 10;
    search_start_ms = clock_ms_real() - 1000;
    clock_tick_count = 0;
    for (int i = 1; i < 256; i++) clock_tick();
    EXPECT_EQ(search_stop, 0);
    clock_tick();
    EXPECT_EQ(search_stop, 1);

    search_stop = 0;
    search_time_limit_ms = 2147483647;
    node_limit_start = clock_tick_count = 0xFFFFFF00u; // the count wraps on the way
    node_limit = 512;
    for (int i = 0; i < 511; i++) clock_tick();
    EXPECT_EQ(search_stop, 0);
    clock_tick();
    EXPECT_EQ(search_stop, 1);
    node_limit = 0;
}

} // namespace
