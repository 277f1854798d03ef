// Start-up and position set-up for suites that test the search without the command dispatcher.
#pragma once

#include <cstring>
#include <ostream>
#include <string>
#include <vector>

#include "control/search_limits.h"
#include "position/fen.h"
#include "search/iterate.h"
#include "search/tt.h"

// Sets up the position of a whole `position startpos ...` or `position fen ...` line and clears
// the hash table, as the position command does.
inline void set_position(const char *line)
{
    if (std::strncmp(line, "position fen ", 13) == 0) set_position_fen(line);
    if (std::strncmp(line, "position startpos", 17) == 0) set_position_start(line);
    hash_clear();
}

// One `info` row of a search.
struct SearchRow {
    int depth;
    std::uint64_t nodes;
    int score;
    std::string pv;
    bool operator==(const SearchRow &) const = default;
};

inline void PrintTo(const SearchRow &r, std::ostream *os)
{
    *os << "{" << r.depth << ", " << r.nodes << ", " << r.score << ", \"" << r.pv << "\"}";
}

inline std::vector<SearchRow> recorded_rows;

// Searches current_board to `depth` with no time limit, as `go depth` does, by `search`
// (iterate_search or iterate_search_literal). Returns the rows and leaves the move in *best.
inline std::vector<SearchRow> search_rows(
    const char *(*search)(iteration_printer), int depth, std::string *best)
{
    search_depth_limit = depth;
    search_time_limit_ms = 0;
    time_limit_active = 0;
    recorded_rows.clear();
    *best = search([](const iteration_report &r) {
        recorded_rows.push_back({ r.depth, r.nodes, r.score, r.pv });
    });
    return recorded_rows;
}
