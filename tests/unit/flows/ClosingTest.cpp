#include <functional>
#include <map>

#include "tests/unit/flows/Flow.h"

namespace quillon {
namespace {

using Answer = MemoryDesktop::Answer;
using testing::Contains;
using testing::ElementsAre;

class ClosingTest : public FlowTest {
public:
    using FlowTest::application, FlowTest::click, FlowTest::confirm, FlowTest::control, FlowTest::press,
        FlowTest::reachWait, FlowTest::report, FlowTest::wait;

protected:
    void holdClose(Milliseconds ms) {
        press("cmbClose");
        wait(ms);
        release("cmbClose");
    }
};

TEST_F(ClosingTest, ASwitchKeepsThePcOnAndThePortIsClosedAllTheSame) {
    std::size_t restarts = 0;
    for (const auto& [commandLine, restart] :
         {std::pair{"", true}, {"-P1", true}, {"-d", false}, {"-P1 -D", false}, {"-debug", false}}) {
        start(commandLine);
        machine.desktop.answer(Answer::Yes);
        holdClose(4000);
        EXPECT_FALSE(machine.port.isOpen());
        EXPECT_EQ(machine.power.exits().size(), restarts += restart ? 1 : 0) << commandLine;
        EXPECT_EQ(goodbyes, 0);
    }
}

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

// Whatever the console has begun, the end of the program gives the generator back.
struct WayOut {
    const char* name;
    std::function<void(ClosingTest&)> before;
    std::vector<std::string> sent;
    Milliseconds takes = 3000;
    std::map<std::string, std::string> answers = {}; ///< what the generator says to a frame, 50 ms later
};

void PrintTo(const WayOut& way, std::ostream* out) {
    *out << way.name;
}

class LeaveTest : public ClosingTest, public testing::WithParamInterface<WayOut> {};

TEST_P(LeaveTest, GivesTheGeneratorBackAndSaysGoodbyeInTime) {
    start({}, "REMOTE=YES\r\n");
    machine.port.onWritten = [this, answer = machine.port.onWritten](std::string_view bytes) {
        answer(bytes);
        if (const auto row = GetParam().answers.find(sent.back()); row != GetParam().answers.end()) {
            machine.time.schedule().post(50, [this, row] { report(row->second); });
        }
    };
    GetParam().before(*this);
    forget();
    machine.desktop.onBox = [this](const MemoryDesktop::Shown&) {
        ADD_FAILURE() << "nobody is there to answer";
    };
    const Milliseconds begin = machine.time.now();
    application->leave();
    application->leave();
    application->input().click(control("cmbClose")); // nothing else happens meanwhile
    machine.time.advance(60'000, [this] { return application->ended(); });
    EXPECT_EQ(machine.time.now() - begin, GetParam().takes);
    std::erase_if(sent, [](const std::string& frame) { return frame == "ST" || frame == "HU"; });
    EXPECT_EQ(sent, GetParam().sent);
    EXPECT_EQ(goodbyes, 1);
    EXPECT_FALSE(machine.port.isOpen());
    wait(60'000);
    EXPECT_EQ(sent.size(), GetParam().sent.size());
}

const auto kInPhase = [](const char* phase) {
    return [phase](ClosingTest& test) {
        test.report(phase);
        test.wait(3000);
    };
};
const auto kKey = [](const char* phase, const char* key, Milliseconds wait) {
    return [=](ClosingTest& test) {
        test.report(phase);
        test.wait(3000);
        test.click(key);
        test.wait(wait);
    };
};

// clang-format off
INSTANTIATE_TEST_SUITE_P(From, LeaveTest, testing::Values(
    WayOut{"Ready",            kInPhase("ST2"), {"RX1"}, 1000},
    WayOut{"CloseHeld",        [](ClosingTest& test) { test.press("cmbClose"); test.wait(100); }, {"RX0", "RX1"}, 1000},
    WayOut{"CloseClicked",     kKey("ST2", "cmbClose", 200), {"RX0", "RX1"}, 800},
    WayOut{"Counters",         kKey("ST2", "cmbReadExposureCounters", 3000), {"RX1"}, 1000},
    WayOut{"Positioner",       [](ClosingTest& test) { test.press("cmdMultiRoom"); test.wait(9000); }, {"URSRQ", "URSSO0", "RX1"}, 1000},
    WayOut{"Configuration",    kInPhase("ST8"), {"CF0", "RX1"}, 3000, {{"CF0", "ST2"}}},
    WayOut{"ItsEntry",         kKey("ST2", "cmbConfiguration", 100), {"CF1", "CF0", "RX1", "CF0"}, 3000, {{"RX1", "ST8"}}},
    WayOut{"ItsExit",          kKey("ST8", "cmbConfiguration", 100), {"CF0", "RX1"}},
    WayOut{"Calibration",      kInPhase("ST6"), {"CA0", "RX1"}, 3000, {{"CA0", "ST2"}}},
    WayOut{"Unheard",          kInPhase("ST6"), {"CA0", "RX1"}},
    WayOut{"ItsPanel",         kKey("ST2", "cmbManualCalibration", 100), {"RX1"}, 1000},
    WayOut{"ItsEntry6",        [](ClosingTest& test) {
                                   test.click("cmbManualCalibration");
                                   test.click("SelWSCal", "cmdOK");
                                   test.wait(1900); // its workstation is told, its command waits
                               }, {"CA0", "RX1", "CA0"}, 3000, {{"RX1", "ST6"}}},
    WayOut{"ItsExit6",         kKey("ST6", "cmbManualCalibration", 3000), {"CA0", "RX1"}},
    WayOut{"Error",            kInPhase("ST6\r\nST7\r\nER12"), {"RX1"}},
    WayOut{"Exposure",         kInPhase("ST6\r\nST4"), {}},
    WayOut{"Users",            [](ClosingTest& test) {
                                   test.report("ST6");
                                   test.control("cmbGoToUserMode").setVisible(true);
                                   test.click("cmbGoToUserMode");
                                   test.wait(2000);
                                   test.report("ST2");
                                   test.wait(10000);
                                   ASSERT_TRUE(test.application->link().TempUserMode());
                               }, {"RX1"}, 1000},
    WayOut{"Autocalibration",  kInPhase("ST9"), {"CAU0", "RX1", "CA0"}, 3000, {{"CAU0", "CAU0\r\nST6"}}},
    WayOut{"Unfollowed",       kInPhase("ST9"), {"CAU0", "RX1", "CA0"}},
    WayOut{"ItsEntry9",        [](ClosingTest& test) { test.reachWait(); }, {"CAU0", "CA0", "RX1"}},
    WayOut{"Question",         [](ClosingTest& test) { test.confirm(); }, {"CAU0", "RX1", "CA0"}, 3000, {{"CAU0", "CAU0\r\nST6"}}}
), [](const auto& way) { return std::string(way.param.name); });
// clang-format on

} // namespace
} // namespace quillon
