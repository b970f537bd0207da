#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "console/ctrQuillonConsole.h"
#include "link/TorvaneSerial.h"
#include "soak/Trial.h"

namespace quillon {
namespace {

using testing::HasSubstr;

constexpr int kCommands = 120;

/// QUILLON_SESSIONS asks for more than a test run has time for.
std::uint32_t sessions() {
    const char* asked = std::getenv("QUILLON_SESSIONS");
    return asked == nullptr ? 280 : static_cast<std::uint32_t>(std::strtoul(asked, nullptr, 10));
}

// In four parts, so that they can run side by side.
class RandomSessions : public testing::TestWithParam<std::uint32_t> {};

TEST_P(RandomSessions, InvariantsHold) {
    std::size_t commands = 0;
    for (std::uint32_t seed = GetParam(); seed < sessions(); seed += 4) {
        Plan played;
        if (!violationsOf(seed, kCommands, played).empty()) {
            FAIL() << shrunk(seed, std::move(played)).text();
        }
        commands += played.lines.size();
    }
    EXPECT_GT(commands, 0U);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomSessions, testing::Values(0U, 1U, 2U, 3U));

/// A session that stands in normal operation.
class WatchTest : public testing::Test {
protected:
    WatchTest() { session.perform("wait 20000"); }
    [[nodiscard]] std::string seen() const {
        std::string all;
        for (const std::string& violation : session.violations()) {
            all += violation + "\n";
        }
        return all;
    }

    Session session{Plan{"-swsync", {}, "startphase=2", {}}};
};

TEST_F(WatchTest, ACommandNeedsItsKey) {
    session.application().link().SendMessage("XR1", 16383);
    session.perform("wait 1000");
    EXPECT_THAT(seen(), HasSubstr("\"XR1\" without its key"));
}

TEST_F(WatchTest, ACommandNeedsItsPhase) {
    session.application().link().SendMessage("WM+", 16383);
    session.perform("wait 1000");
    EXPECT_THAT(seen(), HasSubstr("\"WM+\" went out in a phase"));
}

TEST_F(WatchTest, TheScreenFollowsTheReports) {
    session.perform("sim phase 10");
    session.perform("wait 1000");
    EXPECT_EQ(seen(), "");
    session.application().link()["txtPHASE"].setCaption("Normal Operation");
    session.perform("wait 1");
    EXPECT_THAT(seen(), HasSubstr("the last report \"Tube Too Hot\""));
}

TEST_F(WatchTest, ReportsStuckTimersAndBlockedOperator) {
    session.application().link().timer("tmrBlinkingOff").start(1'000'000'000);
    for (const char* key : {"cmbClose", "cmbReadExposureCounters"}) {
        session.application().console()[key].setEnabled(false);
    }
    session.leave();
    EXPECT_THAT(seen(), HasSubstr("tmrBlinkingOff runs on"));
    EXPECT_THAT(seen(), HasSubstr("the operator is stuck"));
}

TEST(Shortest, KeepsOnlyWhatFails) {
    std::vector<std::string> lines(100, "wait");
    lines[13] = "press";
    lines[77] = "release";
    int looks = 0;
    const auto left = shortest(lines, [&looks](const std::vector<std::string>& some) {
        ++looks;
        const auto press = std::find(some.begin(), some.end(), "press");
        return std::find(press, some.end(), "release") != some.end();
    });
    EXPECT_EQ(left, (std::vector<std::string>{"press", "release"}));
    EXPECT_LT(looks, 60);
}

} // namespace
} // namespace quillon
