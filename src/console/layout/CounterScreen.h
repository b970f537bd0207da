#pragma once

#include <array>

#include "ui/ControlTable.h"

namespace quillon {

inline constexpr int kResetHold = 10000; ///< ms

/// The exposure counters, below the picture so that both can be on show.
inline constexpr auto kCounterScreenRows = std::to_array<ControlRow>({
    // clang-format off
    {Kind::Frame, "fraExposureCounters", -1, "", {60, 5340, 9120, 3060}, 10, "", false},
    title({Kind::Label, "lblExposureCounters", -1, "fraExposureCounters", {60, 120, 9000, 480}, 16,
     "EXPOSURE COUNTERS"}),
    {Kind::Label, "lblT1RAD", -1, "fraExposureCounters", {60, 720, 2205, 315}, 12, "TUBE 1 RAD"},
    field({Kind::Label, "lblTube1", -1, "fraExposureCounters", {60, 1050, 2205, 510}, 20, ""}),
    heldFor(kResetHold, {Kind::Button, "cmdResetT1", -1, "fraExposureCounters", {60, 1590, 2205, 690}, 14, "Reset", false}),
    {Kind::Label, "lblT2RAD", -1, "fraExposureCounters", {2325, 720, 2205, 315}, 12, "TUBE 2 RAD"},
    field({Kind::Label, "lblTube2", -1, "fraExposureCounters", {2325, 1050, 2205, 510}, 20, ""}),
    heldFor(kResetHold, {Kind::Button, "cmdResetT2", -1, "fraExposureCounters", {2325, 1590, 2205, 690}, 14, "Reset", false}),
    {Kind::Label, "lblTFluoro", -1, "fraExposureCounters", {4590, 720, 2205, 315}, 12, "FLUORO"},
    field({Kind::Label, "lblFluoro", -1, "fraExposureCounters", {4590, 1050, 2205, 510}, 20, ""}),
    heldFor(kResetHold, {Kind::Button, "cmdResetFluoro", -1, "fraExposureCounters", {4590, 1590, 2205, 690}, 14, "Reset", false}),
    {Kind::Label, "lblT3RAD", -1, "fraExposureCounters", {6855, 720, 2205, 315}, 12, "TUBE 3 RAD", false},
    field({Kind::Label, "lblTube3", -1, "fraExposureCounters", {6855, 1050, 2205, 510}, 20, "", false}),
    heldFor(kResetHold, {Kind::Button, "cmdResetT3", -1, "fraExposureCounters", {6855, 1590, 2205, 690}, 14, "Reset", false}),
    {Kind::Frame, "fraResetCounterConfirm", -1, "fraExposureCounters", {60, 2295, 9000, 750}, 10, "", false},
    {Kind::Label, "lblResetRADCounter", -1, "fraResetCounterConfirm", {60, 30, 5280, 690}, 14, ""},
    {Kind::Button, "cmdResetCounterYes", -1, "fraResetCounterConfirm", {5400, 30, 1740, 690}, 14, "Yes"},
    declines({Kind::Button, "cmdResetCounterNo", -1, "fraResetCounterConfirm", {7200, 30, 1740, 690}, 14, "No"}),
    // clang-format on
});

} // namespace quillon
