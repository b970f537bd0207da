#include "console/CloseAction.h"

namespace quillon {

CloseAction closeActionOf(const ServiceSession& session) {
    const CloseKey close = rowOf(session.run()).close;
    const Phase mode = session.mode();
    if (close == CloseKey::Nothing) {
        return CloseAction::Nothing;
    }
    if (session.canGiveUp() && mode != Phase::Autocalibration) {
        return CloseAction::GivesUp;
    }
    if (session.generator().poweringUp() || session.generator().exitUnheard()) {
        // After a start anew, whatever stood before is over; and nobody waits twice for one that is lost.
        return CloseAction::Closes;
    }
    if (mode == Phase::Configuration) {
        return CloseAction::LeavesConfiguration;
    }
    if (mode == Phase::Autocalibration) {
        return CloseAction::LeavesAutocalibration;
    }
    if (close == CloseKey::WaitsForMode) {
        return CloseAction::Nothing;
    }
    if (mode == Phase::Calibration) {
        return CloseAction::LeavesCalibration;
    }
    if (session.countersActive()) {
        return CloseAction::HidesCounters;
    }
    return session.lent() ? CloseAction::TakesMachineBack : CloseAction::Closes;
}

} // namespace quillon
