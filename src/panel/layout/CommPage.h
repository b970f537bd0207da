#pragma once

#include <array>

#include "ui/ControlTable.h"

namespace quillon {

inline constexpr std::string_view kCommPage = "fraServiceMenuItem(2)";

/// The settings of the serial line.
inline constexpr auto kCommPageRows = std::to_array<ControlRow>({
    // clang-format off
    {Kind::Frame,  "fraServiceMenuItem",  2, "", {60, 1710, 4800, 4440}, 8, "", false},
    {Kind::Label,  "lblCommPort",        -1, kCommPage, {60, 90, 900, 540}, 10, "Port"},
    {Kind::List,   "cmbCommPort",        -1, kCommPage, {1020, 90, 1350, 540}, 10, ""},
    {Kind::Label,  "lblCommBaudRate",    -1, kCommPage, {60, 780, 900, 540}, 10, "Baud Rate"},
    {Kind::List,   "cmbCommBaudRate",    -1, kCommPage, {1020, 780, 1350, 540}, 10, ""},
    {Kind::Label,  "lblCommParity",      -1, kCommPage, {60, 1470, 900, 540}, 10, "Parity"},
    {Kind::List,   "cmbCommParity",      -1, kCommPage, {1020, 1470, 1350, 540}, 10, ""},
    {Kind::Label,  "lblDataBits",        -1, kCommPage, {2430, 90, 900, 540}, 10, "Data Bits"},
    {Kind::List,   "cmbCommDataBits",    -1, kCommPage, {3390, 90, 1350, 540}, 10, ""},
    {Kind::Label,  "lblStopBits",        -1, kCommPage, {2430, 780, 900, 540}, 10, "Stop Bits"},
    {Kind::List,   "cmbCommStopBits",    -1, kCommPage, {3390, 780, 1350, 540}, 10, ""},
    {Kind::Button, "cmbCommOnOff",       -1, kCommPage, {60, 2340, 2310, 600}, 10, "ON"},
    {Kind::Button, "cmbToggleDebug",     -1, kCommPage, {2430, 2340, 2310, 600}, 10, "Debug Window"},
    // clang-format on
});

} // namespace quillon
