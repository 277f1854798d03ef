// Test entry point for the search's suite: the attack tables, the start position and the hash
// table, as start-up makes them, before any test runs.
#include <gtest/gtest.h>

#include "control/input.h"
#include "control/search_limits.h"
#include <cstdio>

#include "movegen/attacks.h"
#include "search/tt.h"
#include "tests/support/search_setup.h"

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    init_attack_tables();
    // The suite's own standard input is not a GUI: the search's poll must never read it.
    input_is_pipe = 0;
    // Nor does any clock limit hold: the search reads the clock only under a time limit, and a
    // stale one would stop quiescence and alpha-beta when a test calls them directly.
    time_limit_active = 0;
    if (!hash_resize(fixed_dialect.table_bytes)) {
        std::fputs("no hash table\n", stderr);
        return 1;
    }
    set_position("position startpos");
    return RUN_ALL_TESTS();
}
