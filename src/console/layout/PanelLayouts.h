#pragma once

#include <array>

#include "ui/ControlTable.h"

namespace quillon {

/// The size to which the rows of a panel refer.
struct PanelSize {
    Twips width;
    Twips height;
};
inline constexpr PanelSize kModalSize{9120, 8475};
inline constexpr PanelSize kErrorSize{6750, 3720};

/// The warning before an autocalibration.
inline constexpr auto kWarningRows = std::to_array<ControlRow>({
    // clang-format off
    {Kind::Picture, "Shape1", -1, "", {120, 120, 8880, 8235}, 0, "", true, "frame"},
    radiation({Kind::Label, "lblWarning1", -1, "", {600, 720, 7920, 1020}, 18,
     "You are about to enter the autocalibration procedure. "}),
    {Kind::Label, "lblWarning2", -1, "", {600, 1980, 7920, 1440}, 18,
     "For mA auto calibration,  it initializes all the calibrated currents for the focus selected. "},
    {Kind::Label, "lblWarning3", -1, "", {600, 3660, 7920, 1440}, 18,
     "For extended memory location auto calibration,  it initializes its value."},
    {Kind::Label, "lblWarning4", -1, "", {600, 5340, 7920, 600}, 18, "Do you want to continue?"},
    radiation({Kind::Button, "cmbAutocalYes", -1, "", {600, 6480, 3720, 1200}, 20, "Yes"}),
    declines({Kind::Button, "cmbAutocalNo", -1, "", {4800, 6480, 3720, 1200}, 20, "No"}),
    // clang-format on
});

/// The choice of what to autocalibrate: a focal spot or a parameter.
inline constexpr auto kSelectFocusRows = std::to_array<ControlRow>({
    // clang-format off
    {Kind::Picture, "Shape1", -1, "", {120, 120, 8880, 8235}, 0, "", true, "frame"},
    title({Kind::Label, "lblSelectFocus", -1, "", {600, 540, 7920, 540}, 16,
     "     Select focus for mA auto calibration"}),
    choice({Kind::Button, "cmbAutocalSmallFocus", -1, "", {600, 1200, 2520, 1200}, 18, "Small"}),
    choice({Kind::Button, "cmbAutocalLargeFocus", -1, "", {3300, 1200, 2520, 1200}, 18, "Large"}),
    {Kind::Button, "cmbOKFocus", -1, "", {6000, 1200, 2520, 1200}, 18, "OK"},
    title({Kind::Label, "lblSelectExtMemory", -1, "", {600, 2820, 7920, 840}, 16,
     "    Or extended memory location for auto calibration"}),
    {Kind::Label, "Label3", -1, "", {600, 3780, 1080, 2520}, 32, "E"},
    field({Kind::Label, "lblAutocalParameter", -1, "", {1740, 3780, 1380, 2520}, 32, "1"}),
    {Kind::Button, "cmbParameterUp", -1, "", {3300, 3780, 2520, 1200}, 18, "Up"},
    {Kind::Button, "cmbParameterDown", -1, "", {3300, 5100, 2520, 1200}, 18, "Down"},
    {Kind::Button, "cmbOKParameter", -1, "", {6000, 5100, 2520, 1200}, 18, "OK"},
    declines({Kind::Button, "cmbCancel", -1, "", {6000, 6720, 2520, 1200}, 18, "Cancel"}),
    // clang-format on
});

/// The choice of a workstation.
inline constexpr auto kSelectWorkstationRows = std::to_array<ControlRow>({
    // clang-format off
    {Kind::Picture, "Shape1",      -1, "", {120, 120, 8880, 8235}, 0, "", true, "frame"},
    title({Kind::Label,   "lblSelectWS", -1, "", {600, 900, 7920, 720}, 24, "Select a Workstation"}),
    {Kind::Label,   "Label3",      -1, "", {600, 2280, 2040, 2520}, 40, "WS"},
    field({Kind::Label,   "lblWS",       -1, "", {2700, 2280, 1680, 2520}, 40, "1"}),
    {Kind::Button,  "cmbWSUp",     -1, "", {4800, 2280, 3720, 1200}, 20, "Up"},
    {Kind::Button,  "cmbWSDown",   -1, "", {4800, 3600, 3720, 1200}, 20, "Down"},
    {Kind::Button,  "cmdOK",       -1, "", {600, 6480, 3720, 1200}, 20, "OK"},
    // clang-format on
});

/// A message that has to be acknowledged.
inline constexpr auto kErrorRows = std::to_array<ControlRow>({
    // clang-format off
    {Kind::Picture, "Shape1", -1, "", {0, 0, 6750, 3720}, 0, "", true, "frame"},
    title({Kind::Label, "myCaption", -1, "", {240, 240, 6270, 420}, 14, ""}),
    alarm({Kind::Label, "lblError", -1, "", {240, 840, 6270, 840}, 14,
     "Please check calibration dip switch\r\nand toggle with power off"}),
    {Kind::Frame, "Frame1", -1, "", {2055, 2040, 2640, 1380}, 10, ""},
    {Kind::Button, "cmbOK", -1, "Frame1", {120, 240, 2400, 1020}, 18, "OK"},
    // clang-format on
});

} // namespace quillon
