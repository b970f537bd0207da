#include "console/UserMode.h"

#include <cassert>

#include "model/Commands.h"

namespace quillon {

namespace {

using namespace keys;

constexpr Effects kUsersCome{.on = F | M | X,
                             .active = U,
                             .poll = Poll::Free,
                             .busy = Busy::Settled,
                             .caption = Caption::Exit,
                             .rx = Rx::On};

constexpr int kRefreshDelay = 5000; // ms, when calibration has been left
constexpr int kArrivalDelay = 9000; // ms until the machine is handed over

} // namespace

UserMode::UserMode(ConsoleContext& context, ServiceSession& session, CalibrationMode& calibration)
    : context_(context), session_(session), screen_(context), calibration_(calibration),
      tmrFlRefresh_(context.console.timer("tmrFlRefresh")),
      tmrGotoUserMode_(context.console.timer("tmrGotoUserMode")) {
    session_.onClick(Key::GoToUserMode, [this] { goToUserMode(); });
    tmrFlRefresh_.setTick([this] { refreshTick(); });
    tmrGotoUserMode_.setTick([this] { arrivalTick(); });
}

void UserMode::goToUserMode() {
    // Only calibration can be lent; the generator may have left it under the finger.
    if (session_.mode() != Phase::Calibration || session_.is(Run::EnteringAutocalibration)) {
        return;
    }
    session_.loan().lend();
    if (!session_.lent()) {
        return; // it has restarted, and has not reported calibration since
    }
    session_.apply(effects::kXRaysAllowed);
    calibration_.ToggleCalibrationMode();
    tmrFlRefresh_.start(kRefreshDelay);
    tmrGotoUserMode_.start(kArrivalDelay);
    screen_.hide({"fraActualExposureParameters"});
}

void UserMode::refreshTick() {
    tmrFlRefresh_.stop();
    context_.link.commands().send(command("FlRefresh"));
}

void UserMode::arrivalTick() {
    assert(session_.is(Run::Lending));
    tmrGotoUserMode_.stop();
    if (session_.mode() == Phase::NormalOperation && session_.lent()) {
        session_.end(kUsersCome);
        screen_.clearActualExposure();
    } else if (!session_.lendingGoesOnLeaving()) { // else the machine is handed over when it follows
        session_.cancel();
    }
}

} // namespace quillon
