#include <gtest/gtest.h>

#include "FaultyMachine.h"

namespace quillon {
namespace {

/// A console in Ready whose operator has a finger on "Manual Calibration" and taps "Auto Calibration".
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

TEST_F(TwoHands, DoNotBeginTwoThings) {
    ASSERT_TRUE(hand().press(machine.console("cmbManualCalibration")));
    ASSERT_TRUE(hand().click(machine.console("cmbAutocalibration")));
    hand().release(machine.console("cmbManualCalibration"));
    EXPECT_TRUE(open("SelWSAutocal"));
    EXPECT_FALSE(open("SelWSCal"));
}

// One finger's release always arrives, whatever became of its key: nothing may go on by itself.
TEST_F(TwoHands, OneHandAlwaysLetsGo) {
    Control& key = machine.console("cmbManualCalibration");
    ASSERT_TRUE(hand().press(key));
    key.setEnabled(false);
    hand().release(key);
    EXPECT_TRUE(open("SelWSCal"));
}

} // namespace
} // namespace quillon
