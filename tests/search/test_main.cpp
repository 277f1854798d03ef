// Test entry point: start-up as the program does it (tables, start position, hash table) before
// any test runs.
#include <gtest/gtest.h>

#include "engine.h"

namespace {

class EngineEnvironment : public testing::Environment {
public:
    void SetUp() override { engine_init(); }
};

} // namespace

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    testing::AddGlobalTestEnvironment(new EngineEnvironment);
    return RUN_ALL_TESTS();
}
