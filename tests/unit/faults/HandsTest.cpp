#include <gtest/gtest.h>

#include "FaultyMachine.h"

namespace quillon {
namespace {

/// A console in Ready.
class TwoHands : public testing::Test {
protected:
    TwoHands() {
        machine.start();
        machine.hear("ST2");
        machine.wait(12000);
    }
    [[nodiscard]] Input& hand() { return machine.application->input(); }
    [[nodiscard]] bool open(const char* panel) {
        return machine.application->console().keyed(panel) != nullptr;
    }

    FaultyMachine machine;
};

TEST_F(TwoHands, SecondModeKeyDoesNothing) {
    ASSERT_TRUE(hand().press(machine.console("cmbManualCalibration")));
    ASSERT_TRUE(hand().click(machine.console("cmbAutocalibration")));
    hand().release(machine.console("cmbManualCalibration"));
    EXPECT_TRUE(open("SelWSAutocal"));
    EXPECT_FALSE(open("SelWSCal"));
}

// The generator goes on to an exposure under the finger: what the key would begin is not for that phase. Or
// the finger slides off: its owner has thought better of it.
TEST_F(TwoHands, AKeyThatWasTakenAwayOrLeftDoesNothing) {
    for (const char* key : {"cmbAutocalibration", "cmbManualCalibration", "cmbConfiguration",
                            "cmbReadExposureCounters", "cmbClose"}) {
        SCOPED_TRACE(key);
        ASSERT_TRUE(hand().press(machine.console(key)));
        hand().release(machine.console(key), false);
        machine.wait(3000);
        EXPECT_TRUE(machine.console("cmbClose").enabled()) << "nothing was begun";
        ASSERT_TRUE(hand().press(machine.console(key)));
        machine.hear("ST3");
        hand().release(machine.console(key));
        machine.wait(6000);
        EXPECT_FALSE(open("SelWSAutocal") || open("SelWSCal") || open("Error"));
        EXPECT_FALSE(machine.console("lblHelp").visible());
        EXPECT_TRUE(machine.memory.desktop.boxes().empty()) << "the hold goes on";
        EXPECT_FALSE(machine.application->ended());
        machine.hear("ST1\rST2");
        machine.wait(20000);
        ASSERT_TRUE(machine.console(key).enabled());
    }
}

using ErrorBehindPanel = TwoHands;

// A panel gives the keys back as it found them. An error that came up meanwhile blocks every way out, so its
// reset must be in reach whatever the panel remembers.
TEST_F(ErrorBehindPanel, CanBeReset) {
    machine.console("cmbResetError").setEnabled(false);
    ASSERT_TRUE(hand().click(machine.console("cmbConfiguration")));
    machine.wait(4000);
    ControlHost* panel = machine.application->console().keyed("Error");
    ASSERT_NE(panel, nullptr);
    machine.hear("ER12");
    ASSERT_TRUE(hand().click((*panel)["cmbOK"]));
    ASSERT_EQ(machine.console("lblError").caption(), "12");
    EXPECT_TRUE(hand().click(machine.console("cmbResetError")));
    EXPECT_EQ(machine.console("lblError").caption(), "");
}

} // namespace
} // namespace quillon
