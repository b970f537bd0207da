#include "console/Standing.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace quillon {
namespace {

constexpr auto kNothing = Phase::None;
constexpr auto kReady = Phase::NormalOperation;
constexpr auto kExposure = Phase::RadExposure;
constexpr auto kCal = Phase::Calibration;
constexpr auto kConf = Phase::Configuration;
constexpr auto kAuto = Phase::Autocalibration;
constexpr auto kAsks = Phase::ConfirmDismiss;

std::string letters(Keys keys) {
    constexpr std::string_view kLetters = "CMARUXEF"; // as the keys are numbered
    std::string all;
    keys.each([&](Key key) { all += kLetters[static_cast<std::size_t>(key)]; });
    return all.empty() ? "-" : all;
}

template <std::size_t N, typename Value>
std::string word(const std::array<const char*, N>& words, Value value) {
    return std::string(" ") + words.at(static_cast<std::size_t>(value));
}

/// In the order: area, page, in reach, shown, lit, caption, words, positioner.
std::string told(const StandingRow& row) {
    return std::string(row.name) + ":" + word(std::array{"picture", "link"}, row.area) +
           word(std::array{"left", "main", "conf", "cal"}, row.page) + " " + letters(row.inReach) + " " +
           letters(row.shown) + " " + letters(row.lit) +
           word(std::array{"stays", "Close", "Exit"}, row.caption) +
           word(std::array{"left", "none", "lost", "powering", "question", "expose", "error", "ok"},
                row.words) +
           word(std::array{"left", "shown", "hidden"}, row.positioner);
}

struct Row {
    Heard heard;
    const char* stands;
};

TEST(Standing, ShowsWhereTheGeneratorStands) {
    constexpr auto kNot = ExposureRequest::None;
    constexpr auto kStands = ExposureRequest::Stands;
    constexpr auto kOver = ExposureRequest::Over;
    // clang-format off
    const Row rows[] = {
        //  mode      phase                lost   power  lent   exposures unheard
        {{kNothing, Phase::Initialization, false, false, false, kNot,    false}, "nothing heard: picture left X CMAR - Close left left"},
        {{kNothing, kAsks,                 false, false, false, kNot,    false}, "asking: link cal XF CMAR - Close question hidden"},
        {{kNothing, kExposure,             false, false, false, kNot,    false}, "nothing heard: picture left - CMAR - Close left left"},
        {{kReady,   Phase::Initialization, true,  false, false, kNot,    false}, "lost: picture left XE CMAR - stays lost shown"},
        {{kCal,     Phase::Initialization, true,  false, false, kNot,    false}, "lost: picture left XE CMAR - stays lost left"},
        {{kCal,     Phase::Initialization, true,  false, false, kNot,    true},  "lost: picture left XE CMAR - Close lost left"},
        {{kReady,   Phase::Initialization, false, true,  false, kNot,    false}, "powering up: picture left X CMAR - Close powering shown"},
        {{kConf,    Phase::Initialization, false, true,  true,  kNot,    false}, "powering up: picture left X CMAR - Close powering left"},
        {{kReady,   kReady,                false, false, false, kNot,    false}, "Ready: picture left MX CMAR - Close none shown"},
        {{kReady,   Phase::Error,          false, false, false, kNot,    false}, "Ready: picture left X CMAR - Close none shown"},
        {{kReady,   kExposure,             false, false, false, kNot,    false}, "Ready: picture left - CMAR - Close none shown"},
        {{kReady,   kAsks,                 false, false, false, kNot,    false}, "asking: link cal XF CMAR - Close question hidden"},
        {{kReady,   kReady,                false, false, true,  kNot,    false}, "with its users: link main MXF MU U stays none hidden"},
        {{kReady,   Phase::Error,          false, false, true,  kNot,    false}, "with its users: link main MXF MU U stays none hidden"},
        {{kReady,   kExposure,             false, false, true,  kNot,    false}, "with its users: link main F MU U stays none hidden"},
        {{kCal,     kCal,                  false, false, false, kNot,    false}, "calibration: link cal MUXF MU M Exit none hidden"},
        {{kCal,     kExposure,             false, false, false, kNot,    false}, "calibration: link cal F MU M Exit none hidden"},
        {{kCal,     kAsks,                 false, false, false, kNot,    false}, "calibration: link cal MUXF MU M Exit question hidden"},
        {{kConf,    kConf,                 false, false, false, kNot,    false}, "configuration: link conf CXF CMAR C Exit none hidden"},
        {{kAuto,    kAuto,                 false, false, false, kStands, false}, "autocalibration: link cal AXF CMAR A Exit expose hidden"},
        {{kAuto,    kAuto,                 false, false, false, kNot,    false}, "autocalibration: link cal AXF CMAR A Exit none hidden"},
        {{kAuto,    kAuto,                 false, false, false, kOver,   false}, "autocalibration: link cal AXF CMAR - Exit none hidden"},
        {{kAuto,    Phase::Error,          false, false, false, kStands, false}, "autocalibration: link cal AXF CMAR A Exit none hidden"},
        {{kAuto,    kExposure,             false, false, false, kStands, false}, "autocalibration: link cal F CMAR A Exit left hidden"},
        {{kAuto,    kAsks,                 false, false, false, kStands, false}, "autocalibration: link cal AXF CMAR A Exit question hidden"},
        {{kAuto,    Phase::AutocalOk,      false, false, false, kStands, false}, "autocalibration: link cal AXF CMAR A Exit ok hidden"},
        {{kAuto,    Phase::AutocalError,   false, false, false, kOver,   false}, "autocalibration: link cal AXF CMAR - Exit error hidden"},
    };
    // clang-format on
    for (const Row& row : rows) {
        EXPECT_EQ(told(standingOf(row.heard)), row.stands);
    }
}

} // namespace
} // namespace quillon
