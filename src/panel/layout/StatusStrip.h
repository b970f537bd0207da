#pragma once

#include <array>

#include "ui/ControlTable.h"

namespace quillon {

/// The strip that tells what the generator reports; the debug view takes its place.
inline constexpr auto kStatusStripRows = std::to_array<ControlRow>({
    // clang-format off
    {Kind::Frame, "fraStatus", -1, "", {60, 60, 4800, 1170}, 8, ""},
    field({Kind::Label, "txtPHASE", -1, "fraStatus", {60, 45, 1470, 315}, 10, ""}),
    field({Kind::Label, "txtWorkingMode", -1, "fraStatus", {1560, 45, 960, 315}, 10, ""}),
    field({Kind::Label, "txtHU", -1, "fraStatus", {2550, 45, 990, 315}, 10, "HU 0%"}),
    field({Kind::Label, "txtInfo", -1, "fraStatus", {60, 375, 2700, 240}, 8, ""}),
    interlock({Kind::Label, "txtCassetteNotPresentWarning", -1, "fraStatus", {2790, 375, 750, 240}, 8, "", false}),
    interlock({Kind::Label, "txtDoorOpenWarning", -1, "fraStatus", {60, 630, 900, 240}, 8, "Door", false}),
    interlock({Kind::Label, "txtGeneratorOverloadWarning", -1, "fraStatus", {1005, 630, 900, 240}, 8, "Gen.Over", false}),
    interlock({Kind::Label, "txtTubeOverloadWarning", -1, "fraStatus", {1950, 630, 900, 240}, 8, "Tube Over.", false}),
    interlock({Kind::Label, "txtRotorWarning", -1, "fraStatus", {2895, 630, 900, 240}, 8, "Rotor", false}),
    interlock({Kind::Label, "txtOverheatWarning", -1, "fraStatus", {3840, 630, 900, 240}, 8, "Overheat", false}),
    interlock({Kind::Label, "txtTechniqueWarning", -1, "fraStatus", {60, 885, 1125, 240}, 8, "Technique", false}),
    interlock({Kind::Label, "txtCollimatorWarning", -1, "fraStatus", {1245, 885, 1125, 240}, 8, "Collimator", false}),
    interlock({Kind::Label, "txtIINotAlignedWarning", -1, "fraStatus", {2430, 885, 1125, 240}, 8,
     "II Not Aligned", false}),
    interlock({Kind::Label, "txtTubeNotCenteredWarning", -1, "fraStatus", {3615, 885, 1125, 240}, 8,
     "Tube Not Centered", false}),
    {Kind::Button, "cmbResetError", -1, "fraStatus", {3600, 45, 555, 570}, 10, "Reset Error"},
    {Kind::Button, "cmbMinimize", -1, "fraStatus", {4185, 45, 555, 570}, 8, "Torvane Serial"},
    {Kind::Frame, "fraDebug", -1, "", {60, 60, 4800, 1170}, 8, "", false},
    {Kind::TextBox, "txtDebugComm", -1, "fraDebug", {60, 60, 4680, 1050}, 8, ""},
    // clang-format on
});

} // namespace quillon
