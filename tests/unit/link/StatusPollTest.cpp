#include "link/StatusPoll.h"

#include <algorithm>

#include "tests/unit/model/LinkFixture.h"

namespace quillon {
namespace {

constexpr Milliseconds kCycle = 1350; // a poll tick every 1000 ms after the last transmission, 350 ms later

using Names = std::vector<std::string>;

class StatusPollTest : public LinkTest {
protected:
    StatusPollTest() {
        link.setEventEnabled(false);
        link.setStatusUpdateEnable(true);
    }
};

TEST_F(StatusPollTest, DeclaresASilentGeneratorLostOncePerSilence) {
    const Milliseconds lost = 1000 + 30 * kCycle; // the 31st tick
    advance(lost - 1);
    EXPECT_TRUE(takeEvents().empty());
    advance(1);
    EXPECT_EQ(takeEvents(), Names{"GeneratorERROR(33, \"\", 2)"});
    EXPECT_EQ(get<int>("Phase"), 7);
    advance(10 * lost);
    EXPECT_TRUE(takeEvents().empty());
    EXPECT_GT(timeline.size(), 300u); // it goes on asking

    msg("whatever");
    advance(lost + kCycle);
    EXPECT_EQ(takeEvents(), Names{"GeneratorERROR(33, \"\", 2)"});
}

TEST_F(StatusPollTest, WhileItIsHeldTheCountStandsStill) {
    advance(20 * kCycle + 1000); // 21 ticks counted
    link.setStatusUpdateEnable(false);
    takeTimeline();
    advance(60000);
    EXPECT_TRUE(events.empty());
    takeTimeline();
    link.setStatusUpdateEnable(true);
    advance(15 * kCycle);
    EXPECT_EQ(takeEvents(), Names{"GeneratorERROR(33, \"\", 2)"});

    msg("x");
    advance(20 * kCycle);
    call("ResetNoAnswerFromGeneratorError");
    advance(29 * kCycle);
    EXPECT_TRUE(takeEvents().empty());
}

TEST_F(StatusPollTest, OpensOnDemandAndReportsAPortThatDoesNotOpen) {
    link.setStatusUpdateEnable(false);
    link.setPortOpen(false);
    platform.store.removeSection("", "TorvaneSerial");
    platform.port.setFailing(2, true);
    link.setPortOpen(true);
    EXPECT_EQ(takeEvents(), Names{"CannotOpenPort(2)"});
    EXPECT_FALSE(link.PortOpen());
    EXPECT_TRUE(platform.store.entries().empty());
    link.setStatusUpdateEnable(true);
    advance(5000);
    EXPECT_TRUE(takeTimeline().empty());

    int arrived = 0;
    link.portArrived().connect([&arrived] { ++arrived; });
    for (const bool byItself : {false, true}) {
        if (byItself) {
            platform.port.setFailing(2, true);
            link.setPortOpen(true);
            platform.port.arrive(2);
        } else {
            platform.port.setFailing(2, false);
            link.setPortOpen(true);
        }
        EXPECT_TRUE(link.PortOpen());
        EXPECT_EQ(arrived, byItself ? 1 : 0);
        EXPECT_EQ(link["cmbCommOnOff"].caption(), "OFF");
        EXPECT_EQ(link["cmbCommOnOff"].backColour(), kActiveColour);
        EXPECT_EQ(platform.store.read("", "TorvaneSerial", "Port"), "2");
        takeTimeline();
        advance(2000);
        EXPECT_FALSE(takeTimeline().empty()) << "it is polled";
        link.setPortOpen(false);
        EXPECT_EQ(link["cmbCommOnOff"].caption(), "ON");
        EXPECT_TRUE(link["cmbCommPort"].enabled());
    }
    // Another line is being chosen: the one that was asked for comes too late.
    platform.port.setFailing(2, true);
    link.setPortOpen(true);
    link.settings().port = 3;
    platform.port.arrive(2);
    EXPECT_FALSE(link.PortOpen() || platform.port.isOpen());
}

} // namespace
} // namespace quillon
