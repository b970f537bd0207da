#include "console/Exposures.h"
#include "console/GeneratorSummary.h"
#include "console/PendingKeys.h"
#include "console/ServiceSession.h"
#include "console/StatusLine.h"
#include "tests/unit/flows/Flow.h"

namespace quillon {
namespace {

using testing::ElementsAre;

class IndicatorsTest : public FlowTest {
protected:
    IndicatorsTest() { start(); }
};

TEST_F(IndicatorsTest, AtAGlanceStandsWhatTheGeneratorSaidLast) {
    const struct {
        std::vector<const char*> messages;
        const char* lines; ///< behind the state; a mark in front of an alarm
    } rows[] = {
        {{}, "Ready;Errors since the start=0;"},
        {{"HE12", "DL1", "HL1"},
         "Ready;Tube heat=12 %;!Standing=Door open, Overheat;Errors since the start=0;"},
        {{"DL0", "HL0", "ST10"}, "Tube too hot;Tube heat=12 %;Errors since the start=0;"},
        // One error, however often it is reported, until it is over.
        {{"ST7", "ER1", "ST12", "ER1", "ST7", "ER1"}, "Error;Tube heat=12 %;Errors since the start=1;"},
        {{"ST2", "ER1", "AR0", "ER1", "ST3", "ST2", "AR1", "AR2"},
         "Ready;Tube heat=12 %;Errors since the start=5;"},
        {{"ST1"}, "Powering Up;Errors since the start=5;"},
    };
    indicators().summary.changed.connect([changes = changes] { ++*changes; });
    for (const auto& row : rows) {
        for (const char* message : row.messages) {
            report(message);
        }
        std::string lines = indicators().summary.state() + ";";
        for (const SummaryLine& line : indicators().summary.lines()) {
            lines.append(line.alarm ? "!" : "").append(line.subject + "=" + line.state + ";");
        }
        EXPECT_EQ(lines, row.lines);
        EXPECT_EQ(std::exchange(*changes, 0) > 0, !row.messages.empty());
    }
    std::vector<int> codes;
    for (const SessionError& error : indicators().summary.errors()) {
        codes.push_back(error.code);
    }
    EXPECT_THAT(codes, ElementsAre(0, 0, 1, 1, 1));
    EXPECT_EQ(indicators().summary.errors()[1].words, "EXPOSURE ABORTED BY BACK-UP TIMER");
}

TEST_F(IndicatorsTest, AGeneratorThatMissesTwoPollsIsToldAndWhatItSaidBeforeIsOld) {
    const auto old = [this](PanelControl field) { return application->link()[field].old(); };
    report("ST6\rKV080\rMA0100\rCV1234");
    wait(500);
    machine.port.onWritten = [](std::string_view) {};
    EXPECT_EQ(indicators().status.line().words, "COM1");
    indicators().status.changed.connect([changes = changes] { ++*changes; });
    wait(4000);
    EXPECT_EQ(indicators().status.line().words, "COM1: no answer for 4 s");
    EXPECT_GT(*changes, 0);
    EXPECT_TRUE(old("txtPHASE") && old("txtMACal"));
    wait(30'000);
    EXPECT_EQ(indicators().status.line().words, "COM1: no answer for 34 s") << "the loss is not told yet";
    EXPECT_EQ(prompt(), "");
    // A report makes new what it says, even if it says the same, and nothing else.
    report("ST6");
    report("MA0100");
    EXPECT_EQ(indicators().status.line().words, "COM1");
    EXPECT_FALSE(old("txtPHASE") || old("txtMACal"));
    EXPECT_TRUE(old("txtKVPCal"));
    application->link()["txtKVPCal"].setCaption("090");
    EXPECT_TRUE(old("txtKVPCal")) << "the console's own hand is no report";
    wait(60'000);
    EXPECT_NE(prompt(), "") << "the loss is told";
    EXPECT_EQ(indicators().summary.errors().front().words, "Communications ERROR");
    // An answer to its question is none of the generator's, nor is the host's wish to count anew.
    for (const char* message : {"ST6", "ST9", "ST11"}) {
        report(message);
    }
    wait(4000);
    ASSERT_EQ(indicators().status.line().words, "COM1: no answer for 4 s");
    application->link().operations().call("ResetNoAnswerFromGeneratorError", {});
    ASSERT_TRUE(application->input().click(application->link()["cmbAutocalConfirm"]));
    wait(10'000);
    EXPECT_EQ(indicators().status.line().words, "COM1: no answer for 14 s");
    application->link().setPortOpen(false);
    wait(2000);
    EXPECT_EQ(indicators().status.line().words, "COM1: closed") << "nobody was asked";
}

TEST_F(IndicatorsTest, TheKeyThatExposesIsThereInPreparationAlone) {
    for (const auto& [reports, shown] : {std::pair{"WM1\rWSS1\rST3", true},
                                         {"WM2\rWSS1\rST3", true},
                                         {"WM1\rWSS1\rST4", false},
                                         {"WM3\rWSS1\rST3", false},
                                         {"WM1\rWSS0\rST3", false},
                                         {"WM3\rWSS1\rST4", false}}) {
        start("-swSync");
        report(reports);
        EXPECT_EQ(application->link()["cmdSWExposure"].visible(), shown) << reports;
    }
}

TEST_F(IndicatorsTest, LongWorkIsCountedBesideThePrompt) {
    const auto stands = [this](const char* doing, const char* howFar, Milliseconds after = 0) {
        wait(after);
        EXPECT_EQ(indicators().status.doing().words, doing);
        EXPECT_EQ(indicators().status.howFar(), howFar);
        EXPECT_EQ(indicators().status.counting(), *howFar != 0 && std::string_view(howFar).find(':') != 9);
    };
    stands("", "");
    click("cmbReadExposureCounters");
    stands("Reading Exposure Counters", "0 of 3", 2500);
    report("TC05");
    report("TC17");
    stands("Reading Exposure Counters", "2 of 3");
    report("TC22");
    stands("", "");
    click("cmbReadExposureCounters");
    click("cmbConfiguration");
    stands("Entering Configuration", "3 s left", 100);
    report("ST8"); // takes the prompt away
    stands("Entering Configuration", "2 s left", 1000);
    stands("", "", 3000);
    report("ST1");
    report("ST2");
    stands("Reading the settings", "10 s left", 5000);
    stands("", "", 10'000);
    report("ST6");
    report("ST9");
    for (int exposure = 0; exposure < 2; ++exposure) {
        report("ST3");
        report("ST4");
        report("ST9");
    }
    stands("", "Exposures: 2", 5000);
    click("cmbClose");
    stands("Exiting Auto Calibration", "20 s left", 1500);
}

/// Its words behind a sign of how they are meant.
std::string told(const StatusField& field) {
    constexpr std::array<std::string_view, 8> kSigns{"", "?", "+", "~", "#", "*", "!", "!!"};
    return std::string(kSigns.at(static_cast<std::size_t>(field.tone))) + field.words;
}

TEST_F(IndicatorsTest, TheStatusBarTellsWhatIsSo) {
    const auto silent = [this](Milliseconds time) {
        machine.port.onWritten = [](std::string_view) {};
        wait(time);
    };
    const auto close = [this] { application->link().setPortOpen(false); };
    const struct {
        std::function<void()> act;
        const char* fields; ///< generator, line, X-rays, alarm
    } rows[] = {
        {[] {}, "Ready, +COM1, X-rays possible, !"},
        {[this] { report("DL1\rHL1"); }, "Ready, +COM1, !No X-rays: Door open +1, !"},
        {[this] { report("DL0\rHL0\rST3"); }, "Preparation, +COM1, X-rays possible, !"},
        {[this] { report("ST4"); }, "*Exposure, +COM1, *X-RAYS ON, !"},
        {[this] { report("ST5"); }, "*Exposure, +COM1, *X-RAYS ON, !"},
        {[this] { report("ST10"); }, "!Tube too hot, +COM1, *X-RAYS ON, !"}, // as the lamp, which stays lit
        {[this] { report("ST2\rST10"); }, "!Tube too hot, +COM1, #No X-rays, !"},
        {[this] { report("ST7\rER12"); }, "!!Error, +COM1, #No X-rays, !!Error 12"},
        // Reported in Ready it says nothing of X-rays.
        {[this] { report("ST2"); }, "Ready, +COM1, ?X-rays unknown, !!Error 12"},
        {[this] { report("AR0"); }, "Ready, +COM1, X-rays possible, !"},
        {[this] { report("AR1"); }, "Ready, +COM1, X-rays possible, !EXPOSURE ABORTED BY BACK-UP TIMER"},
        {[this] {
             report("AR0");
             press("cmbClose");
         },
         "Ready, +COM1, #X-rays held back, !"},
        {[this] { application->input().release(control("cmbClose"), false); },
         "Ready, +COM1, X-rays possible, !"},
        {[this] { machine.port.setGone(true); }, "?Ready, !!COM1 is gone, ?X-rays unknown, !"},
        {[&] {
             machine.port.setGone(false);
             silent(6000);
         },
         "?Ready, !COM1: no answer for 6 s, ?X-rays unknown, !"},
        {[&] { silent(60'000); },
         "?Not known, !!COM1: no answer for 66 s, ?X-rays unknown, !!Communications ERROR"},
        {[this] { report("ST1"); }, "~Powering Up, +COM1, ?X-rays unknown, !"},
        {close, "?Not known, !COM1: closed, ?X-rays unknown, !"},
        {[this] {
             machine.port.setFailing(1, true);
             machine.port.setFailure("COM1: /dev/ttyUSB0: No such file or directory");
             application->link().setPortOpen(true);
         },
         "?Not known, !!COM1: not open, ?X-rays unknown, !!COM1: /dev/ttyUSB0: No such file or directory"},
        {close, "?Not known, !COM1: closed, ?X-rays unknown, !"},
        {[this] {
             application->link().setPortOpen(true);
             machine.port.arrive(1);
         },
         "?Not known, ?COM1: Nothing heard yet, ?X-rays unknown, !"},
        {[this] { report("ST2"); }, "Ready, +COM1, X-rays possible, !"},
    };
    for (const auto& row : rows) {
        row.act();
        const StatusLine& status = indicators().status;
        EXPECT_EQ(told(status.generator()) + ", " + told(status.line()) + ", " + told(status.rays()) + ", " +
                      told(status.alarm()),
                  row.fields);
    }
}

TEST_F(IndicatorsTest, APositionersScreenTellsTheWayBackAndWhichSIDIsOld) {
    start({}, "REMOTE=YES\r\n");
    const auto way = [this](const Control* key, const char* words) {
        EXPECT_EQ(indicators().status.wayBack(), key);
        EXPECT_EQ(indicators().status.doing().words, words);
    };
    const auto old = [this] { return indicators().pending.outdated(control("TxtStoredSID")); };
    way(nullptr, "");
    click("cmdMultiRoom");
    way(&control("cmdMultiRoom"), "Back: MultiRoom Calibration");
    EXPECT_EQ(control("cmdMultiRoom").backColour(), kNormalColour) << "its property is a host's";
    wait(2000);
    report("URSSG1000");
    EXPECT_FALSE(old());
    EXPECT_FALSE(application->input().type(control("TxtStoredSID"), "1300"));
    ASSERT_TRUE(application->input().type(control("txtRemoteSID"), "1300"));
    click("cmdSetNewSID");
    EXPECT_TRUE(old());
    report("URSSG1000"); // asked for before
    EXPECT_TRUE(old());
    wait(2000);
    EXPECT_TRUE(old()) << "acknowledged is not reported";
    report("URSSG1300");
    EXPECT_FALSE(old());
    indicators().status.changed.connect([changes = changes] { ++*changes; });
    click("cmdMultiRoom");
    EXPECT_GT(*changes, 0);
    way(nullptr, "");
}

TEST_F(IndicatorsTest, ExposuresAreCountedWithTheirValues) {
    const auto expose = [this] { report("ST3\rST4\rST2\rPD050062.500125"); };
    expose();
    click("cmbManualCalibration");
    click("SelWSCal", "cmdOK");
    wait(3000);
    report("ST6");
    wait(3000);
    click("cmbGoToUserMode");
    wait(2000);
    report("ST2");
    wait(12'000);
    ASSERT_TRUE(application->console().session().lent());
    EXPECT_EQ(indicators().status.howFar(), "Exposures: 0");
    expose();
    EXPECT_EQ(indicators().status.howFar(), "Exposures: 1");
    EXPECT_EQ(indicators().exposures.count(), 2);
    ASSERT_EQ(indicators().exposures.last().size(), 2U);
    EXPECT_EQ(indicators().exposures.last().front().values, "500 mA  125 ms  62.5 mAs");
}

} // namespace
} // namespace quillon
