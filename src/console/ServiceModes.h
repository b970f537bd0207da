#pragma once

#include <span>
#include <string_view>

#include "base/Phase.h"
#include "console/ConsoleKeys.h"
#include "console/Runs.h"
#include "console/Standing.h"
#include "link/TorvaneSerial.h"

namespace quillon {

/// What belongs to a mode of the generator that a key of the console enters and leaves.
struct ServiceMode {
    Phase phase;
    Key key;
    Run entering;
    Run leaving;
    Stand stand;
    std::string_view entry; ///< mnemonic of the command with which the way in begins
    std::string_view exit;
    bool leadsOn; ///< the way into another mode goes through it
    void (*sendExit)(TorvaneSerialV3_07_QLC1& link);
};

[[nodiscard]] std::span<const ServiceMode> serviceModes();

/// The row of a mode; null for another phase.
[[nodiscard]] const ServiceMode* serviceModeOf(Phase phase);

/// Sends the command to leave a phase: the mode's own; for a question and a result that of autocalibration.
void sendExitFrom(Phase phase, TorvaneSerialV3_07_QLC1& link);

} // namespace quillon
