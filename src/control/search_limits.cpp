// Search limits and the deadline.
#include "control/search_limits.h"

#include "platform/platform.h"

std::int32_t search_stop = 0;
std::int32_t search_depth_limit = default_depth;
std::int32_t search_time_limit_ms = default_time_ms;
std::int32_t time_limit_active = 1;
double search_start_ms = 0;
std::uint32_t clock_tick_count = 0;

std::int32_t elapsed_ms(double now, double start)
{
    double difference = now > start ? now - start : start - now;
    // Cut toward zero; a difference beyond the 32-bit range stays at its top.
    return difference >= 2147483647.0 ? 2147483647 : std::int32_t(difference);
}

void check_deadline()
{
    if (!time_limit_active) return;
    if (elapsed_ms(clock_ms_real(), search_start_ms) > search_time_limit_ms) search_stop = 1;
}
