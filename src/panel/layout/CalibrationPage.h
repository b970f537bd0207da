#pragma once

#include <array>

#include "panel/layout/StepKeys.h"
#include "ui/ControlTable.h"

namespace quillon {

inline constexpr std::string_view kCalPage = "fraServiceMenuItem(1)";

/// The calibration of one station or parameter.
inline constexpr auto kCalibrationPageRows = std::to_array<ControlRow>({
    // clang-format off
    {Kind::Frame,  "fraServiceMenuItem",         1, "", {60, 1710, 4800, 4440}, 8, "", false},
    {Kind::Button, "cmbCalibration",            -1, kCalPage, {60, 90, 1125, 510}, 8, "Calibration"},
    {Kind::Button, "cmbAutocalibration",        -1, kCalPage, {1245, 90, 1125, 510}, 8, "AutoCalibration"},
    {Kind::Button, "cmbAutocalConfirm",         -1, kCalPage, {2430, 90, 1125, 510}, 10, "Confirm", false},
    {Kind::Button, "cmbAutocalDismiss",         -1, kCalPage, {3615, 90, 1125, 510}, 10, "Dismiss", false},
    {Kind::Label,  "lblKVPCal",                 -1, kCalPage, {60, 660, 730, 240}, 10, "kVp"},
    upKey("cmbKVPCalUp", kCalPage, {60, 930, 730, 540}),
    {Kind::Label,  "txtKVPCal",                 -1, kCalPage, {60, 1515, 730, 420}, 14, ""},
    downKey("cmbKVPCalDown", kCalPage, {60, 1980, 730, 540}),
    {Kind::Label,  "lblMACal",                  -1, kCalPage, {850, 660, 730, 240}, 10, "mA"},
    upKey("cmbMACalUp", kCalPage, {850, 930, 730, 540}),
    {Kind::Label,  "txtMACal",                  -1, kCalPage, {850, 1515, 730, 420}, 14, ""},
    downKey("cmbMACalDown", kCalPage, {850, 1980, 730, 540}),
    {Kind::Label,  "lblMASCal",                 -1, kCalPage, {1640, 660, 730, 240}, 10, "mAs"},
    upKey("cmbMASCalUp", kCalPage, {1640, 930, 730, 540}),
    {Kind::Label,  "txtMASCal",                 -1, kCalPage, {1640, 1515, 730, 420}, 14, ""},
    downKey("cmbMASCalDown", kCalPage, {1640, 1980, 730, 540}),
    {Kind::Label,  "lblMSCal",                  -1, kCalPage, {2430, 660, 730, 240}, 10, "ms"},
    upKey("cmbMSCalUp", kCalPage, {2430, 930, 730, 540}),
    {Kind::Label,  "txtMSCal",                  -1, kCalPage, {2430, 1515, 730, 420}, 14, ""},
    downKey("cmbMSCalDown", kCalPage, {2430, 1980, 730, 540}),
    {Kind::Label,  "lblFocusCal",               -1, kCalPage, {3220, 660, 730, 240}, 10, "Focus"},
    {Kind::Label,  "txtFocusCal",               -1, kCalPage, {3220, 930, 730, 420}, 10, ""},
    {Kind::Button, "cmbToggleFocusCal",         -1, kCalPage, {3220, 1395, 730, 540}, 10, "Toggle"},
    {Kind::Button, "cmbCalFocusSet",            -1, kCalPage, {3220, 1980, 730, 540}, 8, "Set SFul"},
    {Kind::Button, "cmbToggleFocusConfirm",     -1, kCalPage, {4010, 1395, 730, 540}, 8, "Confirm", false},
    {Kind::Button, "cmbToggleFocusDismiss",     -1, kCalPage, {4010, 1980, 730, 540}, 8, "Dismiss", false},
    {Kind::Frame,  "fraCalValue",               -1, kCalPage, {60, 2610, 4680, 870}, 8, "Calibration Value"},
    downKey("cmbCalValueDown", "fraCalValue", {60, 270, 480, 540}),
    {Kind::Label,  "txtCalValue",               -1, "fraCalValue", {600, 270, 720, 540}, 14, ""},
    upKey("cmbCalValueUp", "fraCalValue", {1380, 270, 480, 540}),
    {Kind::Slider, "sldCalValue",               -1, "fraCalValue", {1920, 270, 1380, 540}, 0, ""},
    {Kind::Button, "cmbSaveCalValue",           -1, "fraCalValue", {3360, 270, 600, 540}, 10, "Read"},
    {Kind::Button, "cmbStoreCalValue",          -1, "fraCalValue", {4020, 270, 600, 540}, 10, "Store"},
    {Kind::Frame,  "fraResetExposureCounter",   -1, kCalPage, {60, 3540, 4680, 840}, 8, "Exposure Counters"},
    {Kind::List,   "comboResetExposureCounter", -1, "fraResetExposureCounter", {60, 270, 2400, 510}, 10, ""},
    {Kind::Button, "cmbResetExposureCounter",   -1, "fraResetExposureCounter", {2520, 270, 2100, 510}, 10,
     "Reset"},
    // clang-format on
});

} // namespace quillon
