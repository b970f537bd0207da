#pragma once

#include <array>

#include "panel/layout/StepKeys.h"
#include "ui/ControlTable.h"

namespace quillon {

inline constexpr std::string_view kFluoroPage = "fraMainMenuItem(3)";

/// Fluoroscopy.
inline constexpr auto kFluoroPageRows = std::to_array<ControlRow>({
    // clang-format off
    {Kind::Frame,  "fraMainMenuItem",      3, "", {60, 1710, 4800, 4440}, 8, "", false},
    {Kind::Label,  "lblPPS",              -1, kFluoroPage, {60, 90, 900, 240}, 10, "PPS"},
    upKey("cmbFlPPSUp", kFluoroPage, {60, 360, 900, 600}),
    {Kind::Label,  "txtFlPPS",            -1, kFluoroPage, {60, 1020, 900, 420}, 16, ""},
    downKey("cmbFlPPSDown", kFluoroPage, {60, 1500, 900, 600}),
    {Kind::Label,  "lblKVP_FL",           -1, kFluoroPage, {1005, 90, 900, 240}, 10, "kVp"},
    upKey("cmbFlKVPUp", kFluoroPage, {1005, 360, 900, 600}),
    {Kind::Label,  "txtFlKVP",            -1, kFluoroPage, {1005, 1020, 900, 420}, 16, ""},
    downKey("cmbFlKVPDown", kFluoroPage, {1005, 1500, 900, 600}),
    {Kind::Label,  "lblMA_FL",            -1, kFluoroPage, {1950, 90, 900, 240}, 10, "mA"},
    upKey("cmbFlMAUp", kFluoroPage, {1950, 360, 900, 600}),
    {Kind::Label,  "txtFlMA",             -1, kFluoroPage, {1950, 1020, 900, 420}, 16, ""},
    downKey("cmbFlMADown", kFluoroPage, {1950, 1500, 900, 600}),
    {Kind::Label,  "lblFlContrast",       -1, kFluoroPage, {2895, 90, 900, 240}, 10, "Contrast"},
    upKey("cmbContrastUp", kFluoroPage, {2895, 360, 900, 600}),
    {Kind::Label,  "txtFlContrast",       -1, kFluoroPage, {2895, 1020, 900, 420}, 16, ""},
    downKey("cmbContrastDown", kFluoroPage, {2895, 1500, 900, 600}),
    upKey("cmbKVPTrackingUp", kFluoroPage, {3840, 360, 900, 600}),
    {Kind::Label,  "txtFlKVPTracking",    -1, kFluoroPage, {3840, 1020, 900, 420}, 16, ""},
    downKey("cmbKVPTrackingDown", kFluoroPage, {3840, 1500, 900, 600}),
    {Kind::Button, "cmbFlPPSNext",        -1, kFluoroPage, {60, 2190, 900, 510}, 10, "Next"},
    {Kind::Button, "cmbFlContinuous",     -1, kFluoroPage, {60, 2760, 900, 510}, 8, "Continuous"},
    {Kind::Label,  "lblFlMag",            -1, kFluoroPage, {1005, 2460, 2790, 240}, 10, "Magnification"},
    {Kind::Button, "cmbFlMag",             0, kFluoroPage, {1005, 2760, 660, 510}, 8, "Normal"},
    {Kind::Button, "cmbFlMag",             1, kFluoroPage, {1715, 2760, 660, 510}, 8, "MAG1"},
    {Kind::Button, "cmbFlMag",             2, kFluoroPage, {2425, 2760, 660, 510}, 8, "MAG2"},
    {Kind::Button, "cmbFlMag",             3, kFluoroPage, {3135, 2760, 660, 510}, 8, "MAG3"},
    {Kind::Button, "cmbFlKVPTracking",    -1, kFluoroPage, {3840, 2190, 900, 510}, 8, "KVP Tracking"},
    {Kind::Label,  "lblTime",             -1, kFluoroPage, {60, 3450, 900, 240}, 10, "Time"},
    {Kind::Label,  "txtFlTime",           -1, kFluoroPage, {60, 3720, 900, 510}, 14, ""},
    {Kind::Button, "cmdFlResetTime",      -1, kFluoroPage, {1005, 3720, 900, 510}, 10, "Reset"},
    {Kind::Label,  "lblABS",              -1, kFluoroPage, {1950, 3450, 900, 240}, 10, "ABS"},
    {Kind::Button, "cmbToggleABS",        -1, kFluoroPage, {1950, 3720, 900, 510}, 10, "Toggle"},
    {Kind::Label,  "lblFlHighDose",       -1, kFluoroPage, {2895, 3450, 435, 240}, 10, "High"},
    {Kind::Label,  "Label1",              -1, kFluoroPage, {3360, 3450, 435, 240}, 10, "Dose"},
    {Kind::Button, "cmbFlHighDose",       -1, kFluoroPage, {2895, 3720, 900, 510}, 10, "Toggle"},
    {Kind::Label,  "Label3",              -1, kFluoroPage, {3840, 3450, 900, 240}, 10, "Alarm"},
    {Kind::Button, "cmbFluoroAlarmReset", -1, kFluoroPage, {3840, 3720, 900, 510}, 10, "Toggle"},
    // clang-format on
});

} // namespace quillon
