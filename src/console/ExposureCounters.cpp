#include "console/ExposureCounters.h"

#include <algorithm>
#include <array>
#include <string>

#include "base/Text.h"
#include "model/Commands.h"

namespace quillon {

namespace {

using namespace keys;

constexpr Effects kCountersAsked{
    .off = modes | X, .poll = Poll::Held, .busy = Busy::Taken, .caption = Caption::Exit};
constexpr Effects kCountersShown{.on = R | X, .active = R, .busy = Busy::Given, .prompt = Prompt::Cleared};
constexpr Effects kCountersShownInExposure{
    .on = X, .active = R, .busy = Busy::Given, .prompt = Prompt::Cleared};
constexpr Effects kCountersIncomplete{.on = modes, .poll = Poll::Free};
constexpr Effects kCountersClosed{.on = modes | X, .atRest = R, .caption = Caption::Close};
constexpr Effects kCountersGone{.on = X, .atRest = R, .prompt = Prompt::Cleared, .caption = Caption::Close};
constexpr Effects kCountersFailed{.poll = Poll::Free, .busy = Busy::Settled};

constexpr int kReadingPace = 2000; // ms between two requests
constexpr int kResetYields = 50;

constexpr std::int32_t kTube1 = 0;
constexpr std::int32_t kTube2 = 1;
constexpr std::int32_t kFluoro = 2;
constexpr std::int32_t kTube3 = 3;

/// A counter; its row is its number on the wire.
struct CounterRow {
    std::string ConsoleState::*value;
    ConsoleControl valueLabel;
    ConsoleControl resetKey;
    std::string ConsoleTexts::*question;
};

// clang-format off
constexpr std::array kCounters{
    CounterRow{&ConsoleState::m_CounterTube1, "lblTube1",  "cmdResetT1",     &ConsoleTexts::sResetExposureCounterTube1},
    CounterRow{&ConsoleState::m_CounterTube2, "lblTube2",  "cmdResetT2",     &ConsoleTexts::sResetExposureCounterTube2},
    CounterRow{&ConsoleState::m_CounterFluoro,"lblFluoro", "cmdResetFluoro", &ConsoleTexts::sResetExposureCounterFluoro},
    CounterRow{&ConsoleState::m_CounterTube3, "lblTube3",  "cmdResetT3",     &ConsoleTexts::sResetExposureCounterTube3},
};
// clang-format on

} // namespace

ExposureCounters::ExposureCounters(ConsoleContext& context, ServiceSession& session, ConsolePanels& panels)
    : context_(context), session_(session), panels_(panels), screen_(context), state_(context.state),
      console_(context.console), tmrReadExposureCounters_(context.console.timer("tmrReadExposureCounters")),
      tmrResetTubeCounter_(context.console.timer("tmrResetTubeCounter")) {
    session_.onClick(Key::ReadCounters, [this] {
        state_.m_ProtocolError = false;
        showQuestion(false);
        ToggleExposureCounterView();
    });
    tmrReadExposureCounters_.setTick([this] { readTick(); });
    context_.link.events().ExposureCounter.connect(
        [this](std::int32_t counter, const std::string& value) { exposureCounter(counter, value); });
    bindResetKeys();
}

void ExposureCounters::ToggleExposureCounterView() {
    if (session_.countersActive()) {
        close();
    } else {
        open();
    }
}

void ExposureCounters::open() {
    if (state_.ResetCounterEnable) {
        screen_.show({"cmdResetT1", "cmdResetT2", "cmdResetFluoro"});
    }
    screen_.hide({"lblT3RAD", "lblTube3", "cmdResetT3"}); // shown when a value for tube 3 is reported
    session_.begin(Run::ReadingCounters, kCountersAsked, hooks());
    screen_.prompt(Role::Prompt, context_.texts.waitPrompt(context_.texts.sReadingExpCounters));
    tmrReadExposureCounters_.start(kReadingPace);
    step_ = 1;
}

void ExposureCounters::close() {
    if (session_.is(Run::ReadingCounters)) {
        session_.apply(effects::kCancelled); // the screen, which ends prompt and Busy, has not come up
    }
    clearScreen();
    session_.end(kCountersClosed);
}

void ExposureCounters::clearScreen() {
    showQuestion(false);
    screen_.hide({"fraExposureCounters"});
    for (const CounterRow& row : kCounters) {
        console_[row.valueLabel].setCaption("");
    }
}

RunHooks ExposureCounters::hooks() {
    return {.undo =
                [this] {
                    session_.apply(kCountersGone);
                    clearScreen();
                },
            .count =
                [this] {
                    const auto read =
                        std::count_if(kCounters.begin(), kCounters.end(), [this](const CounterRow& row) {
                            return !console_[row.valueLabel].caption().empty();
                        });
                    return Count{static_cast<int>(read), context_.link.facts().ThirdTube ? 4 : 3};
                }};
}

void ExposureCounters::readTick() {
    if (state_.m_ProtocolError) {
        abortReading();
        return;
    }
    const auto read = [this](std::int32_t counter) {
        context_.link.commands().send(command("ReadExposureCounter"), counter, true);
    };
    switch (step_) {
    case 1:
        read(kTube1);
        step_ = 2;
        break;
    case 2:
        read(kTube2);
        step_ = context_.link.facts().ThirdTube ? 3 : 4;
        break;
    case 3:
        read(kTube3);
        step_ = 4;
        break;
    case 4:
        // The last one: its answer brings the screen up.
        read(kFluoro);
        step_ = 5;
        break;
    default:
        endReading();
        break;
    }
}

void ExposureCounters::endReading() {
    tmrReadExposureCounters_.stop();
    // Without the last answer the keys are the operator's only way out.
    session_.apply(session_.is(Run::ReadingCounters) ? kCountersIncomplete : effects::kPollFree);
}

void ExposureCounters::abortReading() {
    tmrReadExposureCounters_.stop();
    if (session_.countersActive()) {
        close();
    }
    session_.apply(kCountersFailed);
    panels_.ErrorMessage(ErrorCode::Protocol);
}

void ExposureCounters::exposureCounter(std::int32_t counter, std::string_view value) {
    if (!session_.countersActive()) {
        return;
    }
    switch (counter) {
    case kTube1:
        keep(kTube1, value);
        break;
    case kTube2:
        showTubes2And3(value);
        break;
    case kFluoro:
        keep(kFluoro, value);
        showScreen();
        break;
    case kTube3:
        showThirdTube(value);
        break;
    default:
        break;
    }
}

void ExposureCounters::keep(std::int32_t counter, std::string_view value) {
    const CounterRow& row = kCounters.at(static_cast<std::size_t>(counter));
    state_.*row.value = value;
    console_[row.valueLabel].setCaption(value);
}

void ExposureCounters::showTubes2And3(std::string_view value) {
    // Some generators report the third tube behind a dash instead of under a number of its own.
    const std::string compact = without(value, ' ');
    const auto pieces = split(compact, "-");
    keep(kTube2, pieces[0]);
    if (pieces.size() > 1) {
        showThirdTube(pieces[1]);
    }
}

void ExposureCounters::showThirdTube(std::string_view value) {
    screen_.show({"lblT3RAD", "lblTube3"});
    if (state_.ResetCounterEnable) {
        screen_.show({"cmdResetT3"});
    }
    keep(kTube3, value);
}

void ExposureCounters::showScreen() {
    const bool exposing = isExposure(session_.lastPhase());
    session_.continueAs(Run::ShowingCounters, exposing ? kCountersShownInExposure : kCountersShown, hooks());
    session_.restScreen().closeScreen(); // its key goes, too
    screen_.show({"fraExposureCounters"});
    session_.restScreen().showPositionerKey(false);
}

void ExposureCounters::bindResetKeys() {
    for (std::size_t counter = 0; counter < kCounters.size(); ++counter) {
        ControlHandlers& key = console_[kCounters[counter].resetKey].on;
        const int hold = console_[kCounters[counter].resetKey].holdTime();
        key.press = [this, counter, hold] {
            tmrResetTubeCounter_.start(hold);
            state_.m_CounterToReset = static_cast<std::int32_t>(counter);
        };
        key.release = [this] { tmrResetTubeCounter_.stop(); };
        key.cancel = key.release;
    }
    tmrResetTubeCounter_.setTick([this] { askForReset(); });
    console_["cmdResetCounterNo"].on.press = [this] { showQuestion(false); };
    console_["cmdResetCounterYes"].on.press = [this] { resetCounter(); };
    context_.needs.add(console_["cmdResetCounterYes"], "TCR");
}

void ExposureCounters::askForReset() {
    const CounterRow& row = kCounters.at(static_cast<std::size_t>(state_.m_CounterToReset));
    console_["lblResetRADCounter"].setCaption(context_.texts.*row.question);
    showQuestion(true);
    tmrResetTubeCounter_.stop();
}

void ExposureCounters::showQuestion(bool show) {
    console_["fraResetCounterConfirm"].setVisible(show);
    for (const CounterRow& row : kCounters) {
        console_[row.resetKey].setEnabled(!show);
    }
}

void ExposureCounters::resetCounter() {
    const bool allowed = context_.link.allows("TCR");
    context_.link.commands().send(command("ResetExposureCounter"), state_.m_CounterToReset);
    if (!allowed) {
        return; // the question stays open until it can be answered
    }
    YieldEvents(kResetYields);
    if (session_.countersActive()) { // what was heard meanwhile may have ended them
        context_.link.commands().send(command("ReadExposureCounter"), state_.m_CounterToReset);
    }
    showQuestion(false);
}

void ExposureCounters::YieldEvents(int count) {
    for (int turn = 0; turn <= count; ++turn) {
        context_.loop.processEvents();
    }
}

} // namespace quillon
