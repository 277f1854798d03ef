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

// The engine's search and the literal one, as search_rows takes them.
using search_function = void (*)(const SearchRequest &, line_printer, SearchResult *);
constexpr search_function engine_search = run_search_with<engine_shortcuts>;
constexpr search_function literal_search = run_search_with<no_shortcuts>;

// Searches current_board to `depth` in the fixed dialect with no time limit, as `go depth` does,
// by `search`. Returns the rows and leaves the move in *best.
inline std::vector<SearchRow> search_rows(search_function search, int depth, std::string *best)
{
    static SearchRequest request;
    static SearchResult result;
    request = SearchRequest { &fixed_dialect, {}, 1, -1, {} };
    request.limits.depth = depth;
    recorded_rows.clear();
    search(
        request,
        [](const SearchLine &r) {
            recorded_rows.push_back({ r.depth, std::uint64_t(r.alpha_beta_nodes), r.score, r.pv });
        },
        &result);
    *best = result.best;
    return recorded_rows;
}
