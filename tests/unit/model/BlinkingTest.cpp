#include "panel/Blinking.h"

#include <gtest/gtest.h>

#include "panel/layout/PanelControls.h"
#include "runtime/MemoryPlatform.h"

namespace quillon {
namespace {

struct BlinkingTest : testing::Test {
    BlinkingTest() { addPanelControls(panel); }

    [[nodiscard]] Control& errorKey() const { return panel["cmbResetError"]; }
    [[nodiscard]] Control& counterKey() const { return panel["cmbResetExposureCounter"]; }

    VirtualTime time;
    GeneratorState state;
    PanelHost panel{Kind::User, "TorvaneSerial", time.schedule()};
};

TEST_F(BlinkingTest, BothKeysFlashIndependently) {
    const Blinking blinking(state, panel);
    panel.timer("tmrBlink").run();
    state.m_LastError = 5;
    time.advance(500);
    state.m_ExposureCounterResetPending = true;
    time.advance(500);
    EXPECT_EQ(errorKey().backColour(), kNormalColour);
    EXPECT_EQ(counterKey().backColour(), kActiveColour);
    time.advance(500);
    EXPECT_EQ(errorKey().backColour(), kErrorFlashColour);
    EXPECT_EQ(counterKey().backColour(), kNormalColour);
    panel.timer("tmrBlink").stop();
    time.advance(5000);
    EXPECT_EQ(errorKey().backColour(), kErrorFlashColour);
}

} // namespace
} // namespace quillon
