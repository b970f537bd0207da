#include <map>

#include "base/Text.h"
#include "console/KeyReasons.h"
#include "tests/unit/flows/Flow.h"

namespace quillon {
namespace {

using Answer = MemoryDesktop::Answer;
using testing::Contains;
using testing::ElementsAre;

class ClosingTest : public FlowTest {
protected:
    void holdClose(Milliseconds ms) {
        press("cmbClose");
        wait(ms);
        release("cmbClose");
    }
    /// Milliseconds, keys, reports, and how far an autocalibration is, with ';' between.
    void carryOut(std::string_view steps) {
        for (const std::string_view step : split(steps, ";")) {
            carryOutOne(step);
        }
    }

private:
    void carryOutOne(std::string_view step) {
        if (isNumeric(step)) {
            wait(static_cast<Milliseconds>(toInt32(step)));
        } else if (step.starts_with("ST")) {
            report(step);
        } else if (step == "autocalibration asked for") {
            reachWait();
        } else if (step == "answer") {
            application->input().click(application->link()["cmbAutocalConfirm"]);
        } else if (const auto dot = step.find('.'); dot != std::string_view::npos) {
            click(step.substr(0, dot), step.substr(dot + 1));
        } else if (step.starts_with("hold ")) {
            press(step.substr(5));
        } else {
            click(step);
        }
    }
};

TEST_F(ClosingTest, ASwitchKeepsThePcOnAndThePortIsClosedAllTheSame) {
    std::size_t restarts = 0;
    for (const auto& [commandLine, restart] :
         {std::pair{"", true}, {"-P1", true}, {"-d", false}, {"-P1 -D", false}, {"-debug", false}}) {
        start(commandLine);
        machine.desktop.answer(Answer::Yes);
        press("cmbClose");
        wait(3999);
        EXPECT_TRUE(machine.port.isOpen());
        wait(1);
        release("cmbClose");
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
        boxes.push_back((box.box == MemoryDesktop::Box::Critical ? "!" : "") + box.title + ": " + box.text +
                        (machine.port.isOpen() ? "" : " (port closed)"));
    };
    machine.desktop.answer(Answer::Yes);
    holdClose(4000);
    EXPECT_THAT(machine.power.exits(), ElementsAre(MemoryPowerControl::Exit{true, false}));
    EXPECT_THAT(boxes, ElementsAre("Torvane Generator Service: Close the port and restart the PC?",
                                   "!Torvane Generator Service: The PC was not restarted: Access denied"));
    forget();
    wait(3000);
    EXPECT_THAT(sent, Contains("ST")) << "the poll goes on";
    EXPECT_TRUE(control("cmbConfiguration").enabled());

    machine.port.setFailing(1, true);
    machine.desktop.answer(Answer::Yes);
    holdClose(4000);
    ASSERT_EQ(boxes.size(), 5U);
    EXPECT_EQ(boxes[3], "!Torvane Generator Service: Cannot Open Port: 1 (port closed)");
}

// The generator may follow late: it is told not to as long as it might.
TEST_F(ClosingTest, CloseBehindARefusedEntryTakesItBack) {
    for (const auto& [key, frame] : {std::pair{"cmbConfiguration", "CF0"},
                                     {"cmbManualCalibration", "CA0"},
                                     {"cmbAutocalibration", "CA0"}}) {
        for (const bool late : {false, true}) {
            start();
            if (std::string_view(key) == "cmbAutocalibration") {
                beginAutocalibration();
            } else {
                click(key);
            }
            if (panel("SelWSCal") != nullptr) {
                click("SelWSCal", "cmdOK");
            }
            machine.time.advance(10'000, [this] { return !message().empty(); });
            click("Error", "cmbOK");
            wait(late ? 20'000 : 0);
            forget();
            click("cmbClose");
            EXPECT_EQ(control("lblHelp").role(), Role::Prompt);
            EXPECT_TRUE(indicators().reasons.blocks(control("cmbClose")));
            wait(3000);
            EXPECT_EQ(std::ranges::count(sent, frame), late ? 0 : 1) << key;
            EXPECT_FALSE(machine.port.isOpen());
        }
    }
}

TEST_F(ClosingTest, InTheEntryToAutocalibrationItDoesNothingAndTakesNothing) {
    start();
    beginAutocalibration();
    wait(1500);
    report("ST3");
    report("ST2"); // gives the key
    click("cmbClose");
    wait(2000);
    EXPECT_THAT(sent, testing::IsSupersetOf({"RX0", "RX1"}));
    EXPECT_TRUE(machine.port.isOpen());
}

// Nor does it wait for the end of any other run in which a report has given it back.
TEST_F(ClosingTest, GivenBackInTheMiddleOfARunItLeavesOrCloses) {
    constexpr std::string_view kLend =
        "cmbManualCalibration;SelWSCal.cmdOK;2000;ST6;4000;cmbGoToUserMode;500;ST3;ST6";
    // What it says of Busy: it leaves anew, or hides the counters; where it says nothing it closes.
    for (const auto& [before, busy] :
         std::map<std::string_view, std::vector<int>>{{"cmbConfiguration;ST3;ST2", {}},
                                                      {"ST8;3000;cmbConfiguration;500;ST2", {}},
                                                      {"ST6;3000;cmbManualCalibration;500;ST3;ST6", {1}},
                                                      {kLend, {1}},
                                                      {"ST11;600;answer", {}},
                                                      {"ST9;6000;cmbAutocalibration;500;ST2", {}},
                                                      {"cmbReadExposureCounters;500;ST3;ST2", {0}}}) {
        start();
        carryOut(before);
        forget();
        goodbyes = 0;
        click("cmbClose");
        wait(1000);
        EXPECT_EQ(goodbyes, busy.empty() ? 1 : 0) << before;
        EXPECT_EQ(busyReports, busy) << before;
    }
}

TEST_F(ClosingTest, AMinuteAtTheQuestionDoesNotGiveUpTheModeThatFollows) {
    start();
    reachWait();
    report("ST11");
    wait(61'000);
    report("ST9");
    click("cmbClose");
    wait(3000);
    EXPECT_THAT(sent, Contains("CAU0"));
}

TEST_F(ClosingTest, AMinuteBehindAnAnswerThatLedNowhereItGivesTheAnswerUp) {
    start();
    carryOut("ST11;600;answer;61000;cmbClose");
    EXPECT_TRUE(application->console().session().idle());
    EXPECT_TRUE(application->link()["cmbAutocalConfirm"].visible()) << "the generator still asks";
    EXPECT_TRUE(machine.port.isOpen());
}

TEST_F(ClosingTest, TheWayBackFromTheUsersForgetsTheProtocolErrorBeforeIt) {
    start();
    click("cmbManualCalibration");
    click("SelWSCal", "cmdOK");
    wait(2000);
    report("ST6");
    wait(4000);
    click("cmbGoToUserMode");
    wait(2000);
    report("ST2");
    wait(10'000);
    events().MessageProtocolError.raise();
    click("cmbClose");
    wait(10'000);
    EXPECT_EQ(message(), "BQS Calibration Dip Switch Error");
}

// Whatever the console has begun, the end of the program gives the generator back.
struct WayOut {
    const char* name;
    std::string_view before;
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
    carryOut(GetParam().before);
    forget();
    machine.desktop.onBox = [this](const MemoryDesktop::Shown&) {
        ADD_FAILURE() << "nobody is there to answer";
    };
    const Milliseconds begin = machine.time.now();
    application->leave();
    application->leave();
    const bool closedAlready = GetParam().takes < 1000;
    EXPECT_EQ(application->input().click(control("cmbClose")), closedAlready) << "nothing else is in reach";
    machine.time.advance(60'000, [this] { return application->ended(); });
    EXPECT_EQ(machine.time.now() - begin, GetParam().takes);
    std::erase_if(sent, [](const std::string& frame) { return frame == "ST" || frame == "HU"; });
    EXPECT_EQ(sent, GetParam().sent);
    EXPECT_EQ(goodbyes, 1);
    EXPECT_FALSE(machine.port.isOpen());
    wait(60'000);
    EXPECT_EQ(sent.size(), GetParam().sent.size());
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(From, LeaveTest, testing::Values(
    WayOut{"Ready",            "ST2;3000", {"RX1"}, 1000},
    WayOut{"CloseHeld",        "hold cmbClose;100", {"RX0", "RX1"}, 1000},
    WayOut{"CloseClicked",     "ST2;3000;cmbClose;200", {"RX0", "RX1"}, 800},
    WayOut{"Counters",         "ST2;3000;cmbReadExposureCounters;3000", {"RX1"}, 1000},
    WayOut{"Positioner",       "hold cmdMultiRoom;9000", {"URSRQ", "URSSO0", "RX1"}, 1000},
    WayOut{"Configuration",    "ST8;3000", {"CF0", "RX1"}, 3000, {{"CF0", "ST2"}}},
    WayOut{"ItsEntry",         "ST2;3000;cmbConfiguration;100", {"CF1", "CF0", "RX1", "CF0"}, 3000, {{"RX1", "ST8"}}},
    WayOut{"ItsExit",          "ST8;3000;cmbConfiguration;100", {"CF0", "RX1"}},
    WayOut{"Calibration",      "ST6;3000", {"CA0", "RX1"}, 3000, {{"CA0", "ST2"}}},
    WayOut{"Unheard",          "ST6;3000", {"CA0", "RX1"}},
    WayOut{"ItsPanel",         "ST2;3000;cmbManualCalibration;100", {"RX1"}, 1000},
    // its workstation is told, its command waits
    WayOut{"ItsEntry6",        "cmbManualCalibration;SelWSCal.cmdOK;1900", {"CA0", "RX1", "CA0"}, 3000, {{"RX1", "ST6"}}},
    WayOut{"ItsExit6",         "ST6;3000;cmbManualCalibration;3000", {"CA0", "RX1"}},
    WayOut{"UnknownPhase",     "ST14;100", {"RX1"}, 1000},
    WayOut{"Error",            "ST6\r\nST7\r\nER12;3000", {"RX1"}},
    WayOut{"Exposure",         "ST6\r\nST4;3000", {}},
    WayOut{"Users",            "cmbManualCalibration;SelWSCal.cmdOK;2000;ST6;4000;cmbGoToUserMode;2000;ST2;10000", {"RX1"}, 1000},
    WayOut{"Autocalibration",  "ST9;3000", {"CAU0", "RX1", "CA0"}, 3000, {{"CAU0", "CAU0\r\nST6"}}},
    WayOut{"Unfollowed",       "ST9;3000", {"CAU0", "RX1", "CA0"}},
    WayOut{"ItsEntry9",        "autocalibration asked for", {"CAU0", "CA0", "RX1"}},
    WayOut{"Question",         "autocalibration asked for;ST11;answer", {"CAU0", "RX1", "CA0"}, 3000, {{"CAU0", "CAU0\r\nST6"}}}
), [](const auto& way) { return std::string(way.param.name); });
// clang-format on

} // namespace
} // namespace quillon
