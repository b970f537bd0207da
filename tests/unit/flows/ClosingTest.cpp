#include "tests/unit/flows/Flow.h"

namespace quillon {
namespace {

using Answer = MemoryDesktop::Answer;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

class ClosingTest : public FlowTest {
protected:
    void holdClose(Milliseconds ms) {
        press("cmbClose");
        wait(ms);
        release("cmbClose");
    }
};

TEST_F(ClosingTest, AHoldThatEndsInTimeClosesAndAsksNothing) {
    start();
    holdClose(3999);
    wait(10000);
    EXPECT_THAT(machine.desktop.boxes(), IsEmpty());
    EXPECT_EQ(goodbyes, 1);
}

TEST_F(ClosingTest, OneQuestionAtATimeHoweverLongItStandsAndTheKeyIsHeld) {
    start();
    machine.desktop.onBox = [this](const MemoryDesktop::Shown&) { wait(20000); };
    holdClose(30000);
    wait(20000);
    ASSERT_EQ(machine.desktop.boxes().size(), 1U);
    EXPECT_EQ(machine.desktop.boxes()[0].title, "Torvane Generator Service");
    EXPECT_EQ(machine.desktop.boxes()[0].text, "Close the port and restart the PC?");
    EXPECT_EQ(goodbyes, 0);
    EXPECT_TRUE(machine.port.isOpen());
    EXPECT_THAT(machine.power.exits(), IsEmpty());
}

struct SwitchCase {
    const char* commandLine;
    bool restarts;
};

class RestartSwitch : public ClosingTest, public testing::WithParamInterface<SwitchCase> {};

TEST_P(RestartSwitch, KeepsThePcOnAndClosesThePortAllTheSame) {
    start(GetParam().commandLine);
    machine.desktop.answer(Answer::Yes);
    holdClose(4000);
    EXPECT_FALSE(machine.port.isOpen());
    EXPECT_EQ(machine.power.exits().size(), GetParam().restarts ? 1U : 0U);
    EXPECT_EQ(goodbyes, 0);
}

INSTANTIATE_TEST_SUITE_P(CommandLines, RestartSwitch,
                         testing::Values(SwitchCase{"", true}, SwitchCase{"-P1", true},
                                         SwitchCase{"-d", false}, SwitchCase{"-P1 -D", false},
                                         SwitchCase{"-debug", false}));

TEST_F(ClosingTest, AfterARestartThatIsRefusedTheConsoleWorksOn) {
    start();
    machine.power.setRefusal("Access denied");
    std::vector<std::string> boxes;
    machine.desktop.onBox = [this, &boxes](const MemoryDesktop::Shown& box) {
        boxes.push_back(box.title + ": " + box.text + (machine.port.isOpen() ? "" : " (port closed)"));
    };
    machine.desktop.answer(Answer::Yes);
    holdClose(4000);
    EXPECT_THAT(machine.power.exits(), ElementsAre(MemoryPowerControl::Exit{true, false}));
    EXPECT_THAT(boxes, ElementsAre("Torvane Generator Service: Close the port and restart the PC?",
                                   "Torvane Generator Service: The PC was not restarted: Access denied"));
    forget();
    wait(3000);
    EXPECT_THAT(sent, Contains("ST")) << "the poll goes on";
    EXPECT_TRUE(control("cmbConfiguration").enabled());

    machine.port.setFailing(1, true);
    machine.desktop.answer(Answer::Yes);
    holdClose(4000);
    ASSERT_EQ(boxes.size(), 5U);
    EXPECT_EQ(boxes[3], "Torvane Generator Service: Cannot Open Port: 1 (port closed)");
}

TEST_F(ClosingTest, ARefreshThatEndsMeanwhileCancelsTheMoveToTheUsers) {
    start();
    report("ST6");
    application->console().operations().call("RefreshConsole");
    control("cmbGoToUserMode").setVisible(true);
    wait(2000);
    click("cmbGoToUserMode");
    wait(2000);
    report("ST2");
    wait(6000); // the refresh ends one second before the move
    EXPECT_FALSE(running("tmrGotoUserMode"));
    forget();
    wait(3000);
    EXPECT_THAT(sent, Not(Contains("RX1")));
}

TEST_F(ClosingTest, TheKeyThatLeavesUserModeForgetsAProtocolError) {
    start();
    report("ST6");
    control("cmbGoToUserMode").setVisible(true);
    click("cmbGoToUserMode");
    wait(2000);
    report("ST2");
    wait(8000);
    events().MessageProtocolError.raise();
    click("cmbClose");
    wait(10000);
    EXPECT_EQ(message(), "BQS Calibration Dip Switch Error");
}

} // namespace
} // namespace quillon
