#pragma once

#include <array>

#include "panel/layout/StepKeys.h"
#include "ui/ControlTable.h"

namespace quillon {

inline constexpr std::string_view kAecPage = "fraMainMenuItem(1)";

/// Automatic exposure control with film.
inline constexpr auto kAecPageRows = std::to_array<ControlRow>({
    // clang-format off
    {Kind::Frame,  "fraMainMenuItem",    1, "", {60, 1710, 4800, 4440}, 8, "", false},
    {Kind::Label,  "lblAECAreas",        0, kAecPage, {60, 90, 2280, 240}, 10, "Areas"},
    {Kind::Button, "cmbAECFieldLeft",    0, kAecPage, {60, 360, 720, 900}, 10, "Left"},
    {Kind::Button, "cmbAECFieldCenter",  0, kAecPage, {840, 360, 720, 900}, 10, "Center"},
    {Kind::Button, "cmbAECFieldRight",   0, kAecPage, {1620, 360, 720, 900}, 10, "Right"},
    {Kind::Label,  "lblAECFilmScreen",  -1, kAecPage, {2460, 90, 2280, 240}, 10, "Film Screen"},
    {Kind::Button, "cmbAECFilmScreen",   0, kAecPage, {2460, 360, 720, 900}, 10, "Slow"},
    {Kind::Button, "cmbAECFilmScreen",   1, kAecPage, {3240, 360, 720, 900}, 10, "Medium"},
    {Kind::Button, "cmbAECFilmScreen",   2, kAecPage, {4020, 360, 720, 900}, 10, "Fast"},
    {Kind::Frame,  "fraDensity",         0, kAecPage, {60, 1350, 4680, 1230}, 8, "Density"},
    downKey("cmbAECDensityDown", "fraDensity(0)", {60, 270, 420, 900}),
    {Kind::Button, "cmbAECDensity",      0, "fraDensity(0)", {540, 270, 345, 900}, 10, "-4"},
    {Kind::Button, "cmbAECDensity",      1, "fraDensity(0)", {945, 270, 345, 900}, 10, "-3"},
    {Kind::Button, "cmbAECDensity",      2, "fraDensity(0)", {1350, 270, 345, 900}, 10, "-2"},
    {Kind::Button, "cmbAECDensity",      3, "fraDensity(0)", {1755, 270, 345, 900}, 10, "-1"},
    {Kind::Button, "cmbAECDensity",      4, "fraDensity(0)", {2160, 270, 345, 900}, 10, "0"},
    {Kind::Button, "cmbAECDensity",      5, "fraDensity(0)", {2565, 270, 345, 900}, 10, "+1"},
    {Kind::Button, "cmbAECDensity",      6, "fraDensity(0)", {2970, 270, 345, 900}, 10, "+2"},
    {Kind::Button, "cmbAECDensity",      7, "fraDensity(0)", {3375, 270, 345, 900}, 10, "+3"},
    {Kind::Button, "cmbAECDensity",      8, "fraDensity(0)", {3780, 270, 345, 900}, 10, "+4"},
    upKey("cmbAECDensityUp", "fraDensity(0)", {4185, 270, 435, 900}),
    {Kind::Frame,  "fraBrightness",      0, kAecPage, {60, 2670, 4680, 1230}, 8, "Brightness"},
    downKey("cmbAECBrightnessDown", "fraBrightness(0)", {60, 270, 1480, 900}),
    {Kind::Label,  "txtAECBrightness",  -1, "fraBrightness(0)", {1600, 270, 1480, 900}, 20, ""},
    upKey("cmbAECBrightnessUp", "fraBrightness(0)", {3140, 270, 1480, 900}),
    // clang-format on
});

} // namespace quillon
