#include "tests/unit/modes/TransitionTable.h"

#include <filesystem>

#include <gtest/gtest.h>

namespace quillon {
namespace {

TEST(TransitionTableTest, EveryTransitionIsPlayedByAScenarioThatExists) {
    const auto scenarios = std::filesystem::path(QUILLON_SOURCE_DIR) / "tests/scenarios";
    ASSERT_TRUE(std::filesystem::is_directory(scenarios)) << scenarios;
    for (const Transition& row : kTransitions) {
        EXPECT_TRUE(std::filesystem::is_regular_file(scenarios / row.scenario))
            << row.from << ", " << row.trigger << ": " << row.scenario;
    }
}

} // namespace
} // namespace quillon
