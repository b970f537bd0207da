#include "console/ServiceSession.h"

#include <algorithm>
#include <cassert>
#include <optional>
#include <utility>

#include "base/Temporarily.h"
#include "link/LinkSilence.h"

namespace quillon {

namespace {

using namespace keys;

constexpr Moment kClosePressed{.rx = Rx::Off};
constexpr Moment kXRaysGivenBack{.rx = Rx::GivenBack};
constexpr Moment kPatienceIsOver{.on = X};

constexpr int kPatience = 60000; // ms
constexpr int kArrives = 20000;  // ms in which a generator may still go into the mode it was told
constexpr int kFollowed = 5000;  // ms that the generator gets to follow the last command of a run

/// The generator can be told whether it may make X-rays, and no exposure is under way.
constexpr Phases kTakesXRays{Phase::NormalOperation, Phase::Calibration, Phase::Configuration,
                             Phase::Autocalibration};

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

ServiceSession::ServiceSession(ConsoleContext& context)
    : context_(context), screen_(context), restScreen_(context), loan_(context.link),
      poll_(context, [this] { return holdsPoll(); }), patience_(context.console.schedule()),
      followed_(context.console.schedule()) {
    followed_.setTick([this] {
        followed_.stop();
        stand();
    });
    patience_.setTick([this] {
        patience_.stop();
        patienceOver_ = true;
        at(kPatienceIsOver);
    });
}

bool ServiceSession::isFree() const {
    return idle() || is(Run::ChoosingWorkstation) || is(Run::ChoosingAutocalibration);
}

void ServiceSession::setRun(Run run) {
    run_ = run;
    assert(ownsWhatRuns());
    if (run == Run::None) {
        patience_.stop(); // there is nothing left to wait for
        patienceOver_ = false;
    }
    changed.raise();
}

void ServiceSession::setMode(Phase mode) {
    assert(mode == Phase::Initialization || mode == Phase::NormalOperation || isServiceMode(mode));
    if (asked_ == mode) {
        asked_ = Phase::None;
    }
    if (mode_ != mode) {
        exposures_ = 0;
        wanted_ = ExposureRequest::None;
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

void ServiceSession::begin(Run run, const Moment& moment, RunHooks hooks) {
    assert(run != Run::None);
    const RunHooks before = std::exchange(hooks_, {});
    followed_.stop();
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

void ServiceSession::turn(Run run, const Moment& moment, RunHooks hooks) {
    patience_.stop();
    patienceOver_ = false;
    hooks_ = std::move(hooks);
    setRun(run);
    at(moment);
}

void ServiceSession::end(const Moment& moment) {
    finish(moment);
    stand();
}

void ServiceSession::endOnTheWay(const Moment& moment) {
    finish(moment);
    if (mode_ == Phase::NormalOperation) {
        stand();
    } else {
        followed_.start(kFollowed);
    }
}

void ServiceSession::finish(const Moment& moment) {
    exitUnheard_ = lost_ && isLeaving();
    hooks_ = {};
    stopParts();
    setRun(Run::None);
    layoutOwed_ = true;
    at(moment);
}

void ServiceSession::breakOff(const Moment& moment) {
    assert(!idle());
    const RunHooks before = std::exchange(hooks_, {});
    stopParts();
    setRun(Run::None);
    layoutOwed_ = true;
    at(moment);
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
    if (context_.console.timer("tmrCalOFF").running()) {
        become(Run::LeavingCalibration);
    } else {
        hooks_ = {};
        setRun(Run::None);
        stand();
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
    context_.console.timer("tmrIniAutocal").stop(); // a question may have been answered in any run
    const RunRow& row = rowOf(run_);
    for (const ConsoleTimer timer : row.timers) {
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

bool ServiceSession::holdsPoll() const {
    const bool repeats =
        context_.link.timer("tmrAutoRepeat").running() || context_.link.timer("tmrAutorepFlKVP").running();
    return !lost_ && (!idle() || context_.link.answering() || lastPhase_ == Phase::Initialization || repeats);
}

void ServiceSession::stopWait(const WaitRow& wait) {
    Timer& timer = context_.console.timer(wait.timer);
    if (timer.running() && idle() && poll_.held()) {
        poll_.move(Poll::Free, isExposure(lastPhase_)); // its last tick would have
    }
    timer.stop();
}

void ServiceSession::at(const Moment& moment) {
    take(moment.off);
    restScreen_.paint(moment.atRest, context_.state.ButtonOffColor);
    restScreen_.paint(moment.active, context_.state.ButtonOnColor);
    give(moment.on);
    if (moment.prompt == Prompt::Cleared) {
        screen_.clearPrompt();
    }
    restScreen_.caption(moment.caption);
    if (moment.rx != Rx::Stays) {
        context_.link.setRXEnable(moment.rx != Rx::Off);
        xRaysOwed_ = moment.rx == Rx::GivenBack && !context_.link.allows("RX");
    }
    poll_.move(moment.poll, isExposure(lastPhase_));
    poll_.notice();
    if (moment.busy == Busy::Taken) {
        busy_ = true;
        context_.events.Busy.raise(1);
    } else if (moment.busy == Busy::Given || (moment.busy == Busy::Settled && busy_)) {
        busy_ = false;
        context_.events.Busy.raise(0);
    }
    changed.raise();
}

void ServiceSession::waitPatiently() {
    assert(!idle());
    if (!patienceOver_) {
        patience_.start(kPatience);
    }
}

void ServiceSession::stopWaiting() {
    patience_.stop();
}

void ServiceSession::closePressed() {
    xRaysAtPress_ = allowsXRays();
    at(kClosePressed);
}

void ServiceSession::pressCameToNothing() {
    if (xRaysAtPress_) {
        giveXRaysBack();
    }
}

void ServiceSession::giveXRaysBack() {
    at(kXRaysGivenBack);
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
        breakOff(way == Way::Exposure ? moments::kBrokenOffByExposure : moments::kBrokenOff);
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
    lost_ = false;
    exitUnheard_ = false;
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
        restScreen_.closeScreen();
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
    }
    if (xRaysOwed_ && kTakesXRays.has(phase)) {
        xRaysOwed_ = false;
        context_.link.setRXEnable(true);
    }
}

void ServiceSession::settled(Phase phase) {
    followed_.stop();
    const bool hot = phase == Phase::TubeTooHot;
    const bool exposed = isExposure(lastPhase_);
    lastPhase_ = phase;
    if (hot && exposed) {
        give(Key::Close); // a way out; the rest comes when the tube is cold
    } else if (!hot && !isExposure(phase)) {
        give(std::exchange(afterExposure_, {}));
        if (exposed && is(Run::ReadingCounters) && !running("tmrReadExposureCounters")) {
            give(Key::ReadCounters); // the only way out of a reading without an answer, wherever this leads
        }
        if (patienceOver_) {
            at(kPatienceIsOver);
        }
    }
    poll_.notice();
    if (messageOpen_ && phase == missed_) {
        belie_();
    }
    if (!hot) {
        if (!isExposure(phase) && hasNoTimer()) {
            breakOff(); // the report has ended the wait for its next step
        }
        stand();
    }
    changed.raise();
}

/// No timer of another run runs, but the waits that may outlive theirs.
bool ServiceSession::ownsWhatRuns() const {
    const auto outlives = [](std::string_view timer) {
        const auto rows = waitRows();
        return std::any_of(rows.begin(), rows.end(),
                           [timer](const WaitRow& row) { return row.timer == timer; });
    };
    const auto& own = rowOf(run_).timers;
    for (std::size_t run = 0; run < kRuns; ++run) {
        for (const ConsoleTimer timer : rowOf(static_cast<Run>(run)).timers) {
            const bool ours =
                std::any_of(own.begin(), own.end(), [timer](std::string_view each) { return each == timer; });
            if (!timer.empty() && running(timer) && !ours && !outlives(timer)) {
                return false;
            }
        }
    }
    return true;
}

/// It waits for the generator, and nothing is left that would ever look at what has come of it.
bool ServiceSession::hasNoTimer() const {
    const RunRow& row = rowOf(run_);
    if (!row.waits || is(Run::ReadingCounters) || running("tmrAutocalON")) {
        return false;
    }
    return std::none_of(row.timers.begin(), row.timers.end(),
                        [this](ConsoleTimer timer) { return !timer.empty() && running(timer); });
}

void ServiceSession::asked(Phase mode) {
    asked_ = mode;
    askedAt_ = context_.console.schedule().now();
}

Phase ServiceSession::onTheWayTo() const {
    const bool may =
        context_.console.schedule().now() - askedAt_ < kArrives || context_.link.silence().quiet();
    return mode_ == Phase::NormalOperation && may ? asked_ : Phase::None;
}

Heard ServiceSession::heard() const {
    return {mode_, lastPhase_, lost_, poweringUp_, lent(), wanted_, exitUnheard_};
}

bool ServiceSession::running(ConsoleTimer timer) const {
    return context_.console.timer(timer).running();
}

void ServiceSession::stand() {
    const bool follows = followed_.running() && isServiceMode(mode_) && !lost_;
    if (!idle() || follows || reporting_ || messageOpen_ || running("tmrDelayShow")) {
        return;
    }
    const StandingRow row = standingOf(heard());
    if (row.stand == Stand::Silent && lastPhase_ <= Phase::Initialization) {
        return; // the start has the screen
    }
    if (row.words == Says::Question && !context_.link["cmbAutocalConfirm"].visible()) {
        context_.link.repeatQuestion(); // its answer came to nothing, and nothing else leads it on
    }
    // In a calibration that the generator began by itself they are on show as left.
    restScreen_.show(row, std::exchange(layoutOwed_, false) || row.stand != Stand::Calibration);
    const bool refreshes = running("tmrWaitStartGenerator") || running("tmrWaitRefresh");
    Keys due = row.inReach;
    if (row.stand == Stand::Ready && refreshes) {
        due = due.without(Key::ManualCalibration);
    }
    if (row.stand == Stand::Autocalibration && running("tmrAutocalON")) {
        due = due.without(Key::LinkControl); // its next look gives it
    }
    give(due);
}

void ServiceSession::standNow() {
    const StandingRow row = standingOf(heard());
    restScreen_.show(row, true);
    give(row.inReach);
}

void ServiceSession::messageOpens(Phase missed, std::function<void()> belie) {
    messageOpen_ = true;
    missed_ = missed;
    belie_ = std::move(belie);
}

void ServiceSession::messageCloses() {
    assert(messageOpen_);
    messageOpen_ = false;
    at(moments::kPollFree);
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
    loan_.takeBack();
}

void ServiceSession::openScreen(const Control& wayBack, std::function<void()> close) {
    restScreen_.closeScreen();
    const bool offered = context_.console[nameOf(Key::ManualCalibration)].offered();
    if (!isServiceMode(mode_)) { // there they are the mode's
        kModeKeys.each([&](Key key) { context_.console[nameOf(key)].setEnabled(offered); });
    }
    restScreen_.openScreen(kModeKeys, wayBack, std::move(close));
}

} // namespace quillon
