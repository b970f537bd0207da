#pragma once

#include <array>

#include "panel/layout/StepKeys.h"
#include "ui/ControlTable.h"

namespace quillon {

inline constexpr std::string_view kRadPage = "fraMainMenuItem(0)";

/// Direct entry of the technique, the exposure counters and the dose meter.
inline constexpr auto kRadPageRows = std::to_array<ControlRow>({
    // clang-format off
    {Kind::Frame,  "fraMainMenuItem",           0, "", {60, 1710, 4800, 4440}, 8, ""},
    {Kind::Label,  "lblKVP",                   -1, kRadPage, {60, 90, 900, 240}, 10, "kVp"},
    upKey("cmbKVPUp", kRadPage, {60, 360, 900, 600}),
    {Kind::Label,  "txtKVp",                   -1, kRadPage, {60, 1020, 900, 420}, 16, ""},
    downKey("cmbKVPDown", kRadPage, {60, 1500, 900, 600}),
    {Kind::Label,  "lblMA",                    -1, kRadPage, {1005, 90, 900, 240}, 10, "mA"},
    upKey("cmbMAUp", kRadPage, {1005, 360, 900, 600}),
    {Kind::Label,  "txtMA",                    -1, kRadPage, {1005, 1020, 900, 420}, 16, ""},
    downKey("cmbMADown", kRadPage, {1005, 1500, 900, 600}),
    {Kind::Label,  "lblMS",                    -1, kRadPage, {1950, 90, 900, 240}, 10, "ms"},
    upKey("cmbMSUp", kRadPage, {1950, 360, 900, 600}),
    {Kind::Label,  "txtMS",                    -1, kRadPage, {1950, 1020, 900, 420}, 16, ""},
    downKey("cmbMSDown", kRadPage, {1950, 1500, 900, 600}),
    {Kind::Label,  "lblMAS",                   -1, kRadPage, {2895, 90, 900, 240}, 10, "mAs"},
    upKey("cmbMASUp", kRadPage, {2895, 360, 900, 600}),
    {Kind::Label,  "txtMAS",                   -1, kRadPage, {2895, 1020, 900, 420}, 16, ""},
    downKey("cmbMASDown", kRadPage, {2895, 1500, 900, 600}),
    {Kind::Label,  "lblFocus",                 -1, kRadPage, {3840, 90, 900, 240}, 10, "Focus"},
    {Kind::Label,  "txtFocus",                 -1, kRadPage, {3840, 1020, 900, 420}, 14, ""},
    {Kind::Button, "cmbToggleFocus",           -1, kRadPage, {3840, 1500, 900, 600}, 10, "Toggle"},
    {Kind::Button, "cmbTM",                     0, kRadPage, {60, 2190, 900, 510}, 10, "0P", false},
    {Kind::Button, "cmbTM",                     1, kRadPage, {1005, 2190, 900, 510}, 10, "1P", false},
    {Kind::Button, "cmbTM",                     2, kRadPage, {1950, 2190, 900, 510}, 10, "2P", false},
    {Kind::Button, "cmbTM",                     3, kRadPage, {2895, 2190, 900, 510}, 10, "3P", false},
    {Kind::Button, "cmdSWExposure",            -1, kRadPage, {3840, 2190, 900, 510}, 10, "Expose", false},
    {Kind::Label,  "lblWarning",               -1, kRadPage, {60, 2760, 4680, 240}, 10, "", false},
    {Kind::Frame,  "fraReadExposureCounter",   -1, kRadPage, {60, 3060, 2310, 1320}, 8, "Exposure Counters"},
    {Kind::List,   "comboReadExposureCounter", -1, "fraReadExposureCounter", {60, 270, 1440, 480}, 10, ""},
    {Kind::Button, "cmbReadExposureCounter",   -1, "fraReadExposureCounter", {1560, 270, 690, 480}, 10,
     "Read"},
    {Kind::Label,  "txtExposureCounter",       -1, "fraReadExposureCounter", {60, 810, 2190, 420}, 14, ""},
    {Kind::Frame,  "fraDosemeter",             -1, kRadPage, {2430, 3060, 2310, 1320}, 8,
     "Dosemeter (mGycm2)"},
    {Kind::Button, "cmbDoseLastExposure",      -1, "fraDosemeter", {60, 270, 780, 480}, 8, "Last Exposure"},
    {Kind::Button, "cmbDoseAccumulated",       -1, "fraDosemeter", {900, 270, 870, 480}, 8, "Accumulated"},
    {Kind::Button, "cmbDoseReset",             -1, "fraDosemeter", {1830, 270, 420, 480}, 8, "Reset"},
    {Kind::Label,  "txtDose",                  -1, "fraDosemeter", {60, 810, 2190, 420}, 14, ""},
    // clang-format on
});

} // namespace quillon
