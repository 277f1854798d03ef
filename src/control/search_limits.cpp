// Search limits and the deadline.
#include "control/search_limits.h"

#include "platform/platform.h"

std::int32_t search_stop = 0;
std::int32_t search_time_limit_ms = default_time_ms;
std::int32_t search_soft_limit_ms = default_time_ms;
std::int32_t time_limit_active = 1;
double search_start_ms = 0;
std::uint32_t clock_tick_count = 0;
std::uint64_t node_limit = 0, node_limit_start = 0;
std::int32_t ponder_budget_ms = -1;
std::int32_t waits_for_stop = 0;

void start_clock(const SearchLimits &limits)
{
    search_stop = 0;
    search_start_ms = limits.start_ms;
    search_time_limit_ms = limits.time_ms;
    search_soft_limit_ms = limits.soft_time_ms;
    time_limit_active = limits.timed ? 1 : 0;
    node_limit = limits.nodes;
    node_limit_start = clock_tick_count;
    ponder_budget_ms = limits.ponder_budget_ms;
    waits_for_stop = limits.waits_for_stop ? 1 : 0;
}

std::int32_t elapsed_ms(double now, double start)
{
    double difference = now > start ? now - start : start - now;
    // Cut toward zero; a difference beyond the 32-bit range stays at its top.
    return difference >= 2147483647.0 ? 2147483647 : std::int32_t(difference);
}

std::int64_t clock_budget(std::int64_t remaining, std::int64_t increment, std::int64_t moves_to_go,
    std::int64_t ceiling, std::int64_t floor)
{
    std::int64_t budget
        = remaining / (moves_to_go > 0 ? moves_to_go : default_moves_to_go) + increment * 8 / 10;
    if (budget < least_clock_budget_ms) budget = least_clock_budget_ms;
    if (budget >= remaining - 9) budget = remaining - clock_margin_ms;
    if (budget > ceiling) budget = ceiling;
    if (budget < floor) budget = floor;
    return budget;
}

std::int64_t tournament_budget(std::int64_t remaining, std::int64_t increment,
    std::int64_t moves_to_go, std::int64_t overhead, std::int64_t *soft)
{
    const std::int64_t left = remaining - overhead;
    std::int64_t budget = left / (moves_to_go > 0 ? moves_to_go + 1 : default_moves_to_go)
        + (increment > 0 ? increment * 3 / 4 : 0);
    if (budget > left / 3) budget = left / 3;
    if (budget < 1) budget = 1;
    // An iteration takes a few times the one before it: one begun past half the budget would
    // seldom end within it.
    *soft = budget / 2 > 0 ? budget / 2 : 1;
    return budget;
}

void check_deadline()
{
    if (!time_limit_active) return;
    // The tick counter is 32 bits: its difference from the start wraps as the count does.
    if (node_limit && std::uint32_t(clock_tick_count - node_limit_start) >= node_limit)
        search_stop = 1;
    if (elapsed_ms(clock_ms_real(), search_start_ms) > search_time_limit_ms) search_stop = 1;
}

void ponder_hit()
{
    if (!waits_for_stop) return;
    waits_for_stop = 0;
    if (ponder_budget_ms < 0) {
        waits_for_stop = 1; // no clock was given: an analysis that stops only at `stop`
        return;
    }
    const std::int64_t limit
        = std::int64_t(elapsed_ms(clock_ms_real(), search_start_ms)) + ponder_budget_ms;
    search_time_limit_ms = limit > 2147483647 ? 2147483647 : std::int32_t(limit);
    search_soft_limit_ms = search_time_limit_ms;
    time_limit_active = 1;
}
