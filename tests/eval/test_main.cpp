// Test entry point of the evaluation suite: fills the attack tables once, as start-up does, before
// any test runs.
#include <gtest/gtest.h>

#include "attacks.h"

namespace {

class TablesEnvironment : public testing::Environment {
public:
    void SetUp() override { init_attack_tables(); }
};

} // namespace

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    testing::AddGlobalTestEnvironment(new TablesEnvironment);
    return RUN_ALL_TESTS();
}
