#pragma once

#include <array>

#include "panel/layout/StepKeys.h"
#include "ui/ControlTable.h"

namespace quillon {

inline constexpr std::string_view kRadPage = "fraMainMenuItem(0)";

/// Direct entry of the technique, the exposure counters and the dose meter.
inline constexpr auto kRadPageRows = std::to_array<ControlRow>({
    // clang-format off
    {Kind::Frame,  "fraMainMenuItem",           0, "", {60, 1800, 4800, 4290}, 8, ""},
    {Kind::Label,  "lblKVP",                   -1, kRadPage, {60, 60, 900, 285}, 10, "kVp"},
    upKey("cmbKVPUp", kRadPage, {60, 375, 900, 585}),
    field({Kind::Label,  "txtKVp",                   -1, kRadPage, {60, 990, 900, 420}, 16, ""}),
    downKey("cmbKVPDown", kRadPage, {60, 1440, 900, 585}),
    {Kind::Label,  "lblMA",                    -1, kRadPage, {1005, 60, 900, 285}, 10, "mA"},
    upKey("cmbMAUp", kRadPage, {1005, 375, 900, 585}),
    field({Kind::Label,  "txtMA",                    -1, kRadPage, {1005, 990, 900, 420}, 16, ""}),
    downKey("cmbMADown", kRadPage, {1005, 1440, 900, 585}),
    {Kind::Label,  "lblMS",                    -1, kRadPage, {1950, 60, 900, 285}, 10, "ms"},
    upKey("cmbMSUp", kRadPage, {1950, 375, 900, 585}),
    field({Kind::Label,  "txtMS",                    -1, kRadPage, {1950, 990, 900, 420}, 16, ""}),
    downKey("cmbMSDown", kRadPage, {1950, 1440, 900, 585}),
    {Kind::Label,  "lblMAS",                   -1, kRadPage, {2895, 60, 900, 285}, 10, "mAs"},
    upKey("cmbMASUp", kRadPage, {2895, 375, 900, 585}),
    field({Kind::Label,  "txtMAS",                   -1, kRadPage, {2895, 990, 900, 420}, 16, ""}),
    downKey("cmbMASDown", kRadPage, {2895, 1440, 900, 585}),
    {Kind::Label,  "lblFocus",                 -1, kRadPage, {3840, 60, 900, 285}, 10, "Focus"},
    field({Kind::Label,  "txtFocus",                 -1, kRadPage, {3840, 990, 900, 420}, 14, ""}),
    {Kind::Button, "cmbToggleFocus",           -1, kRadPage, {3840, 1440, 900, 585}, 10, "Toggle"},
    choice({Kind::Button, "cmbTM",                     0, kRadPage, {60, 2085, 900, 510}, 10, "0P", false}),
    choice({Kind::Button, "cmbTM",                     1, kRadPage, {1005, 2085, 900, 510}, 10, "1P", false}),
    choice({Kind::Button, "cmbTM",                     2, kRadPage, {1950, 2085, 900, 510}, 10, "2P", false}),
    choice({Kind::Button, "cmbTM",                     3, kRadPage, {2895, 2085, 900, 510}, 10, "3P", false}),
    radiation({Kind::Button, "cmdSWExposure",  -1, kRadPage, {3840, 2085, 900, 510}, 10, "Expose", false}),
    warning({Kind::Label, "lblWarning",           -1, kRadPage, {60, 2640, 4680, 285}, 10, "", false}),
    {Kind::Frame,  "fraReadExposureCounter",   -1, kRadPage, {60, 2970, 2310, 1260}, 8, "Exposure Counters"},
    {Kind::List,   "comboReadExposureCounter", -1, "fraReadExposureCounter", {60, 225, 1440, 540}, 10, ""},
    {Kind::Button, "cmbReadExposureCounter",   -1, "fraReadExposureCounter", {1560, 225, 690, 540}, 10,
     "Read"},
    field({Kind::Label,  "txtExposureCounter",       -1, "fraReadExposureCounter", {60, 810, 2190, 390}, 14, ""}),
    {Kind::Frame,  "fraDosemeter",             -1, kRadPage, {2430, 2970, 2310, 1260}, 8,
     "Dosemeter (mGycm2)"},
    {Kind::Button, "cmbDoseLastExposure",      -1, "fraDosemeter", {60, 225, 690, 540}, 8, "Last Exposure"},
    {Kind::Button, "cmbDoseAccumulated",       -1, "fraDosemeter", {810, 225, 900, 540}, 8, "Accumulated"},
    {Kind::Button, "cmbDoseReset",             -1, "fraDosemeter", {1770, 225, 480, 540}, 8, "Reset"},
    field({Kind::Label,  "txtDose",                  -1, "fraDosemeter", {60, 810, 2190, 390}, 14, ""}),
    // clang-format on
});

} // namespace quillon
