#include "console/Standing.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

template <std::size_t N, typename Value> std::string word(const char* const (&words)[N], Value value) {
    return std::string(" ") + words[static_cast<std::size_t>(value)];
}

std::string letters(Keys keys) {
    std::string all = " ";
    keys.each([&all](Key key) { all += "CMARUXEF"[static_cast<std::size_t>(key)]; });
    return all;
}

/// In the order: area, page, in reach, shown, lit, caption, words, positioner.
std::string told(const StandingRow& row) {
    return std::string(row.name) + ":" + word({"picture", "link"}, row.area) +
           word({"left", "main", "conf", "cal"}, row.page) + letters(row.inReach) + letters(row.shown) +
           letters(row.lit) + word({"stays", "Close", "Exit"}, row.caption) +
           word({"left", "none", "lost", "powering", "question", "expose", "error", "ok"}, row.words) +
           word({"left", "shown", "hidden"}, row.positioner);
}

TEST(Standing, ShowsWhereTheGeneratorStands) {
    using enum Phase;
    constexpr auto kNot = ExposureRequest::None;
    constexpr auto kStands = ExposureRequest::Stands;
    constexpr auto kOver = ExposureRequest::Over;
    // clang-format off
    const std::pair<Heard, const char*> rows[] = {
        // mode          phase            lost   power  lent   exposures unheard
        {{None,            Initialization,  false, false, false, kNot,    false}, "nothing heard: picture left X CMAR  Close left left"},
        {{None,            ConfirmDismiss,  false, false, false, kNot,    false}, "asking: link cal XF CMAR  Close question hidden"},
        {{None,            RadExposure,     false, false, false, kNot,    false}, "nothing heard: picture left  CMAR  Close left left"},
        {{NormalOperation, Initialization,  true,  false, false, kNot,    false}, "lost: picture left XE CMAR  stays lost shown"},
        {{Calibration,     Initialization,  true,  false, false, kNot,    false}, "lost: picture left XE CMAR  stays lost left"},
        {{Calibration,     Initialization,  true,  false, false, kNot,    true}, "lost: picture left XE CMAR  Close lost left"},
        {{NormalOperation, Initialization,  false, true,  false, kNot,    false}, "powering up: picture left X CMAR  Close powering shown"},
        {{Configuration,   Initialization,  false, true,  true,  kNot,    false}, "powering up: picture left X CMAR  Close powering left"},
        {{NormalOperation, NormalOperation, false, false, false, kNot,    false}, "Ready: picture left MX CMAR  Close none shown"},
        {{NormalOperation, Error,           false, false, false, kNot,    false}, "Ready: picture left X CMAR  Close none shown"},
        {{NormalOperation, RadExposure,     false, false, false, kNot,    false}, "Ready: picture left  CMAR  Close none shown"},
        {{NormalOperation, ConfirmDismiss,  false, false, false, kNot,    false}, "asking: link cal XF CMAR  Close question hidden"},
        {{NormalOperation, NormalOperation, false, false, true,  kNot,    false}, "with its users: link main MXF MU U stays none hidden"},
        {{NormalOperation, Error,           false, false, true,  kNot,    false}, "with its users: link main MXF MU U stays none hidden"},
        {{NormalOperation, RadExposure,     false, false, true,  kNot,    false}, "with its users: link main F MU U stays none hidden"},
        {{Calibration,     Calibration,     false, false, false, kNot,    false}, "calibration: link cal MUXF MU M Exit none hidden"},
        {{Calibration,     RadExposure,     false, false, false, kNot,    false}, "calibration: link cal F MU M Exit none hidden"},
        {{Calibration,     ConfirmDismiss,  false, false, false, kNot,    false}, "calibration: link cal MUXF MU M Exit question hidden"},
        {{Configuration,   Configuration,   false, false, false, kNot,    false}, "configuration: link conf CXF CMAR C Exit none hidden"},
        {{Autocalibration, Autocalibration, false, false, false, kStands, false}, "autocalibration: link cal AXF CMAR A Exit expose hidden"},
        {{Autocalibration, Autocalibration, false, false, false, kNot,    false}, "autocalibration: link cal AXF CMAR A Exit none hidden"},
        {{Autocalibration, Autocalibration, false, false, false, kOver,   false}, "autocalibration: link cal AXF CMAR  Exit none hidden"},
        {{Autocalibration, Error,           false, false, false, kStands, false}, "autocalibration: link cal AXF CMAR A Exit none hidden"},
        {{Autocalibration, RadExposure,     false, false, false, kStands, false}, "autocalibration: link cal F CMAR A Exit left hidden"},
        {{Autocalibration, ConfirmDismiss,  false, false, false, kStands, false}, "autocalibration: link cal AXF CMAR A Exit question hidden"},
        {{Autocalibration, AutocalOk,       false, false, false, kStands, false}, "autocalibration: link cal AXF CMAR A Exit ok hidden"},
        {{Autocalibration, AutocalError,    false, false, false, kOver,   false}, "autocalibration: link cal AXF CMAR  Exit error hidden"},
    };
    // clang-format on
    for (const auto& [heard, stands] : rows) {
        EXPECT_EQ(told(standingOf(heard)), stands);
    }
}

} // namespace
} // namespace quillon
