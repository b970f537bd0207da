#include "console/CloseAction.h"
#include "console/ServiceModes.h"

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
        // A restarted generator is in no mode, and a lost one was told to leave once already.
        return CloseAction::Closes;
    }
    const bool waits = close == CloseKey::WaitsForMode;
    if (const ServiceMode* left = serviceModeOf(mode); left != nullptr && !(waits && left->leadsOn)) {
        return CloseAction::LeavesMode;
    }
    if (waits) {
        return CloseAction::Nothing;
    }
    if (session.countersActive()) {
        return CloseAction::HidesCounters;
    }
    return session.lent() ? CloseAction::TakesMachineBack : CloseAction::Closes;
}

} // namespace quillon
