#include "qt/SignStrip.h"
#include "screenshots/Scenes.h"
#include "tests/qt/Bench.h"

namespace quillon {
namespace {

/// Without colour: a sign has to show to an operator who can't tell colours apart.
QImage lookOf(Stage& stage, std::string_view name) {
    stage.screen().flush();
    return stage.screen().view(stage.control(name))->grab().toImage().convertToFormat(QImage::Format_Mono);
}

TEST(Signs, AKeyThatWaitsLooksDifferentAtEverySizeAndItsCaptionStays) {
    for (const QSize size : {QSize(640, 480), QSize(1280, 1024)}) {
        const auto stage = sceneNamed("pending-configuration").staged(size);
        const QImage waits = lookOf(*stage, "link.cmbWS(3)");
        const QRect words = stage->screen().view(stage->control("link.cmbWS(3)"))->words()->place;
        stage->wait(5000);
        EXPECT_NE(waits, lookOf(*stage, "link.cmbWS(3)"));
        EXPECT_EQ(words, stage->screen().view(stage->control("link.cmbWS(3)"))->words()->place);
    }
}

TEST(Signs, AValueFromBeforeTheSilenceLooksOldUntilItIsReported) {
    const auto stage = sceneNamed("silence").staged(QSize(640, 480));
    const QImage old = lookOf(*stage, "link.txtMACal");
    stage->report("MA0100");
    EXPECT_NE(lookOf(*stage, "link.txtMACal"), old);
}

TEST(Signs, TheFootAsksForTheTimeOnceASecondWhileItCounts) {
    const auto stage = sceneNamed("silence").staged(QSize(640, 480));
    int asked = 0;
    SignStrip strip(stage->application().form(), stage->application().signs().status,
                    &stage->screen().window());
    strip.onSecond = [&asked] { ++asked; };
    strip.sync(false);
    EXPECT_TRUE(waitFor([&asked] { return asked == 1; }));
    stage->report("ST6");
    strip.sync(false);
    EXPECT_FALSE(waitFor([&asked] { return asked == 2; }, 1200)) << "it answers again";
}

} // namespace
} // namespace quillon
