#pragma once

#include <array>

#include "ui/ControlTable.h"

namespace quillon {

/// The four calibration points and the SID of a remote positioner.
inline constexpr auto kRemoteScreenRows = std::to_array<ControlRow>({
    // clang-format off
    {Kind::Frame,   "fraRemote",          -1, "", {60, 60, 9120, 8340}, 12, "REMOTE", false},
    {Kind::Label,   "lblTitleWBCalib",    -1, "fraRemote", {60, 360, 9000, 420}, 18,
     "REMOTE POSITIONER CONFIGURATION"},
    {Kind::Frame,   "Frame1",             -1, "fraRemote", {60, 840, 9000, 1740}, 12, ""},
    {Kind::Label,   "lblRemoteSID",       -1, "Frame1", {60, 180, 1800, 660}, 14, "SID"},
    {Kind::Button,  "cmdDownSID",         -1, "Frame1", {1920, 180, 900, 660}, 20, "-"},
    {Kind::TextBox, "txtRemoteSID",       -1, "Frame1", {2880, 180, 1800, 660}, 18, "1000"},
    {Kind::Button,  "cmdUPSid",           -1, "Frame1", {4740, 180, 900, 660}, 20, "+"},
    {Kind::Button,  "cmdSetNewSID",       -1, "Frame1", {5700, 180, 3240, 660}, 14, "Store New SID"},
    {Kind::Label,   "LblStoredSID",       -1, "Frame1", {60, 960, 1800, 660}, 14, "Stored SID"},
    {Kind::TextBox, "TxtStoredSID",       -1, "Frame1", {2880, 960, 1800, 660}, 18, ""},
    {Kind::Button,  "cmdRequestSID",      -1, "Frame1", {5700, 960, 3240, 660}, 14, "Request stored SID"},
    {Kind::Frame,   "fraCalibPoints",     -1, "fraRemote", {60, 2640, 9000, 5640}, 12, ""},
    {Kind::Label,   "lblURSWHCalib1lbl",  -1, "fraCalibPoints", {60, 180, 1800, 660}, 12, "PT1"},
    {Kind::Button,  "cmdDownParameter",   -1, "fraCalibPoints", {1920, 180, 900, 660}, 20, "-"},
    {Kind::TextBox, "TxtParamCalib",      -1, "fraCalibPoints", {2880, 180, 1800, 660}, 18, "40"},
    {Kind::Button,  "cmdUpParameter",     -1, "fraCalibPoints", {4740, 180, 900, 660}, 20, "+"},
    {Kind::Label,   "Label25",            -1, "fraCalibPoints", {60, 960, 1800, 660}, 12, "ADC Value"},
    {Kind::TextBox, "TxtADCValueCalib",   -1, "fraCalibPoints", {2880, 960, 1800, 660}, 18, ""},
    {Kind::Button,  "cmdStoreCalibPoint", -1, "fraCalibPoints", {5700, 180, 3240, 660}, 14, "Store"},
    {Kind::Button,  "cmdNextCalibPoint",  -1, "fraCalibPoints", {5700, 960, 3240, 660}, 14, "Next Point"},
    {Kind::Label,   "lblTitleParam",      -1, "fraCalibPoints", {960, 1860, 2280, 360}, 14, "Parameter"},
    {Kind::Label,   "lblTitleADC",        -1, "fraCalibPoints", {3360, 1860, 2280, 360}, 14, "ADC"},
    {Kind::Label,   "LblParam1",          -1, "fraCalibPoints", {960, 2280, 2280, 600}, 18, "---"},
    {Kind::Label,   "LblValue1",          -1, "fraCalibPoints", {3360, 2280, 2280, 600}, 18, "---"},
    {Kind::Label,   "LblParam2",          -1, "fraCalibPoints", {960, 3060, 2280, 600}, 18, "---"},
    {Kind::Label,   "LblValue2",          -1, "fraCalibPoints", {3360, 3060, 2280, 600}, 18, "---"},
    {Kind::Label,   "LblParam3",          -1, "fraCalibPoints", {960, 3840, 2280, 600}, 18, "---"},
    {Kind::Label,   "LblValue3",          -1, "fraCalibPoints", {3360, 3840, 2280, 600}, 18, "---"},
    {Kind::Label,   "LblParam4",          -1, "fraCalibPoints", {960, 4620, 2280, 600}, 18, "---"},
    {Kind::Label,   "LblValue4",          -1, "fraCalibPoints", {3360, 4620, 2280, 600}, 18, "---"},
    {Kind::Button,  "cmdCalibrationGet",  -1, "fraCalibPoints", {5700, 2280, 3240, 660}, 14,
     "Request calibration"},
    // clang-format on
});

} // namespace quillon
