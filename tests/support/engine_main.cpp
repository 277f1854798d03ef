// Test entry point: start-up as the program does it (tables, start position, hash table) before
// any test runs.
#include <gtest/gtest.h>

#include "control/input.h"
#include "frontend/engine.h"

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    engine_init();
    // The suite's own standard input is not a GUI: the search's poll must never read it.
    input_is_pipe = 0;
    return RUN_ALL_TESTS();
}
