#include "console/ServiceSession.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "link/LinkSilence.h"

namespace quillon {

namespace {

constexpr int kPatience = 60000;   // ms
constexpr int kArrives = 20000;    // ms in which a generator may still go into the mode it was told
constexpr int kFollowed = 5000;    // ms that the generator gets to follow the last command of a run
constexpr int kPollAway = 30000;   // ms that the poll may be away with nothing that holds it

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
    : context_(context), screen_(context), loan_(context.link), patience_(context.console.schedule()),
      pollWatch_(context.console.schedule()), followed_(context.console.schedule()) {
    pollWatch_.setTick([this] { watchPoll(); });
    followed_.setTick([this] {
        followed_.stop();
        stand();
    });
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
    if (asked_ == mode) {
        asked_ = Phase::None;
    }
    if (mode_ != mode) {
        exposures_ = 0;
        exposes_ = false;
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
    followed_.stop();
    withReady_ = {};
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
    finish(moment);
    stand();
}

void ServiceSession::endWithKeysLeft(Moment moment) {
    finish(moment);
    stand(mode_ == Phase::Configuration && !lost_);
}

void ServiceSession::endOnTheWay(Moment moment) {
    finish(moment);
    if (mode_ == Phase::NormalOperation) {
        stand();
    } else {
        followed_.start(kFollowed);
    }
}

void ServiceSession::finish(Moment moment) {
    exitUnheard_ = lost_ && isLeaving();
    hooks_ = {};
    stopParts();
    setRun(Run::None);
    layoutOwed_ = true;
    at(moment);
    if (mode_ != Phase::NormalOperation) {
        withReady_ = rowOf(moment).on.only(kModeKeys);
    }
}

void ServiceSession::breakOff(Moment moment) {
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
    if (poll == Poll::Stays) {
        return;
    }
    pollParked_ = poll == Poll::Parked && !free;
    if (poll == Poll::Held || pollParked_) {
        pollWatch_.start(kPollAway);
    }
}

/// A run that holds the poll frees it itself, and so does an answer. What else keeps it away lasts no longer
/// than this.
void ServiceSession::noticePoll() {
    if (context_.link.StatusUpdateEnable() && !context_.link.polls() && !pollWatch_.running()) {
        pollWatch_.start(kPollAway);
    }
}

void ServiceSession::watchPoll() {
    const bool held = !idle() || context_.link.answering() || lastPhase_ == Phase::Initialization ||
                      context_.link.timer("tmrAutoRepeat").running() ||
                      context_.link.timer("tmrAutorepFlKVP").running();
    const bool byHost = !context_.link.StatusUpdateEnable() && !pollHeld_ && !pollParked_;
    if (context_.link.polls() || byHost || !context_.link.PortOpen()) {
        pollWatch_.stop();
    } else if (!held || lost_) {
        pollWatch_.stop();
        pollHeld_ = false;
        pollParked_ = false;
        context_.link.pollAgain();
    } else {
        pollWatch_.start(kPollAway);
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
    noticePoll();
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

void ServiceSession::closePressed() {
    xRaysAtPress_ = context_.link.mirror().RXEnable || xRaysOwed_;
    at(Moment::ClosePressed);
}

void ServiceSession::pressCameToNothing() {
    if (xRaysAtPress_) {
        giveXRaysBack();
    }
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
    reporting_ = true;
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
    }
    if (xRaysOwed_ && kTakesXRays.has(phase)) {
        xRaysOwed_ = false;
        context_.link.setRXEnable(true);
    }
}

void ServiceSession::settled(Phase phase) {
    reporting_ = false;
    followed_.stop();
    lastPhase_ = phase;
    if (!isExposure(phase)) {
        give(std::exchange(afterExposure_, {}));
        if (patienceOver_) {
            at(Moment::PatienceIsOver);
        }
    }
    noticePoll();
    if (messageClose_ && phase == messageBelied_) {
        const auto close = messageClose_;
        close();
    }
    if (phase != Phase::TubeTooHot) {
        if (!isExposure(phase) && hasNoTimer()) {
            breakOff(); // the report has ended the wait for its next step
        }
        stand();
    }
    changed.raise();
}

/// It waits for the generator, and nothing is left that would ever look at what has come of it.
bool ServiceSession::hasNoTimer() const {
    const RunRow& row = rowOf(run_);
    if (!row.waits || is(Run::ReadingCounters) || running("tmrAutocalON")) {
        return false;
    }
    return std::none_of(row.timers.begin(), row.timers.end(),
                        [this](std::string_view timer) { return !timer.empty() && running(timer); });
}

void ServiceSession::asked(Phase mode) {
    asked_ = mode;
    askedAt_ = context_.console.schedule().now();
}

Phase ServiceSession::onTheWayTo() const {
    const bool may = context_.console.schedule().now() - askedAt_ < kArrives || context_.link.silence().quiet();
    return mode_ == Phase::NormalOperation && may ? asked_ : Phase::None;
}

Heard ServiceSession::heard() const {
    return {mode_, lastPhase_, lost_, poweringUp_, lent(), exposes_, exitUnheard_};
}

bool ServiceSession::running(std::string_view timer) const {
    return context_.console.timer(timer).running();
}

void ServiceSession::stand() {
    stand(false);
}

void ServiceSession::stand(bool keysLeft) {
    if (followed_.running() && isServiceMode(mode_) && !lost_) {
        return;
    }
    if (!idle() || reporting_ || messageClose_ || running("tmrDelayShow")) {
        return;
    }
    const StandingRow row = standingOf(heard());
    if (row.stand == Stand::Silent && lastPhase_ <= Phase::Initialization) {
        return; // the start has the screen
    }
    if (row.area == Area::Picture) {
        showPicture();
    } else {
        if (row.stand != Stand::WithUsers) { // the report of Ready leaves it behind the link control
            hidePicture();
        }
        if (!context_.console["fraTorvaneSerial"].visible() && !running("tmrDelay")) {
            showLinkControl();
        }
    }
    const bool refreshes = running("tmrWaitStartGenerator") || running("tmrWaitRefresh");
    const bool entering = running("tmrAutocalON"); // its next look gives the link control
    const Keys waits = (row.stand == Stand::Ready && refreshes ? Keys(Key::ManualCalibration) : Keys()) |
                       (entering && mode_ == Phase::Autocalibration ? Keys(Key::LinkControl) : Keys());
    if (isExposure(lastPhase_)) {
        give(row.inReach.only(Key::LinkControl)); // the others come with its end
    } else {
        if (!keysLeft) {
            take(row.outOfReach);
        }
        give(row.inReach.without(waits));
        if (row.stand == Stand::Ready) {
            give(std::exchange(withReady_, {}));
        }
    }
    if (std::exchange(layoutOwed_, false) || row.stand != Stand::Calibration) {
        screen_.show(row.shown);
        screen_.hide(row.hidden);
    }
    paint((kModeKeys | Key::GoToUserMode).without(row.lit), context_.state.ButtonOffColor);
    paint(row.lit, context_.state.ButtonOnColor);
    if (row.caption != Caption::Stays) {
        context_.console["cmbClose"].setCaption(row.caption == Caption::Exit ? context_.texts.m_ExitCaption
                                                                             : context_.texts.scmbClose);
    }
    say(row.words);
    if (row.positioner == Offer::Hidden || (row.positioner == Offer::Shown && positionerKeyAway_)) {
        showPositionerKey(row.positioner == Offer::Shown);
    }
    if (row.rx == Rx::On && !context_.link.mirror().RXEnable && !running("tmrShutdown")) {
        context_.link.setRXEnable(true);
    }
}

void ServiceSession::say(Says words) {
    const ConsoleTexts& texts = context_.texts;
    switch (words) {
    case Says::None:
        screen_.clearPrompt();
        break;
    case Says::Lost:
        screen_.prompt(Role::Alarm, texts.sCommError);
        break;
    case Says::Question:
        if (!context_.link["cmbAutocalConfirm"].visible()) {
            context_.link.repeatQuestion(); // its answer came to nothing, and nothing else leads it on
        }
        screen_.prompt(Role::Prompt,
                       std::string(texts.sPressConfirm).append(kLineBreak).append(texts.sPressDismiss));
        break;
    case Says::Expose:
        screen_.prompt(Role::Prompt, texts.sPressPrepExpose);
        break;
    case Says::Result: {
        const bool ok = lastPhase_ == Phase::AutocalOk;
        screen_.prompt(ok ? Role::Good : Role::Alarm, std::string(texts.sAutocal)
                                                          .append(kLineBreak)
                                                          .append(ok ? texts.sAutocalOK : texts.sAutocalERROR));
        break;
    }
    case Says::AsLeft:
    case Says::PoweringUp: // is written with the report, and comes into sight by itself
        break;
    }
}

void ServiceSession::showLinkControl() {
    hidePicture();
    context_.link.setVisible(true);
    screen_.show({"fraTorvaneSerial"});
    context_.link.UserControl_Show();
    context_.console.timer("tmrDelay").stop();
    closeScreen(); // its key goes, too
    showPositionerKey(false);
}

void ServiceSession::showPicture() {
    context_.console.timer("tmrDelay").stop();
    context_.link.setVisible(false);
    screen_.hide({"fraTorvaneSerial"});
    screen_.show({"lblQuillonConsole"});
    if (context_.state.GeneratorVisible) {
        screen_.show({"imgQuillonConsole"});
    }
}

void ServiceSession::hidePicture() {
    screen_.hide({"lblQuillonConsole", "imgQuillonConsole"});
}

void ServiceSession::messageOpens(std::function<void()> close, Phase belied) {
    messageClose_ = std::move(close);
    messageBelied_ = belied;
}

void ServiceSession::messageCloses() {
    messageClose_ = {};
    at(Moment::MessageAcknowledged);
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
    screenLock_ = ControlLock(keys);
    screenClose_ = std::move(close);
}

void ServiceSession::showPositionerKey(bool visible) {
    positionerKeyAway_ = !visible;
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
