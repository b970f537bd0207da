#include "console/ModeExits.h"

#include "model/Commands.h"
#include "model/Service.h"

namespace quillon {

void sendExitFrom(Phase phase, TorvaneSerialV3_07_QLC1& link) {
    if (phase == Phase::Calibration) {
        link.service().calibration(false);
    } else if (phase == Phase::Configuration) {
        link.commands().send(command("Configuration"), false);
    } else if (phase == Phase::Autocalibration || kAsksOrTells.has(phase)) {
        link.commands().send(command("Autocalibration"), false);
    }
}

} // namespace quillon
