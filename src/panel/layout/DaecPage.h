#pragma once

#include <array>

#include "panel/layout/StepKeys.h"
#include "ui/ControlTable.h"

namespace quillon {

inline constexpr std::string_view kDaecPage = "fraMainMenuItem(2)";

/// Automatic exposure control of the digital modes.
inline constexpr auto kDaecPageRows = std::to_array<ControlRow>({
    // clang-format off
    {Kind::Frame,  "fraMainMenuItem",     2, "", {60, 1710, 4800, 4440}, 8, "", false},
    {Kind::Button, "cmbDigitalAEC",      -1, kDaecPage, {60, 360, 2280, 900}, 10, "AEC"},
    {Kind::Button, "cmbPhotomultiplier", -1, kDaecPage, {2460, 360, 2280, 900}, 10, "Photomultiplier"},
    downKey("cmbDAECDensityDown", kDaecPage, {60, 1620, 435, 900}),
    {Kind::Frame,  "fraDensity",          1, kDaecPage, {540, 1350, 3720, 1230}, 8, "Density"},
    {Kind::Button, "cmbDAECDensity",      0, "fraDensity(1)", {60, 270, 345, 900}, 10, "-4"},
    {Kind::Button, "cmbDAECDensity",      1, "fraDensity(1)", {465, 270, 345, 900}, 10, "-3"},
    {Kind::Button, "cmbDAECDensity",      2, "fraDensity(1)", {870, 270, 345, 900}, 10, "-2"},
    {Kind::Button, "cmbDAECDensity",      3, "fraDensity(1)", {1275, 270, 345, 900}, 10, "-1"},
    {Kind::Button, "cmbDAECDensity",      4, "fraDensity(1)", {1680, 270, 345, 900}, 10, "0"},
    {Kind::Button, "cmbDAECDensity",      5, "fraDensity(1)", {2085, 270, 345, 900}, 10, "+1"},
    {Kind::Button, "cmbDAECDensity",      6, "fraDensity(1)", {2490, 270, 345, 900}, 10, "+2"},
    {Kind::Button, "cmbDAECDensity",      7, "fraDensity(1)", {2895, 270, 345, 900}, 10, "+3"},
    {Kind::Button, "cmbDAECDensity",      8, "fraDensity(1)", {3300, 270, 345, 900}, 10, "+4"},
    upKey("cmbDAECDensityUp", kDaecPage, {4305, 1620, 435, 900}),
    {Kind::Frame,  "fraBrightness",       1, kDaecPage, {60, 2670, 4680, 1230}, 8, "Brightness"},
    downKey("cmbDAECBrightnessDown", "fraBrightness(1)", {60, 270, 1480, 900}),
    {Kind::Label,  "txtDAECBrightness",  -1, "fraBrightness(1)", {1600, 270, 1480, 900}, 20, ""},
    upKey("cmbDAECBrightnessUp", "fraBrightness(1)", {3140, 270, 1480, 900}),
    // clang-format on
});

} // namespace quillon
