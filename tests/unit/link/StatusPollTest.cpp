#include "link/StatusPoll.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/unit/link/Line.h"

namespace quillon {
namespace {

constexpr Milliseconds kCycle = 1350; // a poll tick every 1000 ms after the last transmission, 350 ms later

struct PolledLine : Line {
    PolledLine() {
        open();
        link.setStatusUpdateEnable(true);
    }
};

TEST(StatusPoll, AsksForHeatAndPhaseInTurn) {
    PolledLine line;
    line.wait(5400);
    EXPECT_EQ(line.takeSent(), (Sends{{1350, "HU"}, {2700, "ST"}, {4050, "HU"}, {5400, "ST"}}));
}

TEST(StatusPoll, DeclaresASilentGeneratorLostOncePerSilence) {
    PolledLine line;
    const Milliseconds lost = 1000 + 30 * kCycle; // the 31st tick
    line.wait(lost - 1);
    EXPECT_TRUE(line.takeEvents().empty());
    line.wait(1);
    EXPECT_EQ(line.takeEvents(), Names{"GeneratorERROR(33, , 2)"});
    EXPECT_EQ(line.link.get<int>("Phase"), 7);
    line.wait(10 * lost);
    EXPECT_TRUE(line.takeEvents().empty());
    EXPECT_GT(line.sent.size(), 300u); // it goes on asking

    line.hear("whatever");
    line.wait(lost + kCycle);
    EXPECT_EQ(line.takeEvents(), Names{"GeneratorERROR(33, , 2)"});
}

TEST(StatusPoll, AnyTextIsASignOfLife) {
    PolledLine line;
    for (int i = 0; i < 100; ++i) {
        line.wait(30 * kCycle);
        line.hear(i % 2 == 0 ? "unknown" : "HE10");
    }
    EXPECT_EQ(std::count(line.events.begin(), line.events.end(), "GeneratorERROR(33, , 2)"), 0);
}

TEST(StatusPoll, WhileItIsHeldTheCountStandsStill) {
    PolledLine line;
    line.wait(20 * kCycle + 1000); // 21 ticks counted
    line.link.setStatusUpdateEnable(false);
    line.takeSent();
    line.wait(60000);
    EXPECT_TRUE(line.events.empty());
    line.takeSent();
    line.link.setStatusUpdateEnable(true);
    line.wait(15 * kCycle);
    EXPECT_EQ(line.takeEvents(), Names{"GeneratorERROR(33, , 2)"});

    line.hear("x");
    line.wait(20 * kCycle);
    line.link.call("ResetNoAnswerFromGeneratorError");
    line.wait(29 * kCycle);
    EXPECT_TRUE(line.takeEvents().empty());
}

TEST(StatusPoll, RestsInFluoroWhenAskedTo) {
    PolledLine line;
    line.hear("ST5");
    line.link.operations().set("StatusRequestinFluoro", false);
    line.takeSent();
    line.wait(20000);
    EXPECT_TRUE(line.takeSent().empty());
    line.link.operations().set("StatusRequestinFluoro", true);
    line.wait(3 * kCycle);
    EXPECT_GE(line.sent.size(), 2u);
}

TEST(StatusPoll, OpensOnDemandAndReportsAPortThatDoesNotOpen) {
    Line line;
    line.machine.port.setFailing(2, true);
    line.open();
    EXPECT_EQ(line.takeEvents(), Names{"CannotOpenPort(2)"});
    EXPECT_FALSE(line.link.PortOpen());
    EXPECT_TRUE(line.link["cmbCommPort"].enabled());
    EXPECT_TRUE(line.machine.store.entries().empty());
    line.link.setStatusUpdateEnable(true);
    line.wait(5000);
    EXPECT_TRUE(line.takeSent().empty());

    line.machine.port.setFailing(2, false);
    line.open();
    EXPECT_TRUE(line.link.PortOpen());
    EXPECT_EQ(line.link["cmbCommOnOff"].caption(), "OFF");
    EXPECT_EQ(line.link["cmbCommOnOff"].backColour(), kActiveColour);
    EXPECT_EQ(line.link["cmbCommPort"].text(), "2");
    EXPECT_FALSE(line.link["cmbCommPort"].enabled());
    EXPECT_EQ(line.machine.store.read("", "TorvaneSerial", "Port"), "2");
    line.link.setPortOpen(false);
    EXPECT_EQ(line.link["cmbCommOnOff"].caption(), "ON");
    EXPECT_TRUE(line.link["cmbCommPort"].enabled());
}

} // namespace
} // namespace quillon
