#include <array>

#include <gtest/gtest.h>

#include "qt/Look.h"
#include "tests/qt/Contrast.h"

namespace quillon {
namespace {

TEST(Contrast, IsMeasuredAsTheEyeSeesIt) {
    EXPECT_NEAR(contrast(Qt::black, Qt::white), 21, 0.01);
    EXPECT_NEAR(contrast(Qt::red, Qt::red), 1, 0.01);
    EXPECT_NEAR(contrast(QColor(0x777777), Qt::white), 4.48, 0.01);
}

TEST(Contrast, TextCanBeReadOnEveryGroundItStandsOn) {
    for (const QRgb ground : {kSurface, kFace, kField, kPressedFace, kLampFace}) {
        EXPECT_GE(contrast(QColor(kInk), QColor(ground)), kReadable) << std::hex << ground;
    }
    for (const Colour ground : {kActiveColour, kErrorFlashColour, kPreparationColour, kExposureColour,
                                kRefusedColour, kWindowColour, kNormalColour, kSurfaceColour}) {
        EXPECT_GE(contrast(QColor(kInk), screenColour(ground)), kReadable) << std::hex << ground;
    }
    for (const QRgb ground : {kSurface, kFace, kField}) {
        EXPECT_GE(contrast(QColor(kMutedInk), QColor(ground)), kReadable) << std::hex << ground;
        EXPECT_GE(contrast(QColor(kAlarmInk), QColor(ground)), kReadable) << std::hex << ground;
    }
    for (const QRgb ground : {kStrongEdge, kAlarmInk, kInk}) {
        EXPECT_GE(contrast(QColor(kField), QColor(ground)), kReadable) << std::hex << ground;
    }
}

TEST(Contrast, OutlinesThatTellSomethingStandOut) {
    constexpr double kVisible = 3;
    EXPECT_GE(contrast(QColor(kEdge), QColor(kSurface)), kVisible);
    EXPECT_GE(contrast(QColor(kActiveMark), screenColour(kActiveColour)), kVisible);
    EXPECT_GE(contrast(QColor(kActiveMark), QColor(kSurface)), kVisible);
    EXPECT_GE(contrast(QColor(kFocusRing), QColor(kFace)), kVisible);
    EXPECT_GE(contrast(QColor(kFocusRing), QColor(kSurface)), kVisible);
}

} // namespace
} // namespace quillon
