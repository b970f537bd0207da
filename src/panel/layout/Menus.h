#pragma once

#include <array>

#include "ui/ControlTable.h"

namespace quillon {

/// The workstation keys and the two menus. The service menu takes the place of the main one.
inline constexpr auto kMenuRows = std::to_array<ControlRow>({
    // clang-format off
    choice({Kind::Button, "cmbWS",               0, "", {90, 1275, 540, 480}, 9, "WS1"}),
    choice({Kind::Button, "cmbWS",               1, "", {690, 1275, 540, 480}, 9, "WS2"}),
    choice({Kind::Button, "cmbWS",               2, "", {1290, 1275, 540, 480}, 9, "WS3"}),
    choice({Kind::Button, "cmbWS",               3, "", {1890, 1275, 540, 480}, 9, "WS4"}),
    choice({Kind::Button, "cmbWS",               4, "", {2490, 1275, 540, 480}, 9, "WS5"}),
    choice({Kind::Button, "cmbWS",               5, "", {3090, 1275, 540, 480}, 9, "WS6"}),
    choice({Kind::Button, "cmbWS",               6, "", {3690, 1275, 540, 480}, 9, "WS7"}),
    choice({Kind::Button, "cmbWS",               7, "", {4290, 1275, 540, 480}, 9, "WS8"}),
    {Kind::Frame,  "fraMainMenu",        -1, "", {60, 6150, 4800, 750}, 8, " Main Menu "},
    choice({Kind::Button, "cmbMainMenu",         0, "fraMainMenu", {60, 225, 900, 480}, 10, "RAD"}),
    choice({Kind::Button, "cmbMainMenu",         1, "fraMainMenu", {1005, 225, 900, 480}, 10, "AEC"}),
    choice({Kind::Button, "cmbMainMenu",         2, "fraMainMenu", {1950, 225, 900, 480}, 10, "DAEC"}),
    choice({Kind::Button, "cmbMainMenu",         3, "fraMainMenu", {2895, 225, 900, 480}, 10, "Fluoro"}),
    {Kind::Button, "cmbGotoServiceMenu", -1, "fraMainMenu", {3840, 225, 900, 480}, 10, "Service"},
    {Kind::Frame,  "fraServiceMenu",     -1, "", {60, 6150, 4800, 750}, 8, " Service Menu  ", false},
    choice({Kind::Button, "cmbServiceMenu",      0, "fraServiceMenu", {60, 225, 1125, 480}, 9, "Configuration"}),
    choice({Kind::Button, "cmbServiceMenu",      1, "fraServiceMenu", {1245, 225, 1125, 480}, 9, "Calibration"}),
    choice({Kind::Button, "cmbServiceMenu",      2, "fraServiceMenu", {2430, 225, 1125, 480}, 9, "Comm"}),
    {Kind::Button, "cmbGotoMainMenu",    -1, "fraServiceMenu", {3615, 225, 1125, 480}, 9, "Main"},
    // clang-format on
});

/// What lies on the surface beside the frames. The icon covers everything once the panel is too small.
inline constexpr auto kPanelSurfaceRows = std::to_array<ControlRow>({
    // clang-format off
    {Kind::Frame,  "fraMainMenuItem",      4, "", {60, 1800, 4800, 4290}, 8, "", false},
    {Kind::List,   "lstExtendedPosition", -1, "", {60, 1800, 900, 450}, 8, "", false},
    {Kind::Button, "Iconized",            -1, "", {0, 0, 1020, 690}, 8, "Torvane Serial", false},
    // clang-format on
});

} // namespace quillon
