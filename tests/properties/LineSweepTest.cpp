#include <gtest/gtest.h>

#include "explore/LineSweep.h"

namespace quillon {
namespace {

/// Every so manieth piece of what travels: these rounds are the sample of the eight thousand of scripts/soak.
constexpr std::size_t kEvery = 30;
constexpr std::size_t kRounds = 165;

TEST(FaultyLines, ASampleOfTheirFaultsIsSurvivedInEveryWorkflow) {
    LineSweep sweep(kEvery, 1);
    for (const Workflow& workflow : workflows()) {
        sweep.sweep(workflow);
    }
    EXPECT_EQ(sweep.found(), "");
    EXPECT_EQ(sweep.rounds(), kRounds);
}

} // namespace
} // namespace quillon
