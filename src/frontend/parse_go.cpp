// The arguments of a `go` line: depth, move time and the clock words, turned into the three
// limits of the search.
#include "frontend/parse_go.h"

#include <cstring>

#include "control/search_limits.h"
#include "position/board.h"
#include "position/text.h"

void parse_go(const char *line, std::int32_t *depth, std::int32_t *time_ms, std::int32_t *active)
{
    *depth = default_depth;
    *time_ms = default_time_ms;
    *active = 1;
    bool depth_seen = false, movetime_seen = false, clock_seen = false;
    std::int32_t wtime = -1, btime = -1, winc = 0, binc = 0, moves_to_go = 0;

    char buffer[4096];
    copy_cut(buffer, line, sizeof buffer);
    char *cursor = buffer;
    next_token(&cursor, ' '); // the word `go`
    // Each word takes the next token as its value; a value out of range is dropped but consumed.
    for (char *word; (word = next_token(&cursor, ' '));) {
        struct rule {
            const char *name;
            std::int32_t *target;
            std::int32_t lowest;
            bool *seen;
        };
        const rule rules[] = {
            { "depth", depth, 1, &depth_seen },
            { "movetime", time_ms, 1, &movetime_seen },
            { "wtime", &wtime, 0, &clock_seen },
            { "btime", &btime, 0, &clock_seen },
            { "winc", &winc, 0, &clock_seen },
            { "binc", &binc, 0, &clock_seen },
            { "movestogo", &moves_to_go, 1, &clock_seen },
        };
        for (const rule &r : rules) {
            if (std::strcmp(word, r.name) != 0) continue;
            char *value_text = next_token(&cursor, ' ');
            if (!value_text) break;
            std::int32_t value = text_to_int(value_text);
            if (value >= r.lowest) {
                *r.target = value;
                *r.seen = true;
            }
            break;
        }
    }
    if (depth_seen && *depth > depth_ceiling) *depth = depth_ceiling;
    if (movetime_seen && *time_ms > time_ceiling_ms) *time_ms = time_ceiling_ms;

    bool budget_set = false;
    if (clock_seen && !movetime_seen) {
        const std::int32_t remaining = current_board.white_to_move ? wtime : btime;
        const std::int32_t increment = current_board.white_to_move ? winc : binc;
        if (remaining > 0) {
            *time_ms = std::int32_t(
                clock_budget(remaining, increment, moves_to_go, time_ceiling_ms, lowest_budget_ms));
            *active = 1;
            budget_set = true;
            if (depth_seen) {
                *active = 0;
                *time_ms = 0;
                return;
            }
            *depth = depth_ceiling;
        }
    }
    if (!budget_set) {
        if (depth_seen && !movetime_seen) {
            *active = 0;
            *time_ms = 0;
            return;
        }
        if (movetime_seen && !depth_seen) *depth = depth_ceiling;
        if (movetime_seen) *active = 1;
    }
    if (*active && *time_ms > time_ceiling_ms) *time_ms = time_ceiling_ms;
}
