#pragma once

#include "base/Phase.h"
#include "link/TorvaneSerial.h"

namespace quillon {

/// Sends what leads the generator out of that phase: "CA0" out of calibration, "CF0" out of configuration,
/// "CAU0" out of autocalibration, its question and its results. Nothing in any other phase.
void sendExitFrom(Phase phase, TorvaneSerialV3_07_QLC1& link);

} // namespace quillon
