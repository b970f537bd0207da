#pragma once

#include <cstdint>

#include "console/ServiceSession.h"

namespace quillon {

/// What a press of cmbClose does now.
enum class CloseAction : std::uint8_t {
    Nothing,
    GivesUp, ///< the run that has waited for a minute
    LeavesMode,
    HidesCounters,
    TakesMachineBack, ///< from its users, into calibration
    Closes,
};

/// What the key does now, by the run, the mode and the generator's state. Whether the generator takes the
/// command that leaves the mode is not checked here.
[[nodiscard]] CloseAction closeActionOf(const ServiceSession& session);

} // namespace quillon
