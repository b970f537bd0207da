#pragma once

#include <array>

#include "ui/ControlTable.h"

namespace quillon {

inline constexpr int kResetHold = 10000; ///< ms

/// The exposure counters, below the picture so that both can be on show.
inline constexpr auto kCounterScreenRows = std::to_array<ControlRow>({
    // clang-format off
    {Kind::Frame, "fraExposureCounters", -1, "", {60, 5340, 9120, 3060}, 10, "", false},
    title({Kind::Label, "lblExposureCounters", -1, "fraExposureCounters", {60, 60, 9000, 420}, 16,
     "EXPOSURE COUNTERS"}),
    {Kind::Label, "lblT1RAD", -1, "fraExposureCounters", {60, 480, 2205, 300}, 12, "TUBE 1 RAD"},
    field({Kind::Label, "lblTube1", -1, "fraExposureCounters", {60, 810, 2205, 480}, 20, ""}),
    heldFor(kResetHold, {Kind::Button, "cmdResetT1", -1, "fraExposureCounters", {60, 1320, 2205, 690}, 14, "Reset", false}),
    {Kind::Label, "lblT2RAD", -1, "fraExposureCounters", {2325, 480, 2205, 300}, 12, "TUBE 2 RAD"},
    field({Kind::Label, "lblTube2", -1, "fraExposureCounters", {2325, 810, 2205, 480}, 20, ""}),
    heldFor(kResetHold, {Kind::Button, "cmdResetT2", -1, "fraExposureCounters", {2325, 1320, 2205, 690}, 14, "Reset", false}),
    {Kind::Label, "lblTFluoro", -1, "fraExposureCounters", {4590, 480, 2205, 300}, 12, "FLUORO"},
    field({Kind::Label, "lblFluoro", -1, "fraExposureCounters", {4590, 810, 2205, 480}, 20, ""}),
    heldFor(kResetHold, {Kind::Button, "cmdResetFluoro", -1, "fraExposureCounters", {4590, 1320, 2205, 690}, 14, "Reset", false}),
    {Kind::Label, "lblT3RAD", -1, "fraExposureCounters", {6855, 480, 2205, 300}, 12, "TUBE 3 RAD", false},
    field({Kind::Label, "lblTube3", -1, "fraExposureCounters", {6855, 810, 2205, 480}, 20, "", false}),
    heldFor(kResetHold, {Kind::Button, "cmdResetT3", -1, "fraExposureCounters", {6855, 1320, 2205, 690}, 14, "Reset", false}),
    {Kind::Frame, "fraResetCounterConfirm", -1, "fraExposureCounters", {60, 2070, 9000, 930}, 10, "", false},
    {Kind::Label, "lblResetRADCounter", -1, "fraResetCounterConfirm", {60, 120, 5280, 750}, 14, ""},
    {Kind::Button, "cmdResetCounterYes", -1, "fraResetCounterConfirm", {5400, 120, 1740, 750}, 14, "Yes"},
    declines({Kind::Button, "cmdResetCounterNo", -1, "fraResetCounterConfirm", {7200, 120, 1740, 750}, 14, "No"}),
    // clang-format on
});

} // namespace quillon
