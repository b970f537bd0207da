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
