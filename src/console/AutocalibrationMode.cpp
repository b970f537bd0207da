#include "console/AutocalibrationMode.h"

#include <cassert>

#include "console/ServiceModes.h"
#include "model/Commands.h"
#include "model/Service.h"

namespace quillon {

namespace {

using namespace keys;

constexpr Effects kAutocalibrationChoice{.off = F, .poll = Poll::Held, .busy = Busy::Taken};
constexpr Effects kAutocalibrationCancelled{.poll = Poll::OffUntilReport, .busy = Busy::Given};
constexpr Effects kAutocalibrationChosen{.off = modes | X | F, .poll = Poll::Held};
constexpr Effects kAutocalibrationReached{.on = F, .poll = Poll::Free};
constexpr Effects kAutocalibrationHandedOver{
    .on = A | X, .active = A, .poll = Poll::Free, .busy = Busy::Given};
constexpr Effects kAutocalibrationNotReached{
    .on = modes | X, .poll = Poll::OffUntilReport, .busy = Busy::Given, .prompt = Prompt::Cleared};
constexpr Effects kAutocalibrationLeft{.off = modes | X | F, .poll = Poll::Held, .busy = Busy::Taken};
constexpr Effects kAutocalibrationEnded{.off = F, .poll = Poll::Held};
constexpr Effects kAutocalibrationDone{
    .on = modes | X, .atRest = A, .poll = Poll::Free, .busy = Busy::Given, .prompt = Prompt::Cleared};
constexpr Effects kAutocalibrationDoneInReady{.on = modes | X,
                                              .atRest = A,
                                              .poll = Poll::OffUntilReport,
                                              .busy = Busy::Given,
                                              .prompt = Prompt::Cleared};
constexpr Effects kCalibrationBehindItDone{.on = modes | X,
                                           .atRest = A,
                                           .poll = Poll::Free,
                                           .busy = Busy::Given,
                                           .prompt = Prompt::Cleared,
                                           .rx = Rx::Off};

// Steps of tmrAutocalON, and how long each gives the generator, in ms.
constexpr int kSendWorkstation = 1;
constexpr int kSendCalibration = 2;
constexpr int kFirstSeek = 3;
constexpr int kSeek = 4;
constexpr int kSendAutocalibration = 5;
constexpr int kWait = 6;

constexpr int kEntryDelay = 500;
constexpr int kWorkstationTime = 3000;
constexpr int kCalibrationTime = 3000;
constexpr int kSeekPace = 500;      // one answer of the generator before the next decision
constexpr int kSlowSeekPace = 4000; // for a generator whose answer took longer than that
constexpr int kFocusFoundTime = 2000;
constexpr int kParameterFoundTime = 4000;
constexpr int kWaitPace = 5000;
constexpr int kWaitLimit = 20; // ticks

// Steps of tmrAutocalOFF.
constexpr int kStopAutocalibration = 0;
constexpr int kStopCalibration = 1;
constexpr int kFinish = 2;

constexpr int kExitDelay = 1000;
constexpr int kStationsStopTime = 15000;
constexpr int kParameterStopTime = 20000;

constexpr int kBlinkPace = 500;
constexpr int kHandOverDelay = 4500; // from the mode to the operator

} // namespace

AutocalibrationMode::AutocalibrationMode(ConsoleContext& context, ServiceSession& session,
                                         ConsolePanels& panels)
    : context_(context), session_(session), panels_(panels), choice_(context, session, panels),
      point_(context), screen_(context), state_(context.state), link_(context.link),
      lblHelp_(context.console["lblHelp"]), tmrAutocalON_(context.console.timer("tmrAutocalON")),
      tmrAutocalOFF_(context.console.timer("tmrAutocalOFF")),
      tmrDelayAutocal_(context.console.timer("tmrDelayAutocal")),
      tmrIniAutocal_(context.console.timer("tmrIniAutocal")) {
    session_.onClick(Key::Autocalibration, [this] {
        state_.m_ProtocolError = false;
        ToggleAutocalibrationMode();
    });
    session_.onLeave(Phase::Autocalibration, [this] { ToggleAutocalibrationMode(); });
    tmrAutocalON_.setTick([this] { onTick(); });
    tmrAutocalOFF_.setTick([this] { offTick(); });
    tmrDelayAutocal_.setTick([this] { handOverTick(); });
    tmrIniAutocal_.setTick([this] { blink(); });
    connectSignals();
}

void AutocalibrationMode::connectSignals() {
    LinkEvents& events = link_.events();
    events.AutocalibrationConfirm.connect([this] { confirmed(); });
    events.AutocalibrationDismiss.connect([this] { dismissed(); });
    events.AutocalibrationACK.connect([this](bool on) { acknowledged(on); });
}

void AutocalibrationMode::ToggleAutocalibrationMode() {
    if (session_.mode() == Phase::NormalOperation) {
        session_.begin(Run::ChoosingAutocalibration, kAutocalibrationChoice);
        choice_.ask([this] { enter(); }, [this] { session_.end(kAutocalibrationCancelled); });
    } else if (session_.mode() == Phase::Autocalibration) {
        leave();
    }
}

void AutocalibrationMode::enter() {
    if (!session_.generator().canEnter()) {
        session_.cancel();
        return;
    }
    session_.continueAs(
        Run::EnteringAutocalibration, kAutocalibrationChosen,
        {.undo = [this] { tmrAutocalON_.stop(); },
         .ends =
             [this](Stimulus stimulus) {
                 if (stimulus == Stimulus::Calibration || stimulus == Stimulus::Configuration) {
                     return session_.mode() == Phase::Autocalibration || !tmrAutocalON_.running();
                 }
                 // Before its first command, or in Ready behind the last of its waits.
                 return stimulus == Stimulus::Exposure ? onStep_ == kSendWorkstation
                                                       : !tmrAutocalON_.running();
             },
         .givenUp = [this] { generatorNeverCame(); }});
    screen_.prompt(Role::Prompt, context_.texts.waitPrompt(context_.texts.sEnterAutocal));
    onStep_ = kSendWorkstation;
    seekPace_ = kSeekPace;
    handOverOwed_ = false;
    tmrAutocalON_.start(kEntryDelay);
}

void AutocalibrationMode::onTick() {
    if (session_.idle()) {
        onStep_ = kWait; // autocalibration was reached before its command was sent: send no more
    }
    switch (onStep_) {
    case kSendWorkstation:
        link_.commands().send(command("Workstation"), state_.m_SelectedWorkstation);
        onStep_ = kSendCalibration;
        tmrAutocalON_.start(kWorkstationTime);
        break;
    case kSendCalibration:
        // In calibration already, the generator would take the command as the way out.
        if (session_.mode() != Phase::Calibration) {
            link_.service().ToggleCalibrationFeature();
            session_.generator().asked(Phase::Calibration);
        }
        onStep_ = kFirstSeek;
        tmrAutocalON_.start(kCalibrationTime);
        break;
    case kFirstSeek:
        session_.startWatchdog();
        seekTick();
        break;
    case kSeek:
        seekTick();
        break;
    case kSendAutocalibration:
        askForAutocalibration();
        break;
    case kWait:
        waitTick();
        break;
    default:
        break;
    }
}

void AutocalibrationMode::seekTick() {
    if (session_.mode() != Phase::Calibration) {
        calibrationRefused();
    } else if (point_.reached()) {
        pointFound();
    } else {
        onStep_ = kSeek;
        tmrAutocalON_.setInterval(seekPace_);
        point_.step();
    }
}

void AutocalibrationMode::pointFound() {
    onStep_ = kSendAutocalibration;
    tmrAutocalON_.setInterval(state_.m_SelAutocalmA ? kFocusFoundTime : kParameterFoundTime);
    if (!state_.m_SelAutocalmA) {
        link_.Flush();
    }
}

void AutocalibrationMode::askForAutocalibration() {
    if (!point_.reached()) {
        // The answer to a step came after the check that found the point: the list is beyond it now.
        seekPace_ = kSlowSeekPace;
        seekTick();
        return;
    }
    link_.service().ToggleAutocalibrationFeature();
    session_.stopWatchdog();
    waitCount_ = 1;
    onStep_ = kWait;
    tmrAutocalON_.setInterval(kWaitPace);
}

void AutocalibrationMode::waitTick() {
    session_.apply(effects::kXRaysAllowed);
    ++waitCount_;
    const bool gone = session_.is(Run::EnteringAutocalibration) && session_.mode() == Phase::NormalOperation;
    if (session_.lastPhase() == Phase::ConfirmDismiss) {
        // The operator may take any time to answer.
        waitCount_ = 0;
    } else if (session_.is(Run::LeavingAutocalibration)) {
        return; // the exit decides now
    } else if (session_.mode() == Phase::Autocalibration) {
        modeReached();
    } else if (waitCount_ == kWaitLimit || gone || state_.m_ProtocolError) {
        generatorNeverCame();
    }
}

void AutocalibrationMode::modeReached() {
    tmrIniAutocal_.stop();
    session_.apply(kAutocalibrationReached);
    tmrAutocalON_.stop();
    if (session_.is(Run::EnteringAutocalibration) && !tmrDelayAutocal_.running() && !handOverOwed_) {
        handOver(); // it came through Ready, where no timer for the hand-over was started
    }
    session_.stand();
}

void AutocalibrationMode::calibrationRefused() {
    giveUpEntry();
    panels_.ErrorMessage(panels_.failureCode(), Phase::Calibration);
}

void AutocalibrationMode::generatorNeverCame() {
    giveUpEntry();
    // An answer that the generator has not taken would be repeated and might begin what was abandoned.
    link_.timer("tmrConfirm").stop();
    link_.timer("tmrDismiss").stop();
    panels_.ErrorMessage(ErrorCode::Protocol);
}

void AutocalibrationMode::giveUpEntry() {
    tmrAutocalON_.stop();
    session_.fail(kAutocalibrationNotReached);
}

void AutocalibrationMode::modeBegins() {
    if (session_.idle()) {
        session_.rename(Run::HandingOver);
    }
    if (session_.is(Run::HandingOver) || session_.is(Run::EnteringAutocalibration)) {
        handOverOwed_ = false;
        tmrDelayAutocal_.start(kHandOverDelay);
    }
}

void AutocalibrationMode::modeReported(bool result) {
    const bool pending = session_.is(Run::HandingOver) || session_.is(Run::EnteringAutocalibration);
    if (pending && (result || handOverOwed_)) {
        handOver();
    } else if (session_.is(Run::HandingOver) && !tmrDelayAutocal_.running()) {
        tmrDelayAutocal_.start(kHandOverDelay); // it had asked without being in calibration
    }
}

void AutocalibrationMode::handOverTick() {
    assert(session_.is(Run::EnteringAutocalibration) || session_.is(Run::HandingOver));
    tmrDelayAutocal_.stop();
    if (session_.lastPhase() == Phase::Autocalibration) {
        handOver();
    } else {
        handOverOwed_ = true; // the operator is not asked for an exposure while one is made
    }
}

void AutocalibrationMode::handOver() {
    handOverOwed_ = false;
    session_.generator().setExposureRequest(ExposureRequest::Stands);
    session_.end(kAutocalibrationHandedOver);
    screen_.prompt(Role::Prompt, context_.texts.sPressPrepExpose);
}

void AutocalibrationMode::questionAsked() {
    if (session_.is(Run::EnteringAutocalibration) || session_.is(Run::HandingOver)) {
        session_.startWatchdog();
    }
}

bool AutocalibrationMode::asks() const {
    return session_.lastPhase() == Phase::ConfirmDismiss && !answered_ &&
           (session_.idle() || session_.is(Run::EnteringAutocalibration) || session_.is(Run::HandingOver));
}

void AutocalibrationMode::answer(const std::string& prompt) {
    answered_ = true;
    if (session_.idle()) {
        session_.rename(Run::HandingOver); // the generator had come to its question by itself
    }
    session_.apply(effects::kFrameTaken);
    questionAsked();
    screen_.prompt(Role::Prompt, prompt);
}

void AutocalibrationMode::confirmed() {
    answer(initPrompt());
    tmrIniAutocal_.start(kBlinkPace);
}

void AutocalibrationMode::blink() {
    screen_.prompt(Role::Prompt, lblHelp_.caption().empty() ? initPrompt() : std::string());
}

void AutocalibrationMode::dismissed() {
    tmrIniAutocal_.stop();
    answer(context_.texts.waitPrompt(context_.texts.sStopAutocal));
}

void AutocalibrationMode::acknowledged(bool on) {
    if (asks()) {
        screen_.clearPrompt(); // Confirm and Dismiss, which it names, are hidden by this report
    }
    // onStep_ keeps its value after the entry, so this shortens the ordinary exit as well. When all of it is
    // over, or another run has begun, the same report once more ends nothing.
    const bool ours = session_.is(Run::EnteringAutocalibration) || session_.is(Run::HandingOver) ||
                      session_.is(Run::LeavingAutocalibration);
    const bool ends = ours || (session_.idle() && (tmrAutocalON_.running() || link_.answering() ||
                                                   session_.mode() == Phase::Autocalibration ||
                                                   kAsksOrTells.has(session_.lastPhase())));
    const bool left = session_.is(Run::LeavingAutocalibration) && offStep_ == kFinish; // nothing to cut short
    if (on || onStep_ != kWait || !ends || left) {
        return;
    }
    const std::string prompt = exitPrompt();
    session_.continueAs(Run::LeavingAutocalibration, kAutocalibrationEnded);
    screen_.prompt(Role::Prompt, prompt);
    startLeaving(kStopCalibration);
}

void AutocalibrationMode::leave() {
    session_.openLine();
    const std::string prompt = exitPrompt();
    session_.begin(Run::LeavingAutocalibration, kAutocalibrationLeft);
    screen_.prompt(Role::Prompt, prompt);
    startLeaving(kStopAutocalibration);
}

void AutocalibrationMode::startLeaving(int step) {
    session_.generator().setExposureRequest(ExposureRequest::Over);
    tmrIniAutocal_.stop();
    tmrDelayAutocal_.stop();
    offStep_ = step;
    tmrAutocalOFF_.start(kExitDelay);
}

void AutocalibrationMode::offTick() {
    assert(session_.is(Run::LeavingAutocalibration));
    switch (offStep_) {
    case kStopAutocalibration:
        sendExitFrom(Phase::Autocalibration, link_);
        offStep_ = kStopCalibration;
        tmrAutocalOFF_.start(state_.m_SelAutocalmA ? kStationsStopTime : kParameterStopTime);
        break;
    case kStopCalibration:
        if (session_.lastPhase() == Phase::Calibration || session_.lastPhase() == Phase::Error) {
            sendExitFrom(Phase::Calibration, link_);
            offStep_ = kFinish;
        } else {
            endLeaving();
        }
        break;
    default:
        endLeavingAfterCalibration();
        break;
    }
}

void AutocalibrationMode::endLeaving() {
    const bool ready = session_.lastPhase() == Phase::NormalOperation;
    session_.end(ready ? kAutocalibrationDoneInReady : kAutocalibrationDone);
    if (!ready) {
        panels_.tellProtocolError();
    }
}

void AutocalibrationMode::endLeavingAfterCalibration() {
    tmrAutocalON_.stop();
    const bool ready = session_.lastPhase() == Phase::NormalOperation;
    if (!ready) {
        screen_.hide({"fraTorvaneSerial"});
    }
    session_.endOnTheWay(kCalibrationBehindItDone);
    if (!ready) {
        panels_.tellProtocolError();
    }
}

std::string AutocalibrationMode::exitPrompt() const {
    const ConsoleTexts& texts = context_.texts;
    const bool aborted = session_.lastPhase() != Phase::AutocalOk && link_.mirror().m_CalibrationType == 0;
    return texts.waitPrompt(aborted ? texts.sStopAutocal : texts.sExitAutocal);
}

std::string AutocalibrationMode::initPrompt() const {
    return context_.texts.waitPrompt(context_.texts.sInitAutocal);
}

} // namespace quillon
