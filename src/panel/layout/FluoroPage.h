#pragma once

#include <array>

#include "panel/layout/StepKeys.h"
#include "ui/ControlTable.h"

namespace quillon {

inline constexpr std::string_view kFluoroPage = "fraMainMenuItem(3)";

/// Fluoroscopy.
inline constexpr auto kFluoroPageRows = std::to_array<ControlRow>({
    // clang-format off
    {Kind::Frame,  "fraMainMenuItem",      3, "", {60, 1800, 4800, 4290}, 8, "", false},
    {Kind::Label,  "lblPPS",              -1, kFluoroPage, {60, 60, 900, 285}, 10, "PPS"},
    upKey("cmbFlPPSUp", kFluoroPage, {60, 375, 900, 585}),
    field({Kind::Label,  "txtFlPPS",            -1, kFluoroPage, {60, 990, 900, 420}, 16, ""}),
    downKey("cmbFlPPSDown", kFluoroPage, {60, 1440, 900, 585}),
    {Kind::Label,  "lblKVP_FL",           -1, kFluoroPage, {1005, 60, 900, 285}, 10, "kVp"},
    upKey("cmbFlKVPUp", kFluoroPage, {1005, 375, 900, 585}),
    field({Kind::Label,  "txtFlKVP",            -1, kFluoroPage, {1005, 990, 900, 420}, 16, ""}),
    downKey("cmbFlKVPDown", kFluoroPage, {1005, 1440, 900, 585}),
    {Kind::Label,  "lblMA_FL",            -1, kFluoroPage, {1950, 60, 900, 285}, 10, "mA"},
    upKey("cmbFlMAUp", kFluoroPage, {1950, 375, 900, 585}),
    field({Kind::Label,  "txtFlMA",             -1, kFluoroPage, {1950, 990, 900, 420}, 16, ""}),
    downKey("cmbFlMADown", kFluoroPage, {1950, 1440, 900, 585}),
    {Kind::Label,  "lblFlContrast",       -1, kFluoroPage, {2895, 60, 900, 285}, 10, "Contrast"},
    upKey("cmbContrastUp", kFluoroPage, {2895, 375, 900, 585}),
    field({Kind::Label,  "txtFlContrast",       -1, kFluoroPage, {2895, 990, 900, 420}, 16, ""}),
    downKey("cmbContrastDown", kFluoroPage, {2895, 1440, 900, 585}),
    upKey("cmbKVPTrackingUp", kFluoroPage, {3840, 375, 900, 585}),
    offWhenEmpty(field({Kind::Label,  "txtFlKVPTracking",    -1, kFluoroPage, {3840, 990, 900, 420}, 16, ""})),
    downKey("cmbKVPTrackingDown", kFluoroPage, {3840, 1440, 900, 585}),
    {Kind::Button, "cmbFlPPSNext",        -1, kFluoroPage, {60, 2085, 900, 510}, 10, "Next"},
    toggle({Kind::Button, "cmbFlContinuous",     -1, kFluoroPage, {60, 2655, 900, 510}, 9, "Continuous"}),
    {Kind::Label,  "lblFlMag",            -1, kFluoroPage, {1005, 2340, 2790, 285}, 10, "Magnification"},
    choice({Kind::Button, "cmbFlMag",             0, kFluoroPage, {1005, 2655, 660, 510}, 9, "Normal"}),
    choice({Kind::Button, "cmbFlMag",             1, kFluoroPage, {1715, 2655, 660, 510}, 9, "MAG1"}),
    choice({Kind::Button, "cmbFlMag",             2, kFluoroPage, {2425, 2655, 660, 510}, 9, "MAG2"}),
    choice({Kind::Button, "cmbFlMag",             3, kFluoroPage, {3135, 2655, 660, 510}, 9, "MAG3"}),
    toggle({Kind::Button, "cmbFlKVPTracking",    -1, kFluoroPage, {3840, 2085, 900, 1080}, 10, "KVP Tracking"}),
    {Kind::Label,  "lblTime",             -1, kFluoroPage, {60, 3330, 900, 285}, 10, "Time"},
    field({Kind::Label,  "txtFlTime",           -1, kFluoroPage, {60, 3645, 900, 540}, 14, ""}),
    {Kind::Button, "cmdFlResetTime",      -1, kFluoroPage, {1005, 3645, 900, 540}, 10, "Reset"},
    {Kind::Label,  "lblABS",              -1, kFluoroPage, {1950, 3330, 900, 285}, 10, "ABS"},
    toggle({Kind::Button, "cmbToggleABS",        -1, kFluoroPage, {1950, 3645, 900, 540}, 10, "Toggle"}),
    phraseStart({Kind::Label,  "lblFlHighDose",       -1, kFluoroPage, {2895, 3330, 435, 285}, 10, "High"}),
    phraseEnd({Kind::Label,  "Label1",              -1, kFluoroPage, {3330, 3330, 465, 285}, 10, "Dose"}),
    toggle({Kind::Button, "cmbFlHighDose",       -1, kFluoroPage, {2895, 3645, 900, 540}, 10, "Toggle"}),
    {Kind::Label,  "Label3",              -1, kFluoroPage, {3840, 3330, 900, 285}, 10, "Alarm"},
    {Kind::Button, "cmbFluoroAlarmReset", -1, kFluoroPage, {3840, 3645, 900, 540}, 10, "Toggle"},
    // clang-format on
});

} // namespace quillon
