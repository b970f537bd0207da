#include <vector>

#include <gtest/gtest.h>

#include "qt/Look.h"
#include "tests/qt/Contrast.h"

namespace quillon {
namespace {

// Text on the screens is measured in every scene; this is what none of them shows, and what is no text.
TEST(Contrast, SignsCanBeReadAndOutlinesThatTellSomethingStandOut) {
    constexpr double kVisible = 3;
    const QRgb active = screenColour(kActiveColour).rgb();
    const struct {
        double least;
        QRgb ink;
        std::vector<QRgb> grounds;
    } rows[] = {
        {kReadable, kField, {kStrongEdge, kAlarmInk, kInk}},
        {kReadable, kInk, {screenColour(kErrorFlashColour).rgb(), kField, kPressedFace}},
        {kVisible, kEdge, {kSurface}},
        {kVisible, kActiveMark, {kSurface, active}},
        {kVisible, kFocusRing, {kSurface, kFace}},
    };
    for (const auto& [least, ink, grounds] : rows) {
        for (const QRgb ground : grounds) {
            EXPECT_GE(contrast(QColor(ink), QColor(ground)), least) << std::hex << ink << " on " << ground;
        }
    }
}

} // namespace
} // namespace quillon
