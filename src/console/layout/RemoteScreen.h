#pragma once

#include <array>

#include "ui/ControlTable.h"

namespace quillon {

/// The four calibration points and the SID of a remote positioner.
inline constexpr auto kRemoteScreenRows = std::to_array<ControlRow>({
    // clang-format off
    {Kind::Frame,   "fraRemote",          -1, "", {60, 60, 9120, 8340}, 12, "REMOTE", false},
    title({Kind::Label,   "lblTitleWBCalib",    -1, "fraRemote", {60, 300, 9000, 510}, 18,
     "REMOTE POSITIONER CONFIGURATION"}),
    {Kind::Frame,   "Frame1",             -1, "fraRemote", {60, 840, 9000, 1740}, 12, ""},
    {Kind::Label,   "lblRemoteSID",       -1, "Frame1", {60, 120, 1800, 720}, 14, "SID"},
    {Kind::Button,  "cmdDownSID",         -1, "Frame1", {1920, 120, 900, 720}, 16, "-"},
    {Kind::TextBox, "txtRemoteSID",       -1, "Frame1", {2880, 120, 1800, 720}, 18, "1000"},
    {Kind::Button,  "cmdUPSid",           -1, "Frame1", {4740, 120, 900, 720}, 16, "+"},
    {Kind::Button,  "cmdSetNewSID",       -1, "Frame1", {5700, 120, 3240, 720}, 12, "Store New SID"},
    {Kind::Label,   "LblStoredSID",       -1, "Frame1", {60, 900, 1800, 720}, 14, "Stored SID"},
    {Kind::TextBox, "TxtStoredSID",       -1, "Frame1", {2880, 900, 1800, 720}, 18, ""},
    {Kind::Button,  "cmdRequestSID",      -1, "Frame1", {5700, 900, 3240, 720}, 12, "Request stored SID"},
    {Kind::Frame,   "fraCalibPoints",     -1, "fraRemote", {60, 2640, 9000, 5640}, 12, ""},
    {Kind::Label,   "lblURSWHCalib1lbl",  -1, "fraCalibPoints", {60, 120, 1800, 720}, 12, "PT1"},
    {Kind::Button,  "cmdDownParameter",   -1, "fraCalibPoints", {1920, 120, 900, 720}, 16, "-"},
    {Kind::TextBox, "TxtParamCalib",      -1, "fraCalibPoints", {2880, 120, 1800, 720}, 18, "40"},
    {Kind::Button,  "cmdUpParameter",     -1, "fraCalibPoints", {4740, 120, 900, 720}, 16, "+"},
    {Kind::Label,   "Label25",            -1, "fraCalibPoints", {60, 900, 1800, 720}, 12, "ADC Value"},
    {Kind::TextBox, "TxtADCValueCalib",   -1, "fraCalibPoints", {2880, 900, 1800, 720}, 18, ""},
    {Kind::Button,  "cmdStoreCalibPoint", -1, "fraCalibPoints", {5700, 120, 3240, 720}, 12, "Store"},
    {Kind::Button,  "cmdNextCalibPoint",  -1, "fraCalibPoints", {5700, 900, 3240, 720}, 12, "Next Point"},
    title({Kind::Label,   "lblTitleParam",      -1, "fraCalibPoints", {1920, 1860, 1830, 360}, 14, "Parameter"}),
    title({Kind::Label,   "lblTitleADC",        -1, "fraCalibPoints", {3810, 1860, 1830, 360}, 14, "ADC"}),
    field({Kind::Label,   "LblParam1",          -1, "fraCalibPoints", {1920, 2280, 1830, 600}, 18, "---"}),
    field({Kind::Label,   "LblValue1",          -1, "fraCalibPoints", {3810, 2280, 1830, 600}, 18, "---"}),
    field({Kind::Label,   "LblParam2",          -1, "fraCalibPoints", {1920, 3060, 1830, 600}, 18, "---"}),
    field({Kind::Label,   "LblValue2",          -1, "fraCalibPoints", {3810, 3060, 1830, 600}, 18, "---"}),
    field({Kind::Label,   "LblParam3",          -1, "fraCalibPoints", {1920, 3840, 1830, 600}, 18, "---"}),
    field({Kind::Label,   "LblValue3",          -1, "fraCalibPoints", {3810, 3840, 1830, 600}, 18, "---"}),
    field({Kind::Label,   "LblParam4",          -1, "fraCalibPoints", {1920, 4620, 1830, 600}, 18, "---"}),
    field({Kind::Label,   "LblValue4",          -1, "fraCalibPoints", {3810, 4620, 1830, 600}, 18, "---"}),
    {Kind::Button,  "cmdCalibrationGet",  -1, "fraCalibPoints", {5700, 2280, 3240, 720}, 12,
     "Request calibration"},
    // clang-format on
});

} // namespace quillon
