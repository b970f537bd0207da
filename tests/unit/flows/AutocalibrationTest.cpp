#include "console/ServiceSession.h"
#include "tests/unit/flows/Flow.h"

namespace quillon {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class AutocalibrationTest : public FlowTest {
protected:
    AutocalibrationTest() { start(); }
};

TEST_F(AutocalibrationTest, AProtocolErrorTakesThePlaceOfTheDipSwitchInARefusedEntry) {
    beginAutocalibration();
    events().MessageProtocolError.raise();
    wait(6500);
    EXPECT_EQ(message(), "Protocol Error");
    EXPECT_THAT(busyReports, ElementsAre(1, 0));
}

TEST_F(AutocalibrationTest, AProtocolErrorEndsTheWaitForTheGeneratorAtTheNextLook) {
    reachWait();
    wait(6000);
    ASSERT_EQ(message(), "");
    events().MessageProtocolError.raise();
    wait(5000);
    EXPECT_EQ(message(), "Protocol Error");
    EXPECT_FALSE(running("tmrAutocalON"));
}

// A key that is touched twice must not answer the next question.
TEST_F(AutocalibrationTest, AKeyThatClosesAChoiceLiesOverNoKeyOfTheNext) {
    const auto front = [this] {
        for (const char* key :
             {"SelWSAutocal", "SelWSCal", "AutocalSelFocusOrParameter", "AutocalWarning", "Error"}) {
            if (panel(key) != nullptr) {
                return std::string(key);
            }
        }
        return std::string();
    };
    const auto place = [&](std::string_view name) {
        const std::string key = front();
        Place there = (*panel(key))[name].place();
        there.left += panel(key)->left();
        there.top += panel(key)->top();
        return there;
    };
    std::vector<std::string> followed;
    std::vector<std::string> ways{"cmbAutocalibration", "cmbManualCalibration"};
    for (std::size_t i = 0; i < ways.size(); ++i) {
        const std::string way = ways[i]; // the keys pressed, with a blank between
        start();
        std::string before;
        Place pressed;
        for (const std::string_view key : split(way, " ")) {
            before = front();
            pressed = before.empty() ? Place() : place(key);
            application->input().click(before.empty() ? control(key) : (*panel(before))[key]);
        }
        if (front().empty() || front() == before) {
            continue;
        }
        followed.push_back(way.substr(way.rfind(' ') + 1));
        for (const auto& next : panel(front())->controls()) {
            if (next->kind() == Kind::Button) {
                const Place there = place(next->name());
                EXPECT_FALSE(
                    pressed.left < there.left + there.width && there.left < pressed.left + pressed.width &&
                    pressed.top < there.top + there.height && there.top < pressed.top + pressed.height)
                    << way << " lies over " << next->name();
                ways.push_back(way + " " + next->name());
            }
        }
    }
    EXPECT_THAT(followed, ElementsAre("cmbAutocalibration", "cmbManualCalibration", "cmdOK", "cmbOKFocus",
                                      "cmbOKParameter"));
}

TEST_F(AutocalibrationTest, ErrorAfterThePressSelectsProtocolPanel) {
    for (const bool before : {false, true}) {
        for (const std::string_view mode : {"cmbConfiguration", "cmbManualCalibration"}) {
            if (before) {
                events().MessageProtocolError.raise();
            }
            click(mode);
            if (panel("SelWSCal") != nullptr) {
                click("SelWSCal", "cmdOK");
            }
            if (!before) {
                events().MessageProtocolError.raise();
            }
            wait(4500);
            EXPECT_EQ(message(), before ? "BQS Calibration Dip Switch Error" : "Protocol Error") << mode;
            click("Error", "cmbOK");
            wait(10000);
        }
    }
}

TEST_F(AutocalibrationTest, ItsEndTellsOfAProtocolErrorOnlyWhenTheGeneratorHasNotComeBack) {
    struct Row {
        const char* answer; ///< what the generator says to the end of the autocalibration
        bool protocolError;
        const char* message;
    };
    for (const Row& row :
         {Row{"ST9", false, ""}, Row{"ST9", true, "Protocol Error"},    // short end, still in the mode
          Row{"ST2", true, ""},                                         // short end, back
          Row{"ST6", false, ""}, Row{"ST6", true, "Protocol Error"}}) { // full end, calibration not left
        SCOPED_TRACE(row.answer);
        start();
        report("ST6\rMA050");
        report("ST9");
        wait(5000);
        click("cmbClose");
        if (row.protocolError) {
            events().MessageProtocolError.raise();
        }
        report(row.answer);
        wait(50000);
        EXPECT_FALSE(running("tmrAutocalOFF"));
        EXPECT_EQ(message(), row.message);
        EXPECT_EQ(busyReports.back(), 0);
        EXPECT_TRUE(message().empty() || control("cmbClose").caption() == "Close");
    }
}

TEST_F(AutocalibrationTest, AModeThatIsLeftBeforeTheNextLookEndsTheEntry) {
    for (const char* left : {"ST6", "ST8"}) {
        start();
        reachWait();
        report("ST9");
        ASSERT_TRUE(application->console().session().is(quillon::Run::EnteringAutocalibration));
        report(left);
        EXPECT_TRUE(application->console().session().idle()) << left;
    }
}

TEST_F(AutocalibrationTest, TheBlinkNeverGoesOnOverAnotherPrompt) {
    for (const auto& [reports, words] : {std::pair{"ST6\rST11", "Press Confirm to Start"},
                                         {"ST9\rST12", "ERROR"},
                                         {"ST9\rST13", "OK"},
                                         {"ST1", "Powering Up"},
                                         {"ST2", ""},
                                         {"CAU0", "Aborting Auto Calibration"}}) {
        start();
        confirm();
        report(reports);
        EXPECT_FALSE(running("tmrIniAutocal")) << reports;
        EXPECT_THAT(prompt(), HasSubstr(words)) << reports;
    }
}

} // namespace
} // namespace quillon
