#pragma once

#include <array>

#include "ui/ControlTable.h"

namespace quillon {

/// The working area: title and picture at rest, the frame of the link control, the keys at its foot.
inline constexpr auto kWorkingAreaRows = std::to_array<ControlRow>({
    // clang-format off
    title({Kind::Label,   "lblQuillonConsole", -1, "", {60, 60, 9120, 900}, 24, "Generator Service Mode"}),
    {Kind::Picture, "imgQuillonConsole", -1, "", {60, 1020, 9120, 4260}, 0, "", true, "rest"},
    {Kind::Frame,   "fraTorvaneSerial",  -1, "", {60, 60, 9120, 8340}, 10, "", false},
    // clang-format on
});

/// Keys at the foot, outside of the frames that they open.
inline constexpr auto kFootRows = std::to_array<ControlRow>({
    // clang-format off
    {Kind::Button, "cmdOrla", -1, "", {60, 8415, 4530, 570}, 11, "Orla Autotracking Calibration", false},
    {Kind::Button, "cmdMultiRoom", -1, "", {4650, 8415, 4530, 570}, 11, "MultiRoom Calibration", false},
    {Kind::Picture, "pctLogo", -1, "", {60, 60, 1200, 900}, 0, "", false},
    {Kind::Button, "cmdSoftwareUpgrade", -1, "", {60, 5340, 2700, 750}, 14, "SoftwareUpgrade", false},
    // clang-format on
});

} // namespace quillon
