// Test entry point: start-up as the program does it (tables, start position, hash table) before
// any test runs.
#include <gtest/gtest.h>

#include "control/input.h"
#include "frontend/engine.h"
#include "tests/frontend/capture.h"

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    engine_init(fixed_session);
    // The suite's own standard input is not a GUI: the search's poll must never read it, in
    // either dialect.
    input_is_pipe = 0;
    return RUN_ALL_TESTS();
}
