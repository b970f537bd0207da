#include "console/ServiceSession.h"

#include <algorithm>
#include <cassert>
#include <optional>
#include <utility>

#include "base/Temporarily.h"
#include "console/PhaseTable.h"
#include "console/ServiceModes.h"

namespace quillon {

namespace {

using namespace keys;

constexpr Effects kClosePressed{.rx = Rx::Off};
constexpr Effects kXRaysGivenBack{.rx = Rx::GivenBack};
constexpr Effects kWatchdogExpired{.on = X};

constexpr int kWatchdog = 60000; // ms
constexpr int kFollowed = 5000;  // ms that the generator gets to follow the last command of a run

/// In these phases something else takes the area of a positioner's screen.
constexpr Phases kEndsScreen = Phases{Phase::Initialization} | kServiceModes | kAsksOrTells;

} // namespace

ServiceSession::ServiceSession(ConsoleContext& context)
    : context_(context), generator_(context), screen_(context), restScreen_(context), loan_(context.link),
      holdings_(context, generator_, restScreen_, [this] { return holdsPoll(); }), timers_(context.console),
      watchdog_(context.console.schedule()), followed_(context.console.schedule()) {
    followed_.setTick([this] {
        followed_.stop();
        stand();
    });
    watchdog_.setTick([this] {
        watchdog_.stop();
        watchdogExpired_ = true;
        apply(kWatchdogExpired);
    });
}

void ServiceSession::onClick(Key key, std::function<void()> work) {
    context_.console[nameOf(key)].on.click = [this, key, work = std::move(work)] {
        if (takes(key)) {
            work();
        }
    };
}

bool ServiceSession::takes(Key key) const {
    return !screen_.blocked(key) && !is(Run::Closing);
}

bool ServiceSession::isFree() const {
    return idle() || is(Run::ChoosingWorkstation) || is(Run::ChoosingAutocalibration);
}

void ServiceSession::setRun(Run run) {
    run_ = run;
    assert(timers_.onlyOf(run));
    changed.raise();
}

void ServiceSession::setNoRun(Ending ending) {
    const Run before = std::exchange(run_, Run::None);
    watchdog_.stop(); // there is nothing left to wait for
    watchdogExpired_ = false;
    if (before != Run::None) {
        ended.raise(before, givingUp_ ? Ending{Ending::Kind::GivenUp} : ending);
    }
    changed.raise();
}

bool ServiceSession::isLeaving() const {
    return is(Run::Lending) ||
           std::ranges::find(serviceModes(), run_, &ServiceMode::leaving) != serviceModes().end();
}

Count ServiceSession::count() const {
    if (hooks_.count) {
        return hooks_.count();
    }
    return {generator_.exposures(), 0};
}

bool ServiceSession::waits() const {
    return rowOf(run_).waits() && lastPhase() != Phase::ConfirmDismiss;
}

void ServiceSession::begin(Run run, const Effects& effects, RunHooks hooks) {
    assert(run != Run::None);
    const RunHooks before = std::exchange(hooks_, {});
    followed_.stop();
    stopParts();
    timers_.stopWaitsBeforeNextRun();
    if (before.undo) {
        before.undo();
    }
    hooks_ = std::move(hooks);
    began.raise();
    if (!idle()) {
        ended.raise(run_, {Ending::Kind::Cancelled});
    }
    setRun(run);
    apply(effects);
}

void ServiceSession::continueAs(Run run, const Effects& effects, RunHooks hooks) {
    watchdog_.stop();
    watchdogExpired_ = false;
    hooks_ = std::move(hooks);
    setRun(run);
    apply(effects);
}

void ServiceSession::end(const Effects& effects) {
    finish(effects);
    stand();
}

void ServiceSession::endOnTheWay(const Effects& effects) {
    finish(effects);
    if (mode() == Phase::NormalOperation) {
        stand();
    } else {
        followed_.start(kFollowed);
    }
}

void ServiceSession::finish(const Effects& effects, Ending::Kind kind) {
    generator_.setExitUnheard(generator_.isLost() && isLeaving());
    hooks_ = {};
    stopParts();
    setNoRun({kind});
    layoutOwed_ = true;
    apply(effects);
}

void ServiceSession::cancel(const Effects& effects, Ending ending) {
    assert(!idle());
    const RunHooks before = std::exchange(hooks_, {});
    stopParts();
    setNoRun(ending);
    layoutOwed_ = true;
    apply(effects);
    if (before.undo) {
        before.undo();
    }
    stand();
}

void ServiceSession::cancelLending() {
    if (!is(Run::Lending)) {
        return;
    }
    context_.console.timer("tmrGotoUserMode").stop();
    if (!lendingGoesOnLeaving()) {
        hooks_ = {};
        setNoRun({Ending::Kind::Cancelled});
        stand();
    }
}

bool ServiceSession::lendingGoesOnLeaving() {
    assert(is(Run::Lending));
    const bool leaving = timers_.running("tmrCalOFF");
    if (leaving) {
        rename(Run::LeavingCalibration);
    }
    return leaving;
}

void ServiceSession::reset() {
    hooks_ = {};
    stopParts();
    timers_.stopWaits();
    setNoRun({Ending::Kind::Dropped});
}

/// Stops and closes everything that belongs to the run.
void ServiceSession::stopParts() {
    watchdog_.stop();
    watchdogExpired_ = false;
    context_.console.timer("tmrIniAutocal").stop(); // a question may have been answered in any run
    timers_.stopOf(run_);
    for (const std::string_view panel : rowOf(run_).panels) {
        if (!panel.empty()) {
            context_.console.removeKeyed(panel);
        }
    }
}

bool ServiceSession::holdsPoll() const {
    const bool repeats =
        context_.link.timer("tmrAutoRepeat").running() || context_.link.timer("tmrAutorepFlKVP").running();
    return !generator_.isLost() &&
           (!idle() || context_.link.answering() || lastPhase() == Phase::Initialization || repeats);
}

void ServiceSession::stopWait(const WaitRow& wait) {
    Timer& timer = context_.console.timer(wait.timer);
    if (timer.running() && idle() && holdings_.pollHeld()) {
        holdings_.freePoll();
    }
    timer.stop();
}

void ServiceSession::apply(const Effects& effects) {
    holdings_.apply(effects);
    changed.raise();
}

void ServiceSession::startWatchdog() {
    assert(!idle());
    if (!watchdogExpired_) {
        watchdog_.start(kWatchdog);
    }
}

void ServiceSession::stopWatchdog() {
    watchdog_.stop();
}

void ServiceSession::closePressed() {
    xRaysAtPress_ = holdings_.allowsXRays();
    apply(kClosePressed);
}

void ServiceSession::pressCameToNothing() {
    if (xRaysAtPress_) {
        giveXRaysBack();
    }
}

void ServiceSession::giveXRaysBack() {
    apply(kXRaysGivenBack);
    if (generator_.isLost()) {
        holdings_.oweXRays();
    }
}

void ServiceSession::openLine() {
    if (!context_.link.PortOpen()) {
        context_.link.setPortOpen(true);
    }
}

void ServiceSession::giveUp() {
    assert(watchdogExpired_);
    const Temporarily givingUp(givingUp_, true);
    if (const std::function<void()> givenUp = hooks_.givenUp) {
        givenUp();
    } else {
        cancel();
    }
}

void ServiceSession::react(Stimulus stimulus) {
    const Reaction reaction = reactionOf(run_, stimulus);
    if (reaction == Reaction::Ends ||
        (reaction == Reaction::AskWorkflow && hooks_.ends && hooks_.ends(stimulus))) {
        cancel(stimulus == Stimulus::Exposure ? effects::kCancelledByExposure : effects::kCancelled,
               {Ending::Kind::Cancelled, stimulus});
    }
}

void ServiceSession::report(Phase phase, const std::function<void()>& reaction) {
    assert(!reporting_); // a reaction does not report
    {
        const Temporarily reporting(reporting_, true);
        reported(phase);
        reaction();
    }
    settled(phase);
}

void ServiceSession::reported(Phase phase) {
    generator_.heard(phase);
    loan_.reported(phase);
    for (const WaitRow& wait : waitRows()) {
        if (wait.endedBy.has(phase) && !(wait.notWhileLent && lent())) {
            stopWait(wait);
        }
    }
    if (kEndsScreen.has(phase)) {
        restScreen_.closeScreen();
    }
    if (const std::optional<Stimulus> stimulus = meaningOf(phase).stimulus) {
        react(*stimulus);
    }
    const bool elsewhere = phase == Phase::Initialization ||
                           (isServiceMode(phase) && !(phase == Phase::Calibration && is(Run::Lending)));
    if (lent() && elsewhere) {
        loan_.takeBack();
        cancelLending(); // the machine is not with its users any more
    }
    holdings_.phaseReported(phase);
}

void ServiceSession::settled(Phase phase) {
    followed_.stop();
    const bool hot = phase == Phase::TubeTooHot;
    const bool exposed = isExposure(lastPhase());
    generator_.setLastPhase(phase);
    if (hot && exposed) {
        holdings_.give(Key::Close); // a way out; the other keys come when the tube has cooled
    } else if (!hot && !isExposure(phase)) {
        holdings_.giveDelayed();
        if (exposed && is(Run::ReadingCounters) && !timers_.running("tmrReadExposureCounters")) {
            holdings_.give(Key::ReadCounters); // the only way out of a reading without an answer
        }
        if (watchdogExpired_) {
            apply(kWatchdogExpired);
        }
    }
    holdings_.noticePoll();
    if (messageOpen_ && phase == missed_) {
        belie_();
    }
    if (!hot) {
        if (!isExposure(phase) && hasNoTimer()) {
            cancel(); // the report has stopped the timer of its next step
        }
        stand();
    }
    changed.raise();
}

/// It waits for the generator, and no timer is left that would check the result.
bool ServiceSession::hasNoTimer() const {
    return rowOf(run_).waits() && !is(Run::ReadingCounters) && !timers_.running("tmrAutocalON") &&
           !timers_.anyOf(run_);
}

void ServiceSession::stand() {
    const bool follows = followed_.running() && isServiceMode(mode()) && !generator_.isLost();
    if (!idle() || follows || reporting_ || messageOpen_ || timers_.running("tmrDelayShow")) {
        return;
    }
    const StandingRow row = standingOf(heard());
    if (row.stand == Stand::Silent && lastPhase() <= Phase::Initialization) {
        return; // the start shows its own prompt
    }
    if (row.words == Says::Question && !context_.link["cmbAutocalConfirm"].visible()) {
        context_.link.repeatQuestion(); // the answer had no effect, and only another one leads on
    }
    // In a calibration that the generator began by itself the keys that are shown stay as they are.
    restScreen_.show(row, std::exchange(layoutOwed_, false) || row.stand != Stand::Calibration);
    const bool refreshes = timers_.running("tmrWaitStartGenerator") || timers_.running("tmrWaitRefresh");
    Keys due = row.inReach;
    if (row.stand == Stand::Ready && refreshes) {
        due = due.without(Key::ManualCalibration);
    }
    if (row.stand == Stand::Autocalibration && timers_.running("tmrAutocalON")) {
        due = due.without(Key::LinkControl); // the entry's next step gives it
    }
    holdings_.give(due);
}

void ServiceSession::standNow() {
    const StandingRow row = standingOf(heard());
    restScreen_.show(row, true);
    holdings_.give(row.inReach);
}

void ServiceSession::messageOpens(Phase missed, std::function<void()> belie) {
    messageOpen_ = true;
    missed_ = missed;
    belie_ = std::move(belie);
}

void ServiceSession::messageCloses() {
    assert(messageOpen_);
    messageOpen_ = false;
    apply(effects::kPollFree);
}

void ServiceSession::lost() {
    generator_.lost();
    holdings_.dropDelayed();
    for (const WaitRow& wait : waitRows()) {
        if (wait.byLoss) {
            stopWait(wait);
        }
    }
    react(Stimulus::Lost);
    loan_.takeBack();
}

void ServiceSession::openScreen(const Control& wayBack, std::function<void()> close) {
    restScreen_.closeScreen();
    const bool offered = context_.console[nameOf(Key::ManualCalibration)].offered();
    if (!isServiceMode(mode())) { // in a mode they stay as the mode has them
        kModeKeys.each([&](Key key) { context_.console[nameOf(key)].setEnabled(offered); });
    }
    restScreen_.openScreen(kModeKeys, wayBack, std::move(close));
}

} // namespace quillon
