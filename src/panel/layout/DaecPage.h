#pragma once

#include <array>

#include "panel/layout/StepKeys.h"
#include "ui/ControlTable.h"

namespace quillon {

inline constexpr std::string_view kDaecPage = "fraMainMenuItem(2)";

/// Automatic exposure control of the digital modes.
inline constexpr auto kDaecPageRows = std::to_array<ControlRow>({
    // clang-format off
    {Kind::Frame,  "fraMainMenuItem",     2, "", {60, 1800, 4800, 4290}, 8, "", false},
    choice({Kind::Button, "cmbDigitalAEC",      -1, kDaecPage, {60, 375, 2310, 1020}, 10, "AEC"}),
    choice({Kind::Button, "cmbPhotomultiplier", -1, kDaecPage, {2430, 375, 2310, 1020}, 10, "Photomultiplier"}),
    downKey("cmbDAECDensityDown", kDaecPage, {60, 1680, 435, 1065}),
    {Kind::Frame,  "fraDensity",          1, kDaecPage, {540, 1455, 3720, 1350}, 8, "Density"},
    choice({Kind::Button, "cmbDAECDensity",      0, "fraDensity(1)", {60, 225, 345, 1065}, 10, "-4"}),
    choice({Kind::Button, "cmbDAECDensity",      1, "fraDensity(1)", {465, 225, 345, 1065}, 10, "-3"}),
    choice({Kind::Button, "cmbDAECDensity",      2, "fraDensity(1)", {870, 225, 345, 1065}, 10, "-2"}),
    choice({Kind::Button, "cmbDAECDensity",      3, "fraDensity(1)", {1275, 225, 345, 1065}, 10, "-1"}),
    choice({Kind::Button, "cmbDAECDensity",      4, "fraDensity(1)", {1680, 225, 345, 1065}, 10, "0"}),
    choice({Kind::Button, "cmbDAECDensity",      5, "fraDensity(1)", {2085, 225, 345, 1065}, 10, "+1"}),
    choice({Kind::Button, "cmbDAECDensity",      6, "fraDensity(1)", {2490, 225, 345, 1065}, 10, "+2"}),
    choice({Kind::Button, "cmbDAECDensity",      7, "fraDensity(1)", {2895, 225, 345, 1065}, 10, "+3"}),
    choice({Kind::Button, "cmbDAECDensity",      8, "fraDensity(1)", {3300, 225, 345, 1065}, 10, "+4"}),
    upKey("cmbDAECDensityUp", kDaecPage, {4305, 1680, 435, 1065}),
    {Kind::Frame,  "fraBrightness",       1, kDaecPage, {60, 2865, 4680, 1350}, 8, "Brightness"},
    downKey("cmbDAECBrightnessDown", "fraBrightness(1)", {60, 225, 1480, 1065}),
    field({Kind::Label,  "txtDAECBrightness",  -1, "fraBrightness(1)", {1600, 225, 1480, 1065}, 20, ""}),
    upKey("cmbDAECBrightnessUp", "fraBrightness(1)", {3140, 225, 1480, 1065}),
    // clang-format on
});

} // namespace quillon
