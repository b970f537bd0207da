#include "console/ServiceSession.h"

#include <optional>
#include <utility>
#include <vector>

namespace quillon {

namespace {

constexpr int kPatience = 60000; // ms

/// In these the place of a positioner's screen is wanted for something else.
constexpr Phases kEndsScreen{Phase::Initialization,  Phase::Calibration,    Phase::Configuration,
                             Phase::Autocalibration, Phase::ConfirmDismiss, Phase::AutocalError,
                             Phase::AutocalOk};

std::optional<Way> wayOf(Phase phase) {
    switch (phase) {
    case Phase::Initialization:
        return Way::Restart;
    case Phase::NormalOperation:
        return Way::Ready;
    case Phase::Preparation:
    case Phase::RadExposure:
    case Phase::FluoroExposure:
        return Way::Exposure;
    case Phase::Calibration:
        return Way::Calibration;
    case Phase::Configuration:
        return Way::Configuration;
    case Phase::Autocalibration:
    case Phase::AutocalError:
    case Phase::AutocalOk:
        return Way::Autocalibration;
    default:
        return std::nullopt;
    }
}

} // namespace

void Loan::lend() {
    returning_ = false;
    link_.setTempUserMode(true);
}

void Loan::takeBack() {
    link_.setTempUserMode(false);
    returning_ = link_.TempUserMode();
}

void Loan::reported(Phase phase) {
    if (phase == Phase::NormalOperation && returning_) {
        takeBack();
    }
}

ServiceSession::ServiceSession(ConsoleContext& context)
    : context_(context), screen_(context), loan_(context.link), patience_(context.console.schedule()) {
    patience_.setTick([this] {
        patience_.stop();
        patienceOver_ = true;
        at(Moment::PatienceIsOver);
    });
}

bool ServiceSession::isFree() const {
    return idle() || is(Run::ChoosingWorkstation) || is(Run::ChoosingAutocalibration);
}

void ServiceSession::setRun(Run run) {
    run_ = run;
    changed.raise();
}

void ServiceSession::setMode(Phase mode) {
    if (mode == Phase::Autocalibration && mode_ != mode) {
        exposures_ = 0;
    }
    mode_ = mode;
}

Count ServiceSession::count() const {
    if (hooks_.count) {
        return hooks_.count();
    }
    return {mode_ == Phase::Autocalibration ? exposures_ : 0, 0};
}

bool ServiceSession::waits() const {
    return rowOf(run_).waits && lastPhase_ != Phase::ConfirmDismiss;
}

void ServiceSession::begin(Run run, Moment moment, RunHooks hooks) {
    const RunHooks before = std::exchange(hooks_, {});
    stopParts();
    for (const WaitRow& wait : waitRows()) {
        if (wait.byNextRun) {
            context_.console.timer(wait.timer).stop();
        }
    }
    if (before.undo) {
        before.undo();
    }
    hooks_ = std::move(hooks);
    began.raise();
    setRun(run);
    at(moment);
}

void ServiceSession::turn(Run run, Moment moment, RunHooks hooks) {
    patience_.stop();
    patienceOver_ = false;
    hooks_ = std::move(hooks);
    setRun(run);
    at(moment);
}

void ServiceSession::end(Moment moment) {
    hooks_ = {};
    stopParts();
    setRun(Run::None);
    at(moment);
}

void ServiceSession::breakOff(Moment moment) {
    const RunHooks before = std::exchange(hooks_, {});
    stopParts();
    setRun(Run::None);
    at(moment);
    if (before.undo) {
        before.undo();
    }
}

void ServiceSession::cancelLending() {
    if (!is(Run::Lending)) {
        return;
    }
    context_.console.timer("tmrGotoUserMode").stop();
    if (mode_ == Phase::NormalOperation) {
        // A report of Ready has left this key to the arrival, which does not come any more.
        at(Moment::UsersCancelled);
    }
    if (context_.console.timer("tmrCalOFF").running()) {
        become(Run::LeavingCalibration);
    } else {
        hooks_ = {};
        setRun(Run::None);
    }
}

void ServiceSession::drop() {
    hooks_ = {};
    stopParts();
    for (const WaitRow& wait : waitRows()) {
        context_.console.timer(wait.timer).stop();
    }
    setRun(Run::None);
}

/// The one place where the belongings of a run go.
void ServiceSession::stopParts() {
    patience_.stop();
    patienceOver_ = false;
    const RunRow& row = rowOf(run_);
    for (const std::string_view timer : row.timers) {
        if (!timer.empty()) {
            context_.console.timer(timer).stop();
        }
    }
    for (const std::string_view panel : row.panels) {
        if (!panel.empty()) {
            context_.console.removeKeyed(panel);
        }
    }
}

/// Keys of the workflows are dead during an exposure: what is given meanwhile comes with its end.
void ServiceSession::give(Keys keys) {
    constexpr Keys kDeadInExposure = kModeKeys | Key::GoToUserMode | Key::Close;
    keys.each([&](Key key) {
        if (isExposure(lastPhase_) && kDeadInExposure.has(key)) {
            afterExposure_ = afterExposure_ | key;
        } else {
            context_.console[nameOf(key)].setEnabled(true);
        }
    });
}

void ServiceSession::take(Keys keys) {
    afterExposure_ = afterExposure_.without(keys);
    keys.each([&](Key key) { context_.console[nameOf(key)].setEnabled(false); });
}

void ServiceSession::paint(Keys keys, Colour colour) {
    keys.each([&](Key key) { context_.console[nameOf(key)].setBackColour(colour); });
}

void ServiceSession::movePoll(Poll poll) {
    pollHeld_ = poll == Poll::Held || (pollHeld_ && poll != Poll::Free && poll != Poll::Parked);
    // During an exposure nothing is parked: only a report gives the keys back, and one that is lost must not
    // be the last.
    const bool free = poll == Poll::Free || (poll == Poll::Unparked && !pollHeld_) ||
                      (poll == Poll::Parked && isExposure(lastPhase_));
    if (poll == Poll::Held || free) {
        context_.link.setStatusUpdateEnable(free);
    }
}

void ServiceSession::stopWait(const WaitRow& wait) {
    Timer& timer = context_.console.timer(wait.timer);
    if (timer.running() && idle() && pollHeld_) {
        movePoll(Poll::Free); // its last tick would have
    }
    timer.stop();
}

void ServiceSession::at(Moment moment) {
    const MomentRow& row = rowOf(moment);
    take(row.off);
    paint(row.atRest, context_.state.ButtonOffColor);
    paint(row.active, context_.state.ButtonOnColor);
    give(row.on);
    if (row.prompt == Prompt::Cleared) {
        screen_.clearPrompt();
    }
    if (row.caption != Caption::Stays) {
        context_.console["cmbClose"].setCaption(row.caption == Caption::Exit ? context_.texts.m_ExitCaption
                                                                             : context_.texts.scmbClose);
    }
    if (row.rx != Rx::Stays) {
        context_.link.setRXEnable(row.rx != Rx::Off);
        xRaysOwed_ = row.rx == Rx::GivenBack && !context_.link.allows("RX");
    }
    movePoll(row.poll);
    if (row.busy == Busy::Taken) {
        busy_ = true;
        context_.events.Busy.raise(1);
    } else if (row.busy == Busy::Given || (row.busy == Busy::Settled && busy_)) {
        busy_ = false;
        context_.events.Busy.raise(0);
    }
    changed.raise();
}

void ServiceSession::waitPatiently() {
    if (!patienceOver_) {
        patience_.start(kPatience);
    }
}

void ServiceSession::stopWaiting() {
    patience_.stop();
}

void ServiceSession::giveXRaysBack() {
    at(Moment::XRaysGivenBack);
    xRaysOwed_ = xRaysOwed_ || lost_;
}

void ServiceSession::openLine() {
    if (!context_.link.PortOpen()) {
        context_.link.setPortOpen(true);
    }
}

bool ServiceSession::giveUp() {
    if (!patienceOver_) {
        return false;
    }
    const std::function<void()> givenUp = hooks_.givenUp;
    if (givenUp) {
        givenUp();
    } else {
        breakOff();
    }
    return true;
}

void ServiceSession::answer(Way way) {
    const Answer answer = answerOf(run_, way);
    if (answer == Answer::Ends || (answer == Answer::Asks && hooks_.ends && hooks_.ends(way))) {
        breakOff(way == Way::Exposure ? Moment::BrokenOffByExposure : Moment::BrokenOff);
    }
}

void ServiceSession::reported(Phase phase) {
    lost_ = false;
    poweringUp_ = phase == Phase::Initialization;
    if (phase == Phase::RadExposure) {
        ++exposures_;
    }
    loan_.reported(phase);
    for (const WaitRow& wait : waitRows()) {
        if (wait.endedBy.has(phase) && !(wait.notWhileLent && lent())) {
            stopWait(wait);
        }
    }
    if (kEndsScreen.has(phase)) {
        closeScreen();
    }
    if (const std::optional<Way> way = wayOf(phase)) {
        answer(*way);
    }
    const bool elsewhere = phase == Phase::Initialization || phase == Phase::Configuration ||
                           phase == Phase::Autocalibration ||
                           (phase == Phase::Calibration && !is(Run::Lending));
    if (lent() && elsewhere) {
        loan_.takeBack();
        cancelLending(); // there is nobody to arrive at
        if (phase == Phase::Initialization) {
            showPositionerKey(); // no mode is left that would bring it
        }
    }
    if (xRaysOwed_ && isKnown(phase) && context_.link.allows("RX")) {
        xRaysOwed_ = false;
        context_.link.setRXEnable(true);
    }
}

void ServiceSession::settled(Phase phase) {
    lastPhase_ = phase;
    if (!isExposure(phase)) {
        give(std::exchange(afterExposure_, {}));
        if (patienceOver_) {
            at(Moment::PatienceIsOver);
        }
    }
    changed.raise();
}

void ServiceSession::lost() {
    lost_ = true;
    poweringUp_ = false;
    lastPhase_ = Phase::Initialization;
    afterExposure_ = {};
    for (const WaitRow& wait : waitRows()) {
        if (wait.byLoss) {
            stopWait(wait);
        }
    }
    answer(Way::Lost);
    const bool wasLent = lent();
    loan_.takeBack();
    if (wasLent) {
        showPositionerKey();
    }
}

void ServiceSession::openScreen(std::function<void()> close) {
    closeScreen();
    std::vector<Control*> keys;
    const bool offered = context_.console[nameOf(Key::ManualCalibration)].offered();
    kModeKeys.each([&](Key key) {
        keys.push_back(&context_.console[nameOf(key)]);
        if (!isServiceMode(mode_)) { // there they are the mode's
            keys.back()->setEnabled(offered);
        }
    });
    screenLock_ = ControlLock(std::move(keys));
    screenClose_ = std::move(close);
}

void ServiceSession::showPositionerKey(bool visible) {
    ShowCalibrationButton(context_, visible);
    if (!context_.console["cmdOrla"].visible() && !context_.console["cmdMultiRoom"].visible()) {
        closeScreen();
    }
}

void ServiceSession::closeScreen() {
    screenLock_.release();
    if (const auto close = std::exchange(screenClose_, {})) {
        close();
    }
}

} // namespace quillon
