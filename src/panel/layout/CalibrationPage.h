#pragma once

#include <array>

#include "panel/layout/StepKeys.h"
#include "ui/ControlTable.h"

namespace quillon {

inline constexpr std::string_view kCalPage = "fraServiceMenuItem(1)";

/// The calibration of one station or parameter.
inline constexpr auto kCalibrationPageRows = std::to_array<ControlRow>({
    // clang-format off
    {Kind::Frame,  "fraServiceMenuItem",         1, "", {60, 1800, 4800, 4290}, 8, "", false},
    toggle({Kind::Button, "cmbCalibration",            -1, kCalPage, {60, 60, 1125, 540}, 8, "Calibration"}),
    toggle({Kind::Button, "cmbAutocalibration",        -1, kCalPage, {1245, 60, 1125, 540}, 8, "AutoCalibration"}),
    radiation({Kind::Button, "cmbAutocalConfirm", -1, kCalPage, {2430, 60, 1125, 540}, 10, "Confirm", false}),
    declines({Kind::Button, "cmbAutocalDismiss", -1, kCalPage, {3615, 60, 1125, 540}, 10, "Dismiss", false}),
    {Kind::Label,  "lblKVPCal",                 -1, kCalPage, {60, 645, 730, 285}, 10, "kVp"},
    upKey("cmbKVPCalUp", kCalPage, {60, 945, 730, 540}),
    field({Kind::Label,  "txtKVPCal",                 -1, kCalPage, {60, 1500, 730, 390}, 14, ""}),
    downKey("cmbKVPCalDown", kCalPage, {60, 1905, 730, 540}),
    {Kind::Label,  "lblMACal",                  -1, kCalPage, {850, 645, 730, 285}, 10, "mA"},
    upKey("cmbMACalUp", kCalPage, {850, 945, 730, 540}),
    field({Kind::Label,  "txtMACal",                  -1, kCalPage, {850, 1500, 730, 390}, 14, ""}),
    downKey("cmbMACalDown", kCalPage, {850, 1905, 730, 540}),
    {Kind::Label,  "lblMSCal",                  -1, kCalPage, {1640, 645, 730, 285}, 10, "ms"},
    upKey("cmbMSCalUp", kCalPage, {1640, 945, 730, 540}),
    field({Kind::Label,  "txtMSCal",                  -1, kCalPage, {1640, 1500, 730, 390}, 14, ""}),
    downKey("cmbMSCalDown", kCalPage, {1640, 1905, 730, 540}),
    {Kind::Label,  "lblMASCal",                 -1, kCalPage, {2430, 645, 730, 285}, 10, "mAs"},
    upKey("cmbMASCalUp", kCalPage, {2430, 945, 730, 540}),
    field({Kind::Label,  "txtMASCal",                 -1, kCalPage, {2430, 1500, 730, 390}, 14, ""}),
    downKey("cmbMASCalDown", kCalPage, {2430, 1905, 730, 540}),
    {Kind::Label,  "lblFocusCal",               -1, kCalPage, {3220, 645, 730, 285}, 10, "Focus"},
    field({Kind::Label,  "txtFocusCal",               -1, kCalPage, {3220, 945, 730, 330}, 10, ""}),
    {Kind::Button, "cmbToggleFocusCal",         -1, kCalPage, {3220, 1305, 730, 540}, 9, "Toggle"},
    {Kind::Button, "cmbCalFocusSet",            -1, kCalPage, {3220, 1905, 730, 540}, 9, "Set SFul"},
    whileOffered({Kind::Button, "cmbToggleFocusConfirm", -1, kCalPage, {4010, 1305, 730, 540}, 9, "Confirm", false}),
    whileOffered(declines({Kind::Button, "cmbToggleFocusDismiss", -1, kCalPage, {4010, 1905, 730, 540}, 9, "Dismiss",
                           false})),
    {Kind::Frame,  "fraCalValue",               -1, kCalPage, {60, 2490, 4680, 855}, 8, "Calibration Value"},
    downKey("cmbCalValueDown", "fraCalValue", {60, 225, 480, 570}),
    field({Kind::Label,  "txtCalValue",               -1, "fraCalValue", {600, 225, 720, 570}, 14, ""}),
    upKey("cmbCalValueUp", "fraCalValue", {1380, 225, 480, 570}),
    {Kind::Slider, "sldCalValue",               -1, "fraCalValue", {1920, 225, 1380, 570}, 0, ""},
    {Kind::Button, "cmbSaveCalValue",           -1, "fraCalValue", {3360, 225, 600, 570}, 10, "Read"},
    {Kind::Button, "cmbStoreCalValue",          -1, "fraCalValue", {4020, 225, 600, 570}, 10, "Store"},
    {Kind::Frame,  "fraResetExposureCounter",   -1, kCalPage, {60, 3390, 4680, 840}, 8, "Exposure Counters"},
    {Kind::List,   "comboResetExposureCounter", -1, "fraResetExposureCounter", {60, 225, 2250, 555}, 10, ""},
    {Kind::Button, "cmbResetExposureCounter",   -1, "fraResetExposureCounter", {2370, 225, 2250, 555}, 10,
     "Reset"},
    // clang-format on
});

} // namespace quillon
