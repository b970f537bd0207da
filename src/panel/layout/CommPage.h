#pragma once

#include <array>

#include "ui/ControlTable.h"

namespace quillon {

inline constexpr std::string_view kCommPage = "fraServiceMenuItem(2)";

/// The settings of the serial line.
inline constexpr auto kCommPageRows = std::to_array<ControlRow>({
    // clang-format off
    {Kind::Frame,  "fraServiceMenuItem",  2, "", {60, 1800, 4800, 4290}, 8, "", false},
    {Kind::Label,  "lblCommPort",        -1, kCommPage, {60, 60, 900, 600}, 10, "Port"},
    {Kind::List,   "cmbCommPort",        -1, kCommPage, {1020, 60, 1350, 600}, 10, ""},
    {Kind::Label,  "lblCommBaudRate",    -1, kCommPage, {60, 750, 900, 600}, 10, "Baud Rate"},
    {Kind::List,   "cmbCommBaudRate",    -1, kCommPage, {1020, 750, 1350, 600}, 10, ""},
    {Kind::Label,  "lblCommParity",      -1, kCommPage, {60, 1440, 900, 600}, 10, "Parity"},
    {Kind::List,   "cmbCommParity",      -1, kCommPage, {1020, 1440, 1350, 600}, 10, ""},
    {Kind::Label,  "lblDataBits",        -1, kCommPage, {2430, 60, 900, 600}, 10, "Data Bits"},
    {Kind::List,   "cmbCommDataBits",    -1, kCommPage, {3390, 60, 1350, 600}, 10, ""},
    {Kind::Label,  "lblStopBits",        -1, kCommPage, {2430, 750, 900, 600}, 10, "Stop Bits"},
    {Kind::List,   "cmbCommStopBits",    -1, kCommPage, {3390, 750, 1350, 600}, 10, ""},
    toggle({Kind::Button, "cmbCommOnOff",       -1, kCommPage, {60, 2310, 2310, 660}, 10, "ON"}),
    {Kind::Button, "cmbToggleDebug",     -1, kCommPage, {2430, 2310, 2310, 660}, 10, "Debug Window"},
    // clang-format on
});

} // namespace quillon
