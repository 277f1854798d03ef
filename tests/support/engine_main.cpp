// Test entry point: start-up as the program does it (tables, start position, hash table) before
// any test runs.
#include <gtest/gtest.h>

#include "engine.h"

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    engine_init();
    return RUN_ALL_TESTS();
}
