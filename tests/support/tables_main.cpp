// Test entry point: fills the attack tables once, as start-up does, before any test runs.
#include <gtest/gtest.h>

#include "movegen/attacks.h"

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    init_attack_tables();
    return RUN_ALL_TESTS();
}
