#include "console/CalibrationMode.h"

#include <cassert>

#include "console/ServiceModes.h"
#include "model/Commands.h"
#include "model/Service.h"

namespace quillon {

namespace {

using namespace keys;

constexpr Effects kCalibrationChoice{.on = E, .off = modes | U | X, .poll = Poll::Held, .busy = Busy::Taken};
constexpr Effects kCalibrationChosen{.off = modes | U | X, .poll = Poll::Held};
constexpr Effects kCalibrationReached{.on = M | U | X | F,
                                      .atRest = A | U,
                                      .active = M,
                                      .poll = Poll::Free,
                                      .busy = Busy::Given,
                                      .prompt = Prompt::Cleared,
                                      .rx = Rx::On};
constexpr Effects kCalibrationNotReached{
    .on = modes | X, .poll = Poll::Free, .busy = Busy::Given, .prompt = Prompt::Cleared, .rx = Rx::On};
constexpr Effects kCalibrationDone{
    .on = modes, .atRest = modes, .poll = Poll::Free, .busy = Busy::Given, .rx = Rx::Off};
constexpr Effects kCalibrationDoneForTheUsers{
    .on = C | A | R, .atRest = modes, .poll = Poll::Free, .busy = Busy::Given, .rx = Rx::Off};

constexpr std::string_view kPanel = "SelWSCal";

// ms
constexpr int kChosenWait = 1000;      // from the choice of a workstation to its command
constexpr int kReturnWait = 2000;      // on the way back from the users, between its two commands
constexpr int kWorkstationWait = 1000; // from the workstation to the mode
constexpr int kModeWait = 2500;        // from the mode to the look at the phase
constexpr int kLeaveWait = 1000;
constexpr int kLeaveAgain = 4000;

} // namespace

CalibrationMode::CalibrationMode(ConsoleContext& context, ServiceSession& session, ConsolePanels& panels)
    : context_(context), session_(session), panels_(panels), screen_(context),
      tmrCalON_(context.console.timer("tmrCalON")), tmrCalOFF_(context.console.timer("tmrCalOFF")) {
    session_.onClick(Key::ManualCalibration, [this] {
        context_.state.m_ProtocolError = false;
        if (session_.mode() == Phase::Calibration) {
            session_.loan().takeBack(); // calibration is left for Ready, not for the users
        }
        ToggleCalibrationMode();
        session_.loan().takeBack();
        screen_.hide({"fraActualExposureParameters"});
    });
    session_.onLeave(Phase::Calibration, [this] {
        session_.loan().takeBack();
        ToggleCalibrationMode();
    });
    tmrCalON_.setTick([this] { onTick(); });
    tmrCalOFF_.setTick([this] { offTick(); });
}

void CalibrationMode::ToggleCalibrationMode() {
    if (session_.is(Run::EnteringAutocalibration)) {
        return; // an exposure has enabled the key in the middle of that entry
    }
    if (session_.mode() == Phase::Calibration) {
        leave();
    } else if (session_.mode() == Phase::NormalOperation && session_.lent()) {
        comeBack();
    } else if (session_.mode() == Phase::NormalOperation) {
        enter();
    }
}

void CalibrationMode::enter() {
    session_.apply(effects::kFrameTaken);
    session_.begin(Run::ChoosingWorkstation, kCalibrationChoice);
    panels_.open(kPanel, [this](ModalPanel&, std::string_view event, std::int16_t workstation) {
        if (event == "OK") {
            panels_.remove(kPanel);
            workstationChosen(workstation);
        }
    });
    session_.restScreen().showPositionerKey(false);
}

void CalibrationMode::workstationChosen(std::int16_t workstation) {
    context_.state.m_SelectedWorkstation = workstation;
    if (!session_.generator().canEnter()) {
        session_.cancel();
        return;
    }
    session_.continueAs(Run::EnteringCalibration, kCalibrationChosen, entryHooks());
    beginEntry(kChosenWait);
}

void CalibrationMode::comeBack() {
    session_.apply(effects::kFrameTaken);
    session_.loan().takeBack();
    session_.begin(Run::EnteringCalibration, kCalibrationChoice, entryHooks());
    beginEntry(kReturnWait);
    sendWorkstation();
}

void CalibrationMode::beginEntry(int firstWait) {
    screen_.prompt(Role::Prompt, context_.texts.waitPrompt(context_.texts.sEnterCalibration));
    onStep_ = 0;
    workstationSent_ = false;
    tmrCalON_.start(firstWait);
    showModeKeys(false);
}

RunHooks CalibrationMode::entryHooks() {
    return {.undo = [this] { giveXRaysBack(false); }, .ends = [this](Stimulus) { return !workstationSent_; }};
}

void CalibrationMode::sendWorkstation() {
    context_.link.commands().send(command("Workstation"), context_.state.m_SelectedWorkstation);
    workstationSent_ = true;
}

void CalibrationMode::onTick() {
    assert(session_.is(Run::EnteringCalibration));
    switch (onStep_) {
    case 0:
        sendWorkstation();
        onStep_ = 1;
        tmrCalON_.start(kWorkstationWait);
        break;
    case 1:
        if (isExposure(session_.lastPhase())) {
            session_.cancel(effects::kCancelledByExposure); // the command would be refused
            return;
        }
        // In calibration already, the generator would take the command as the way out.
        if (session_.mode() != Phase::Calibration) {
            context_.link.service().ToggleCalibrationFeature();
            session_.generator().asked(Phase::Calibration);
        }
        onStep_ = 2;
        tmrCalON_.start(kModeWait);
        break;
    default:
        if (session_.mode() == Phase::Calibration) {
            entered();
        } else {
            notEntered();
        }
        break;
    }
}

void CalibrationMode::entered() {
    session_.end(kCalibrationReached);
    screen_.hide({"fraActualExposureParameters"});
}

void CalibrationMode::notEntered() {
    showModeKeys(true);
    session_.fail(kCalibrationNotReached);
    if (session_.lastPhase() == Phase::Error) {
        session_.stand(); // the error's own words say more than a panel would
    } else {
        panels_.ErrorMessage(panels_.failureCode(), Phase::Calibration);
    }
}

void CalibrationMode::leave() {
    session_.openLine();
    const bool lent = session_.lent();
    exitSent_ = false;
    session_.apply(effects::kFrameTaken);
    session_.begin(lent ? Run::Lending : Run::LeavingCalibration, kCalibrationChoice, exitHooks());
    session_.startWatchdog();
    screen_.prompt(Role::Prompt, context_.texts.waitPrompt(context_.texts.sExitCalibration));
    tmrCalOFF_.start(kLeaveWait);
    if (!lent) {
        showModeKeys(true);
    }
}

RunHooks CalibrationMode::exitHooks() {
    return {.undo = [this] { giveXRaysBack(exitSent_); },
            .ends = [this](Stimulus) { return exitSent_; },
            .givenUp =
                [this] {
                    session_.loan().takeBack();
                    session_.cancel();
                }};
}

/// Gives back the permission for X-rays that cmbClose or the exit took. If another run follows, that run does
/// so, or the next exit.
void CalibrationMode::giveXRaysBack(bool exitSent) {
    if (session_.idle() && (exitSent || !context_.link.mirror().RXEnable)) {
        session_.giveXRaysBack();
    }
}

void CalibrationMode::offTick() {
    assert(session_.is(Run::LeavingCalibration) || session_.is(Run::Lending));
    if (!exitSent_ && kAsksOrTells.has(session_.lastPhase())) {
        // While the generator asks whether to autocalibrate or shows the result, it takes no other command.
        sendExitFrom(Phase::Autocalibration, context_.link);
        tmrCalOFF_.start(kLeaveAgain);
    } else if (!exitSent_) {
        sendExitFrom(Phase::Calibration, context_.link);
        exitSent_ = true;
        tmrCalOFF_.start(kLeaveAgain);
    } else {
        left();
    }
}

void CalibrationMode::left() {
    const Effects& effects = session_.lent() ? kCalibrationDoneForTheUsers : kCalibrationDone;
    if (session_.mode() != Phase::NormalOperation) {
        session_.apply(effects); // repeated until the generator has left
        if (context_.state.m_ProtocolError) {
            session_.cancel();
            panels_.tellProtocolError();
        }
    } else if (session_.is(Run::Lending)) {
        tmrCalOFF_.stop();
        session_.apply(effects);
    } else {
        session_.end(effects);
    }
}

void CalibrationMode::showModeKeys(bool show) {
    const Keys others = kModeKeys.without(Key::ManualCalibration);
    screen_.show(show ? others : Key::GoToUserMode);
    screen_.hide(show ? Key::GoToUserMode : others);
}

} // namespace quillon
