#pragma once

#include <array>

#include "ui/ControlTable.h"

namespace quillon {

/// The strip that tells what the generator reports; the debug view takes its place.
inline constexpr auto kStatusStripRows = std::to_array<ControlRow>({
    // clang-format off
    {Kind::Frame, "fraStatus", -1, "", {60, 60, 4800, 1080}, 8, ""},
    {Kind::Label, "txtPHASE", -1, "fraStatus", {60, 60, 1620, 270}, 10, ""},
    {Kind::Label, "txtWorkingMode", -1, "fraStatus", {1740, 60, 1020, 270}, 10, ""},
    {Kind::Label, "txtHU", -1, "fraStatus", {2820, 60, 1020, 270}, 10, "HU 0%"},
    {Kind::Label, "txtInfo", -1, "fraStatus", {60, 345, 3780, 210}, 8, ""},
    {Kind::Label, "txtDoorOpenWarning", -1, "fraStatus", {60, 585, 732, 210}, 8, "Door", false},
    {Kind::Label, "txtGeneratorOverloadWarning", -1, "fraStatus", {822, 585, 732, 210}, 8, "Gen.Over", false},
    {Kind::Label, "txtTubeOverloadWarning", -1, "fraStatus", {1584, 585, 732, 210}, 8, "Tube Over.", false},
    {Kind::Label, "txtRotorWarning", -1, "fraStatus", {2346, 585, 732, 210}, 8, "Rotor", false},
    {Kind::Label, "txtOverheatWarning", -1, "fraStatus", {3108, 585, 732, 210}, 8, "Overheat", false},
    {Kind::Label, "txtTechniqueWarning", -1, "fraStatus", {60, 810, 690, 210}, 8, "Technique", false},
    {Kind::Label, "txtCollimatorWarning", -1, "fraStatus", {780, 810, 690, 210}, 8, "Collimator", false},
    {Kind::Label, "txtIINotAlignedWarning", -1, "fraStatus", {1500, 810, 900, 210}, 8,
     "II Not Aligned", false},
    {Kind::Label, "txtTubeNotCenteredWarning", -1, "fraStatus", {2430, 810, 1080, 210}, 8,
     "Tube Not Centered", false},
    {Kind::Label, "txtCassetteNotPresentWarning", -1, "fraStatus", {3540, 810, 300, 210}, 8, "", false},
    {Kind::Button, "cmbResetError", -1, "fraStatus", {3900, 60, 840, 465}, 8, "Reset Error"},
    {Kind::Button, "cmbMinimize", -1, "fraStatus", {3900, 555, 840, 465}, 8, "Torvane Serial"},
    {Kind::Frame, "fraDebug", -1, "", {60, 60, 4800, 1080}, 8, "", false},
    {Kind::TextBox, "txtDebugComm", -1, "fraDebug", {60, 60, 4680, 960}, 8, ""},
    // clang-format on
});

} // namespace quillon
