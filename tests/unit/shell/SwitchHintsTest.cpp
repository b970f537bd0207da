#include "shell/SwitchHints.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillon {
namespace {

TEST(SwitchHints, AreGivenForWhatTheConsoleDoesNotKnow) {
    using testing::ElementsAre;
    EXPECT_THAT(switchHints("-P2 -S9600 -FitToScreen -ResetCounters -ORLA -LOGFILE -swSync -D"),
                ElementsAre());
    EXPECT_THAT(switchHints("-P2-ORLA"), ElementsAre());
    EXPECT_THAT(switchHints("-orla"), ElementsAre("\"-orla\" is no switch; it is written -ORLA"));
    EXPECT_THAT(switchHints("-debug"), ElementsAre("\"-debug\" is no switch, and is taken for -d"));
    EXPECT_THAT(switchHints("--wibble -P2"), ElementsAre("\"-wibble\" is no switch"));
    EXPECT_THAT(switchHints("ORLA"), ElementsAre("\"ORLA\" is no switch: they begin with a hyphen"));
}

} // namespace
} // namespace quillon
