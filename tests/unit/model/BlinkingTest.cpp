#include "panel/Blinking.h"

#include "tests/unit/model/LinkFixture.h"

namespace quillon {
namespace {

using BlinkingTest = LinkTest;

TEST_F(BlinkingTest, BothKeysFlashIndependently) {
    const auto lit = [this](std::string_view key, Milliseconds after = 500) {
        advance(after);
        return control(key).backColour() != kNormalColour;
    };
    phase(6);
    link.timer("tmrBlink").run();
    msg("ER5");
    advance(500);
    control("cmbResetExposureCounter").on.release();
    EXPECT_FALSE(lit("cmbResetError"));
    EXPECT_TRUE(lit("cmbResetExposureCounter", 0));
    EXPECT_TRUE(lit("cmbResetError"));
    EXPECT_FALSE(lit("cmbResetExposureCounter", 0));
    // The count that comes ends it at once.
    EXPECT_TRUE(lit("cmbResetExposureCounter"));
    msg("TC00");
    EXPECT_FALSE(lit("cmbResetExposureCounter", 0));
    EXPECT_FALSE(lit("cmbResetExposureCounter"));
    link.timer("tmrBlink").stop();
    EXPECT_TRUE(lit("cmbResetError", 5000));
}

} // namespace
} // namespace quillon
