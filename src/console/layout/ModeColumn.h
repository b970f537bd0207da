#pragma once

#include <array>

#include "ui/ControlTable.h"

namespace quillon {

/// The column of mode keys on the right.
inline constexpr auto kModeColumnRows = std::to_array<ControlRow>({
    // clang-format off
    {Kind::Frame, "fraActualExposureParameters", -1, "", {9240, 60, 2700, 900}, 9,
     "Actual Exposure Parameters", false},
    field({Kind::Label, "lblActKVP", -1, "fraActualExposureParameters", {60, 255, 765, 285}, 11, ""}),
    {Kind::Label, "lblUnitKVP", -1, "fraActualExposureParameters", {825, 255, 495, 285}, 10, "kVp"},
    field({Kind::Label, "lblActMA", -1, "fraActualExposureParameters", {1380, 255, 765, 285}, 11, ""}),
    {Kind::Label, "lblUnitMA", -1, "fraActualExposureParameters", {2145, 255, 495, 285}, 10, "mA"},
    field({Kind::Label, "lblActMS", -1, "fraActualExposureParameters", {60, 555, 765, 285}, 11, ""}),
    {Kind::Label, "lblUnitMS", -1, "fraActualExposureParameters", {825, 555, 495, 285}, 10, "ms"},
    field({Kind::Label, "lblActMAS", -1, "fraActualExposureParameters", {1380, 555, 765, 285}, 11, ""}),
    {Kind::Label, "lblUnitMAS", -1, "fraActualExposureParameters", {2145, 555, 495, 285}, 10, "mAs"},
    {Kind::Frame, "fraPrepExp", -1, "", {9240, 1020, 2700, 900}, 10, ""},
    lamp({Kind::Button, "cmdPrep", -1, "fraPrepExp", {60, 75, 1260, 750}, 10, "", true, "preparation"}),
    lamp({Kind::Button, "cmdExposure", -1, "fraPrepExp", {1380, 75, 1260, 750}, 10, "", true, "exposure"}),
    {Kind::Button, "cmbClose", -1, "", {9240, 1980, 2700, 840}, 13, "Close"},
    choice({Kind::Button, "cmbReadExposureCounters", -1, "", {9240, 2865, 2700, 840}, 13, "Read Exposure Counters"}),
    choice({Kind::Button, "cmbConfiguration", -1, "", {9240, 3750, 2700, 840}, 13, "Configuration"}),
    choice({Kind::Button, "cmbManualCalibration", -1, "", {9240, 4635, 2700, 840}, 13, "Manual Calibration"}),
    choice({Kind::Button, "cmbAutocalibration", -1, "", {9240, 5520, 2700, 840}, 13, "Auto Calibration"}),
    {Kind::Button, "cmbGoToUserMode", -1, "", {9240, 5520, 2700, 840}, 13, "Go to User Mode", false},
    {Kind::Button, "cmbResetError", -1, "", {9240, 6405, 1860, 840}, 13, "RESET ERROR"},
    alarm({Kind::Label, "lblError", -1, "", {11160, 6405, 780, 840}, 16, ""}),
    // One place for three: the prompt in front, then the words of an error, then the versions.
    left({Kind::Label, "lblSoftwareVersion", -1, "", {9240, 7290, 2700, 1680}, 10, ""}),
    left(alarm({Kind::Label, "lblErrorDescription", -1, "", {9240, 7290, 2700, 1680}, 12, "", false})),
    prompt({Kind::Label, "lblHelp", -1, "", {9240, 7290, 2700, 1680}, 14, ""}),
    // clang-format on
});

} // namespace quillon
