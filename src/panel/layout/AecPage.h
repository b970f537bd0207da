#pragma once

#include <array>

#include "panel/layout/StepKeys.h"
#include "ui/ControlTable.h"

namespace quillon {

inline constexpr std::string_view kAecPage = "fraMainMenuItem(1)";

/// Automatic exposure control with film.
inline constexpr auto kAecPageRows = std::to_array<ControlRow>({
    // clang-format off
    {Kind::Frame,  "fraMainMenuItem",    1, "", {60, 1800, 4800, 4290}, 8, "", false},
    {Kind::Label,  "lblAECAreas",        0, kAecPage, {60, 60, 2280, 285}, 10, "Areas"},
    toggle({Kind::Button, "cmbAECFieldLeft",    0, kAecPage, {60, 375, 740, 1020}, 10, "Left"}),
    toggle({Kind::Button, "cmbAECFieldCenter",  0, kAecPage, {830, 375, 740, 1020}, 10, "Center"}),
    toggle({Kind::Button, "cmbAECFieldRight",   0, kAecPage, {1600, 375, 740, 1020}, 10, "Right"}),
    {Kind::Label,  "lblAECFilmScreen",  -1, kAecPage, {2460, 60, 2280, 285}, 10, "Film Screen"},
    choice({Kind::Button, "cmbAECFilmScreen",   0, kAecPage, {2460, 375, 740, 1020}, 10, "Slow"}),
    choice({Kind::Button, "cmbAECFilmScreen",   1, kAecPage, {3230, 375, 740, 1020}, 10, "Medium"}),
    choice({Kind::Button, "cmbAECFilmScreen",   2, kAecPage, {4000, 375, 740, 1020}, 10, "Fast"}),
    {Kind::Frame,  "fraDensity",         0, kAecPage, {60, 1455, 4680, 1350}, 8, "Density"},
    downKey("cmbAECDensityDown", "fraDensity(0)", {60, 225, 435, 1065}),
    choice({Kind::Button, "cmbAECDensity",      0, "fraDensity(0)", {540, 225, 345, 1065}, 10, "-4"}),
    choice({Kind::Button, "cmbAECDensity",      1, "fraDensity(0)", {942, 225, 345, 1065}, 10, "-3"}),
    choice({Kind::Button, "cmbAECDensity",      2, "fraDensity(0)", {1344, 225, 345, 1065}, 10, "-2"}),
    choice({Kind::Button, "cmbAECDensity",      3, "fraDensity(0)", {1746, 225, 345, 1065}, 10, "-1"}),
    choice({Kind::Button, "cmbAECDensity",      4, "fraDensity(0)", {2148, 225, 345, 1065}, 10, "0"}),
    choice({Kind::Button, "cmbAECDensity",      5, "fraDensity(0)", {2550, 225, 345, 1065}, 10, "+1"}),
    choice({Kind::Button, "cmbAECDensity",      6, "fraDensity(0)", {2952, 225, 345, 1065}, 10, "+2"}),
    choice({Kind::Button, "cmbAECDensity",      7, "fraDensity(0)", {3354, 225, 345, 1065}, 10, "+3"}),
    choice({Kind::Button, "cmbAECDensity",      8, "fraDensity(0)", {3756, 225, 345, 1065}, 10, "+4"}),
    upKey("cmbAECDensityUp", "fraDensity(0)", {4185, 225, 435, 1065}),
    {Kind::Frame,  "fraBrightness",      0, kAecPage, {60, 2865, 4680, 1350}, 8, "Brightness"},
    downKey("cmbAECBrightnessDown", "fraBrightness(0)", {60, 225, 1480, 1065}),
    field({Kind::Label,  "txtAECBrightness",  -1, "fraBrightness(0)", {1600, 225, 1480, 1065}, 20, ""}),
    upKey("cmbAECBrightnessUp", "fraBrightness(0)", {3140, 225, 1480, 1065}),
    // clang-format on
});

} // namespace quillon
