#pragma once

#include <array>

#include "ui/ControlTable.h"

namespace quillon {

/// The column of mode keys on the right.
inline constexpr auto kModeColumnRows = std::to_array<ControlRow>({
    // clang-format off
    {Kind::Frame, "fraActualExposureParameters", -1, "", {9240, 60, 2700, 900}, 10,
     "Actual Exposure Parameters", false},
    {Kind::Label, "lblActKVP", -1, "fraActualExposureParameters", {60, 255, 720, 285}, 11, ""},
    {Kind::Label, "lblUnitKVP", -1, "fraActualExposureParameters", {810, 255, 480, 285}, 10, "kVp"},
    {Kind::Label, "lblActMA", -1, "fraActualExposureParameters", {1380, 255, 720, 285}, 11, ""},
    {Kind::Label, "lblUnitMA", -1, "fraActualExposureParameters", {2130, 255, 480, 285}, 10, "mA"},
    {Kind::Label, "lblActMS", -1, "fraActualExposureParameters", {60, 555, 720, 285}, 11, ""},
    {Kind::Label, "lblUnitMS", -1, "fraActualExposureParameters", {810, 555, 480, 285}, 10, "ms"},
    {Kind::Label, "lblActMAS", -1, "fraActualExposureParameters", {1380, 555, 720, 285}, 11, ""},
    {Kind::Label, "lblUnitMAS", -1, "fraActualExposureParameters", {2130, 555, 480, 285}, 10, "mAs"},
    {Kind::Frame, "fraPrepExp", -1, "", {9240, 1020, 2700, 1140}, 10, ""},
    {Kind::Button, "cmdPrep", -1, "fraPrepExp", {60, 90, 1260, 990}, 10, "", true, "preparation"},
    {Kind::Button, "cmdExposure", -1, "fraPrepExp", {1380, 90, 1260, 990}, 10, "", true, "exposure"},
    {Kind::Button, "cmbClose", -1, "", {9240, 2220, 2700, 750}, 14, "Close"},
    {Kind::Button, "cmbReadExposureCounters", -1, "", {9240, 3030, 2700, 750}, 14, "Read Exposure Counters"},
    {Kind::Button, "cmbConfiguration", -1, "", {9240, 3840, 2700, 750}, 14, "Configuration"},
    {Kind::Button, "cmbManualCalibration", -1, "", {9240, 4650, 2700, 750}, 14, "Manual Calibration"},
    {Kind::Button, "cmbAutocalibration", -1, "", {9240, 5460, 2700, 750}, 14, "Auto Calibration"},
    {Kind::Button, "cmbGoToUserMode", -1, "", {9240, 5460, 2700, 750}, 14, "Go to User Mode", false},
    {Kind::Button, "cmbResetError", -1, "", {9240, 6270, 1860, 750}, 14, "RESET ERROR"},
    {Kind::Label, "lblError", -1, "", {11160, 6270, 780, 750}, 18, ""},
    // One place for three: the prompt in front, then the words of an error, then the versions.
    {Kind::Label, "lblSoftwareVersion", -1, "", {9240, 7080, 2700, 1890}, 12, ""},
    {Kind::Label, "lblErrorDescription", -1, "", {9240, 7080, 2700, 1890}, 12, "", false},
    {Kind::Label, "lblHelp", -1, "", {9240, 7080, 2700, 1890}, 14, ""},
    // clang-format on
});

} // namespace quillon
