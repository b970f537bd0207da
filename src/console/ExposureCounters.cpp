#include "console/ExposureCounters.h"

#include <array>
#include <string>

#include "base/Text.h"

namespace quillon {

namespace {

constexpr int kReadingPace = 2000; // ms between two requests
constexpr int kResetHold = 10000;  // ms a reset key has to be held
constexpr int kResetYields = 50;

constexpr std::int32_t kTube1 = 0;
constexpr std::int32_t kTube2 = 1;
constexpr std::int32_t kFluoro = 2;
constexpr std::int32_t kTube3 = 3;

/// A counter; its row is its number on the wire.
struct CounterRow {
    std::string ConsoleState::*value;
    std::string_view valueLabel;
    std::string_view resetKey;
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

ExposureCounters::ExposureCounters(ConsoleContext& context, ConsolePanels& panels)
    : context_(context), panels_(panels), screen_(context), state_(context.state), console_(context.console),
      tmrReadExposureCounters_(context.console.timer("tmrReadExposureCounters")),
      tmrResetTubeCounter_(context.console.timer("tmrResetTubeCounter")) {
    console_["cmbReadExposureCounters"].on.click = [this] {
        if (!screen_.errorOnShow() && !screen_.closing()) {
            state_.m_ProtocolError = false;
            showQuestion(false);
            ToggleExposureCounterView();
        }
    };
    tmrReadExposureCounters_.setTick([this] { readTick(); });
    context_.link.events().ExposureCounter.connect(
        [this](std::int32_t counter, const std::string& value) { exposureCounter(counter, value); });
    bindResetKeys();
}

void ExposureCounters::ToggleExposureCounterView() {
    if (state_.m_CountersActive) {
        close();
    } else {
        open();
    }
}

void ExposureCounters::open() {
    if (state_.ResetCounterEnable) {
        screen_.show({"cmdResetT1", "cmdResetT2", "cmdResetFluoro"});
    }
    screen_.disable({"cmbConfiguration", "cmbManualCalibration", "cmbAutocalibration",
                     "cmbReadExposureCounters", "cmbClose"});
    state_.m_CountersComplete = false;
    state_.m_CountersActive = true;
    context_.link.setStatusUpdateEnable(false);
    screen_.prompt(context_.texts.waitPrompt(context_.texts.sReadingExpCounters));
    tmrReadExposureCounters_.start(kReadingPace);
    state_.m_ReadCountersStep = 1;
    console_["cmbClose"].setCaption(context_.texts.m_ExitCaption);
    context_.events.Busy.raise(1);
}

void ExposureCounters::close() {
    state_.m_CountersActive = false;
    screen_.enable(
        {"cmbConfiguration", "cmbManualCalibration", "cmbAutocalibration", "cmbReadExposureCounters"});
    screen_.off({"cmbReadExposureCounters"});
    ShowCalibrationButton(context_, true);
    screen_.hide({"fraExposureCounters"});
    console_["cmbClose"].setCaption(context_.texts.scmbClose);
    screen_.enable({"cmbClose"});
    for (const CounterRow& row : kCounters) {
        console_[row.valueLabel].setCaption("");
    }
}

void ExposureCounters::readTick() {
    if (state_.m_ProtocolError) {
        abortReading();
        return;
    }
    const auto read = [this](std::int32_t counter) {
        context_.link.call("ReadExposureCounter", {counter, true});
    };
    switch (state_.m_ReadCountersStep) {
    case 1:
        read(kTube1);
        state_.m_ReadCountersStep = 2;
        break;
    case 2:
        read(kTube2);
        state_.m_ReadCountersStep = context_.link.facts().ThirdTube ? 3 : 4;
        break;
    case 3:
        read(kTube3);
        state_.m_ReadCountersStep = 4;
        break;
    case 4:
        // The last one: its answer brings the screen up.
        read(kFluoro);
        state_.m_ReadCountersStep = 5;
        break;
    default:
        endReading();
        break;
    }
}

void ExposureCounters::endReading() {
    tmrReadExposureCounters_.stop();
    if (state_.m_CountersActive && !state_.m_CountersComplete) {
        // Without the last answer this is the operator's only way out.
        screen_.enable(
            {"cmbManualCalibration", "cmbAutocalibration", "cmbConfiguration", "cmbReadExposureCounters"});
    }
    context_.link.setStatusUpdateEnable(true);
}

void ExposureCounters::abortReading() {
    tmrReadExposureCounters_.stop();
    if (state_.m_CountersActive) {
        close();
    }
    context_.link.setStatusUpdateEnable(true);
    context_.events.Busy.raise(0);
    panels_.ErrorMessage(ErrorCode::Protocol);
}

void ExposureCounters::exposureCounter(std::int32_t counter, std::string_view value) {
    if (!state_.m_CountersActive) {
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
    screen_.on({"cmbReadExposureCounters"});
    screen_.enable({"cmbReadExposureCounters"});
    state_.m_CountersComplete = true;
    screen_.show({"fraExposureCounters"});
    ShowCalibrationButton(context_, false);
    screen_.enable({"cmbClose"});
    screen_.clearPrompt();
    context_.events.Busy.raise(0);
}

void ExposureCounters::bindResetKeys() {
    for (std::size_t counter = 0; counter < kCounters.size(); ++counter) {
        ControlHandlers& key = console_[kCounters[counter].resetKey].on;
        key.press = [this, counter] {
            tmrResetTubeCounter_.start(kResetHold);
            state_.m_CounterToReset = static_cast<std::int32_t>(counter);
        };
        key.release = [this] { tmrResetTubeCounter_.stop(); };
        key.cancel = key.release;
    }
    tmrResetTubeCounter_.setTick([this] { askForReset(); });
    console_["cmdResetCounterNo"].on.press = [this] { showQuestion(false); };
    console_["cmdResetCounterYes"].on.press = [this] { resetCounter(); };
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
    context_.link.call("ResetExposureCounter", {state_.m_CounterToReset});
    if (!allowed) {
        return; // the question stands until it can be answered
    }
    YieldEvents(kResetYields);
    context_.link.call("ReadExposureCounter", {state_.m_CounterToReset});
    showQuestion(false);
}

void ExposureCounters::YieldEvents(int count) {
    for (int turn = 0; turn <= count; ++turn) {
        context_.loop.processEvents();
    }
}

} // namespace quillon
