#include <gtest/gtest.h>

#include "FaultyMachine.h"

namespace quillon {
namespace {

// A panel gives the keys back as it found them. An error that came up meanwhile blocks every way out, so its
// reset must be in reach whatever the panel remembers.
TEST(ErrorBehindPanel, CanBeReset) {
    FaultyMachine machine;
    machine.start();
    machine.hear("ST2");
    machine.wait(12000);
    machine.console("cmbResetError").setEnabled(false);
    Input& hand = machine.application->input();
    ASSERT_TRUE(hand.click(machine.console("cmbConfiguration")));
    machine.wait(4000);
    ControlHost* panel = machine.application->console().keyed("Error");
    ASSERT_NE(panel, nullptr);
    machine.hear("ER12");
    ASSERT_TRUE(hand.click((*panel)["cmbOK"]));
    ASSERT_EQ(machine.console("lblError").caption(), "12");
    EXPECT_TRUE(hand.click(machine.console("cmbResetError")));
    EXPECT_EQ(machine.console("lblError").caption(), "");
}

} // namespace
} // namespace quillon
