#include "tests/unit/modes/TransitionTable.h"

#include <filesystem>
#include <set>
#include <string>

#include <gtest/gtest.h>

namespace quillon {
namespace {

TEST(TransitionTableTest, EveryTransitionIsPlayedByAScenarioThatExists) {
    const auto scenarios = std::filesystem::path(QUILLON_SOURCE_DIR) / "tests/scenarios";
    ASSERT_TRUE(std::filesystem::is_directory(scenarios)) << scenarios;
    std::size_t missing = 0;
    for (const Transition& row : kTransitions) {
        if (row.scenario.empty()) {
            ++missing;
        } else {
            EXPECT_TRUE(std::filesystem::is_regular_file(scenarios / row.scenario))
                << row.from << ", " << row.trigger << ": " << row.scenario;
        }
    }
    EXPECT_EQ(missing, 0U);
}

TEST(TransitionTableTest, EveryStateIsReachedAndLeft) {
    std::set<std::string_view> reached{"Created"};
    std::set<std::string_view> left;
    for (const Transition& row : kTransitions) {
        reached.insert(row.to);
        left.insert(row.from);
    }
    for (const std::string_view state : left) {
        EXPECT_TRUE(state == "any" || reached.contains(state)) << state << " is never reached";
    }
    // Lost, powering up and in error the console waits for the generator, which acts in every state.
    for (const std::string_view state : reached) {
        EXPECT_TRUE(state == "same" || state == "ended" || state == "PoweringUp" || left.contains(state))
            << state << " is never left";
    }
}

} // namespace
} // namespace quillon
