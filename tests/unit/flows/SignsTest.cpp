#include "console/Glance.h"
#include "console/PendingKeys.h"
#include "console/ServiceSession.h"
#include "console/StatusLine.h"
#include "tests/unit/flows/Flow.h"

namespace quillon {
namespace {

using testing::ElementsAre;

class SignsTest : public FlowTest {
protected:
    SignsTest() { start(); }
    [[nodiscard]] Signs signs() { return application->signs(); }
};

TEST_F(SignsTest, AtAGlanceStandsWhatTheGeneratorSaidLast) {
    const struct {
        std::vector<const char*> messages;
        const char* lines; ///< a mark in front of an alarm
    } rows[] = {
        {{}, "Generator=Ready;Errors since the start=0;"},
        {{"HE12", "DL1", "HL1"},
         "Generator=Ready;Tube heat=12 %;!Standing=Door open, Overheat;Errors since the start=0;"},
        {{"DL0", "HL0", "ST10"}, "!Generator=Tube too hot;Tube heat=12 %;Errors since the start=0;"},
        // One error, however often it is reported, until it is over.
        {{"ST7", "ER12", "ST7", "ER12"}, "!Generator=Error;Tube heat=12 %;Errors since the start=1;"},
        {{"ST2", "ER12", "AR0", "ER12", "AR1"}, "Generator=Ready;Tube heat=12 %;Errors since the start=4;"},
        {{"ST1"}, "Generator=Powering Up;Errors since the start=4;"},
    };
    int changes = 0;
    signs().glance.changed.connect([&] { ++changes; });
    for (const auto& row : rows) {
        for (const char* message : row.messages) {
            report(message);
        }
        std::string lines;
        for (const GlanceLine& line : signs().glance.lines()) {
            lines.append(line.alarm ? "!" : "").append(line.subject + "=" + line.state + ";");
        }
        EXPECT_EQ(lines, row.lines);
        EXPECT_EQ(std::exchange(changes, 0) > 0, !row.messages.empty());
    }
    std::vector<int> codes;
    for (const SessionError& error : signs().glance.errors()) {
        codes.push_back(error.code);
    }
    EXPECT_THAT(codes, ElementsAre(0, 12, 12, 12));
    EXPECT_EQ(signs().glance.errors()[0].words, "EXPOSURE ABORTED BY BACK-UP TIMER");
}

// What a key sent is confirmed, or not, at the named time; a second later the key waits no more.
TEST_F(SignsTest, AKeyWaitsUntilWhatItSentIsAnsweredGivenUpOrThrownAway) {
    report("ST8");
    wait(1000);
    machine.port.onWritten = [](std::string_view) {};
    Control& key = application->link()["cmbDfltConfig"];
    Control& other = application->link().at("cmbConfTubeUp");
    int changes = 0;
    signs().pending.changed.connect([&](const Control* changed) { changes += changed == &key ? 1 : 0; });
    const struct {
        const char* why;
        std::function<void()> ends;
        Milliseconds after;
    } rows[] = {
        {"acknowledged", [this] { report("AK"); }, 600},
        {"given up", [] {}, 1750}, // four times, and one time-out more
        {"thrown away",
         [this] {
             application->link().operations().call(
                 "SendMessage", std::array{Value{std::string("x")}, Value{std::int16_t{16383}}, Value{false},
                                           Value{std::int16_t{350}}, Value{true}});
         },
         600},
        {"the port is closed", [this] { application->link().setPortOpen(false); }, 600},
    };
    for (const auto& row : rows) {
        application->link().setPortOpen(true);
        changes = 0;
        ASSERT_TRUE(application->input().click(key)) << row.why;
        EXPECT_TRUE(signs().pending.waits(key)) << row.why;
        EXPECT_FALSE(signs().pending.waits(other)) << row.why;
        wait(row.after - 1);
        EXPECT_TRUE(signs().pending.waits(key)) << row.why;
        row.ends();
        wait(1);
        EXPECT_FALSE(signs().pending.waits(key)) << row.why;
        EXPECT_EQ(changes, 2) << row.why;
    }
}

TEST_F(SignsTest, AModesKeyWaitsAsLongAsItsRunWaitsForTheGenerator) {
    const auto waits = [this](std::string_view name) { return signs().pending.waits(control(name)); };
    click("cmbManualCalibration");
    EXPECT_FALSE(waits("cmbManualCalibration")) << "it is the operator's turn";
    click("SelWSCal", "cmdOK");
    EXPECT_TRUE(waits("cmbManualCalibration"));
    wait(3000);
    report("ST6");
    wait(1000);
    EXPECT_TRUE(waits("cmbManualCalibration"));
    wait(1000);
    EXPECT_FALSE(waits("cmbManualCalibration"));
    click("cmbClose");
    wait(3000); // what its press sends is confirmed
    EXPECT_TRUE(waits("cmbClose"));
    report("ST1");
    EXPECT_FALSE(waits("cmbClose"));
    // What comes by itself is nobody's.
    report("ST6");
    report("ST9");
    ASSERT_TRUE(application->console().session().is(Run::HandingOver));
    EXPECT_FALSE(waits("cmbClose"));
}

TEST_F(SignsTest, AKeyThatIsGoneIsNobodysHand) {
    click("cmbManualCalibration");
    ASSERT_NE(panel("SelWSCal"), nullptr);
    const Control* before = nullptr;
    const Control* after = nullptr;
    Control& key = (*panel("SelWSCal"))["cmdOK"];
    key.on.click = [&] {
        before = application->input().hand();
        application->console().removeKeyed("SelWSCal");
        after = application->input().hand();
    };
    click("SelWSCal", "cmdOK");
    EXPECT_EQ(before, &key);
    EXPECT_EQ(after, nullptr);
}

TEST_F(SignsTest, AGeneratorThatMissesTwoPollsIsToldAndWhatItSaidBeforeIsOld) {
    const auto old = [this](std::string_view field) { return application->link()[field].old(); };
    report("ST6\rKV080\rMA0100\rCV1234");
    wait(500);
    machine.port.onWritten = [](std::string_view) {};
    EXPECT_EQ(signs().status.silence(), "");
    int changes = 0;
    signs().status.changed.connect([&] { ++changes; });
    wait(4000);
    EXPECT_EQ(signs().status.silence(), "No answer for 4 s");
    EXPECT_GT(changes, 0);
    EXPECT_TRUE(old("txtPHASE") && old("txtMACal") && signs().glance.lines()[0].old);
    wait(30'000);
    EXPECT_EQ(signs().status.silence(), "No answer for 34 s") << "the loss is not told yet";
    EXPECT_EQ(prompt(), "");
    // A report makes new what it says, even if it says the same, and nothing else.
    report("ST6");
    report("MA0100");
    EXPECT_EQ(signs().status.silence(), "");
    EXPECT_FALSE(old("txtPHASE") || old("txtMACal"));
    EXPECT_TRUE(old("txtKVPCal"));
    application->link()["txtKVPCal"].setCaption("090");
    EXPECT_TRUE(old("txtKVPCal")) << "the console's own hand is no report";
    wait(60'000);
    EXPECT_NE(prompt(), "") << "the loss is told";
    // An answer to its question is none of the generator's, nor is the host's wish to count anew.
    for (const char* message : {"ST6", "ST9", "ST11"}) {
        report(message);
    }
    wait(4000);
    ASSERT_EQ(signs().status.silence(), "No answer for 4 s");
    application->link().operations().call("ResetNoAnswerFromGeneratorError", {});
    ASSERT_TRUE(application->input().click(application->link()["cmbAutocalConfirm"]));
    wait(10'000);
    EXPECT_EQ(signs().status.silence(), "No answer for 14 s");
    application->link().setPortOpen(false);
    wait(2000);
    EXPECT_EQ(signs().status.silence(), "") << "nobody was asked";
}

TEST_F(SignsTest, LongWorkIsCountedBesideThePrompt) {
    const auto stands = [this](const char* doing, const char* howFar, Milliseconds after = 0) {
        wait(after);
        EXPECT_EQ(signs().status.doing(), doing);
        EXPECT_EQ(signs().status.howFar(), howFar);
        EXPECT_EQ(signs().status.counting(), *howFar != 0 && std::string_view(howFar).find(':') != 9);
    };
    stands("", "");
    click("cmbReadExposureCounters");
    stands("", "0 of 3", 2500);
    report("TC05");
    report("TC17");
    stands("", "2 of 3");
    report("TC22");
    stands("", "");
    click("cmbReadExposureCounters");
    click("cmbConfiguration");
    stands("", "3 s left", 100);
    report("ST8"); // takes the prompt away
    stands("Entering Configuration ...", "2 s left", 1000);
    stands("", "", 3000);
    report("ST1");
    report("ST2");
    stands("Reading the settings ...", "10 s left", 5000);
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
    stands("", "20 s left", 1500);
}

} // namespace
} // namespace quillon
