#include "tests/unit/flows/Flow.h"

namespace quillon {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

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

struct EndCase {
    const char* answer; ///< what the generator says to the end of the autocalibration
    bool protocolError;
    const char* message;
};

class AutocalibrationEnd : public AutocalibrationTest, public testing::WithParamInterface<EndCase> {};

TEST_P(AutocalibrationEnd, TellsOfAProtocolErrorOnlyWhenTheGeneratorHasNotComeBack) {
    report("ST6\rMA050");
    report("ST9");
    wait(5000);
    click("cmbClose");
    if (GetParam().protocolError) {
        events().MessageProtocolError.raise();
    }
    report(GetParam().answer);
    wait(50000);
    EXPECT_FALSE(running("tmrAutocalOFF"));
    EXPECT_EQ(message(), GetParam().message);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Ends, AutocalibrationEnd, testing::Values(
    EndCase{"ST9", false, ""},
    EndCase{"ST9", true,  "Protocol Error"},  // short end, still in the mode
    EndCase{"ST2", true,  ""},                // short end, back
    EndCase{"ST6", false, ""},
    EndCase{"ST6", true,  "Protocol Error"})); // full end, calibration not left
// clang-format on

struct PromptCase {
    const char* reports;
    const char* prompt;
};

class AutocalibrationBlink : public AutocalibrationTest, public testing::WithParamInterface<PromptCase> {};

TEST_P(AutocalibrationBlink, NeverGoesOnOverAnotherPrompt) {
    confirm();
    report(GetParam().reports);
    EXPECT_FALSE(running("tmrIniAutocal"));
    EXPECT_THAT(prompt(), HasSubstr(GetParam().prompt));
}

INSTANTIATE_TEST_SUITE_P(Prompts, AutocalibrationBlink,
                         testing::Values(PromptCase{"ST6\rST11", "Press Confirm to Start"},
                                         PromptCase{"ST9\rST12", "ERROR"}, PromptCase{"ST9\rST13", "OK"},
                                         PromptCase{"ST1", "Powering Up"}, PromptCase{"ST2", ""},
                                         PromptCase{"CAU0", "Aborting Auto Calibration"}));

} // namespace
} // namespace quillon
