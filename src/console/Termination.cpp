#include "console/Termination.h"

#include <utility>

#include "console/ServiceModes.h"

namespace quillon {

namespace {

constexpr int kLeaveTime = 3000; // ms that the ways out of the modes get

} // namespace

Termination::Termination(ConsoleContext& context, ServiceSession& session, Closing& closing)
    : context_(context), session_(session), closing_(closing), screen_(context) {
    context_.operations.add("LeaveNow", [this] { LeaveNow(); });
    context_.link.events().GeneratorPhaseChange.connect([this](Phase phase) { phaseReported(phase); });
}

void Termination::LeaveNow() {
    if (session_.is(Run::Closing)) {
        return;
    }
    const std::vector<Phase> modes = modesToLeave();
    session_.restScreen().closeScreen();
    session_.begin(Run::Closing, modes.empty() ? effects::kClosingBegins : effects::kPollFree);
    stopAllTimers();
    if (Control* window = context_.console.container()) {
        window->setEnabled(false); // the operator can press nothing any more
    }
    leaving_ = true;
    stood_ = session_.lastPhase();
    for (const Phase mode : modes) {
        leave(mode);
    }
    session_.loan().takeBack();
    session_.giveXRaysBack(); // behind the commands, which may have thrown it away
    screen_.prompt(Role::Prompt, context_.texts.sClosing);
    closing_.goodbyeIn(modes.empty() ? Closing::kGoodbyeDelay : kLeaveTime, [this] {
        if (session_.mode() == Phase::Autocalibration) {
            leave(Phase::Calibration); // the generator has not reported it yet, but may go there
        }
    });
}

std::vector<Phase> Termination::modesToLeave() const {
    const Phase mode = session_.mode();
    const bool autocalibrating = session_.is(Run::EnteringAutocalibration);
    const bool entering = autocalibrating || session_.is(Run::EnteringCalibration);
    std::vector<Phase> modes;
    if (mode == Phase::Autocalibration || kAsksOrTells.has(session_.lastPhase()) ||
        (mode == Phase::Calibration && autocalibrating)) {
        modes.push_back(Phase::Autocalibration);
    }
    if (mode == Phase::Calibration || (mode == Phase::NormalOperation && entering)) {
        modes.push_back(Phase::Calibration);
    }
    for (const ServiceMode& row : serviceModes()) {
        const bool calibrates = row.phase == Phase::Calibration || row.phase == Phase::Autocalibration;
        if (!calibrates && (mode == row.phase || session_.is(row.entering))) {
            modes.push_back(row.phase);
        }
    }
    return modes;
}

void Termination::leave(Phase phase) {
    sendExitFrom(phase, context_.link);
    if (phase == Phase::Autocalibration || kAsksOrTells.has(phase)) {
        session_.oweXRays(); // that command has thrown away what waited
    }
}

void Termination::stopAllTimers() {
    for (const auto& control : context_.console.controls()) {
        if (auto* timer = dynamic_cast<TimerControl*>(control.get())) {
            timer->timer().stop();
        }
    }
    // An answer to the question of an autocalibration would be repeated.
    context_.link.timer("tmrConfirm").stop();
    context_.link.timer("tmrDismiss").stop();
}

void Termination::phaseReported(Phase phase) {
    if (!leaving_) {
        return;
    }
    if (std::exchange(stood_, phase) != phase) {
        leave(phase);
    }
    screen_.prompt(Role::Prompt, context_.texts.sClosing); // the reaction to the report has words of its own
}

} // namespace quillon
