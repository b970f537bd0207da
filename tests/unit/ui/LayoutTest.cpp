#include <gtest/gtest.h>

#include "tests/unit/ui/Screen.h"
#include "ui/ControlLock.h"
#include "ui/Input.h"
#include "ui/ScalingLayout.h"

namespace quillon {
namespace {

class ScalingTest : public testing::Test {
protected:
    ScalingTest() {
        screen.key.setPlace({60, 250, 600, 450});
        screen.key.setFontSize(8.25);
        Control& parked = screen.user.add(Kind::Frame, "parked");
        parked.setPlace({-74000, 0, 100, 100});
        screen.user.add(Kind::Button, "Iconized").setPlace({0, 0, 500, 300});
        screen.user.addTimer("tmr", 100);
        layout.record(screen.user, 4920, 6960);
    }

    void size(Twips width, Twips height) {
        screen.user.setPlace({0, 0, width, height});
        layout.apply(screen.user);
    }

    TestScreen screen;
    ScalingLayout layout{{75000, "Iconized"}};
};

TEST_F(ScalingTest, FollowsTheRatioAndTheSmallerOneForFonts) {
    size(9840, 10440);
    EXPECT_EQ(screen.key.place(), (Place{120, 375, 1200, 675}));
    EXPECT_DOUBLE_EQ(screen.key.fontSize(), 12);
}

TEST_F(ScalingTest, RoundingDoesNotAddUp) {
    for (int i = 1; i < 50; ++i) {
        size(4920 - 97 * i, 6960 - 131 * i);
    }
    size(4920, 6960);
    EXPECT_EQ(screen.key.place(), (Place{60, 250, 600, 450}));
    EXPECT_DOUBLE_EQ(screen.key.fontSize(), 8);
}

TEST_F(ScalingTest, KeepsParkedWhatIsParkedAndTheSizeOfOneControl) {
    size(9840, 6960);
    EXPECT_EQ(screen.user["parked"].left(), (-74000 + 75000) * 2 - 75000);
    EXPECT_EQ(screen.user["iconized"].width(), 500);
    EXPECT_EQ(screen.user["iconized"].fontSize(), 8);
}

TEST_F(ScalingTest, LeavesWhatCameLater) {
    Control& later = screen.user.add(Kind::Button, "later");
    later.setPlace({1, 2, 3, 4});
    size(9840, 10440);
    EXPECT_EQ(later.place(), (Place{1, 2, 3, 4}));
}

TEST(ControlLock, KeepsWhatIsWrittenUntilTheLastOneGoes) {
    TestScreen screen;
    Input input;
    Control& off = screen.user.add(Kind::Button, "off");
    off.setEnabled(false);
    ControlLock first({&screen.key, &off, &screen.frame});
    ControlLock second({&off});
    EXPECT_FALSE(screen.key.enabled());
    EXPECT_TRUE(screen.frame.enabled()) << "a frame reads its own";
    EXPECT_FALSE(input.reachable(screen.key)) << "and keeps what lies on it all the same";
    screen.key.setEnabled(false);
    off.setEnabled(true);
    EXPECT_FALSE(off.enabled());
    first.release();
    EXPECT_FALSE(screen.key.enabled());
    EXPECT_FALSE(off.enabled()) << "another lock is on it";
    second = ControlLock();
    EXPECT_TRUE(off.enabled());
    first.release();
    EXPECT_FALSE(off.locked()) << "given back once";
}

} // namespace
} // namespace quillon
