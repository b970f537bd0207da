#include "console/AutocalibrationMode.h"

namespace quillon {

namespace {

constexpr std::string_view kSelectWorkstation = "SelWSAutocal";
constexpr std::string_view kSelectPoint = "AutocalSelFocusOrParameter";
constexpr std::string_view kWarning = "AutocalWarning";
constexpr std::string_view kOk = "OK";

// Steps of tmrAutocalON, and how long each gives the generator, in ms.
constexpr std::int32_t kSendWorkstation = 1;
constexpr std::int32_t kSendCalibration = 2;
constexpr std::int32_t kSeek = 3;
constexpr std::int32_t kSendAutocalibration = 4;
constexpr std::int32_t kWait = 5;

constexpr int kEntryDelay = 500;
constexpr int kWorkstationTime = 3000;
constexpr int kCalibrationTime = 3000;
constexpr int kSeekPace = 500;      // one answer of the generator before the next decision
constexpr int kSlowSeekPace = 4000; // for a generator whose answer took longer than that
constexpr int kFocusFoundTime = 2000;
constexpr int kParameterFoundTime = 4000;
constexpr int kWaitPace = 5000;
constexpr std::int16_t kWaitLimit = 20; // ticks

// Steps of tmrAutocalOFF.
constexpr std::int32_t kStopAutocalibration = 0;
constexpr std::int32_t kStopCalibration = 1;
constexpr std::int32_t kFinish = 2;

constexpr int kExitDelay = 1000;
constexpr int kStationsStopTime = 15000;
constexpr int kParameterStopTime = 20000;

constexpr int kBlinkPace = 500;

} // namespace

AutocalibrationMode::AutocalibrationMode(ConsoleContext& context, ConsolePanels& panels)
    : context_(context), panels_(panels), screen_(context), state_(context.state), link_(context.link),
      lblHelp_(context.console["lblHelp"]), tmrAutocalON_(context.console.timer("tmrAutocalON")),
      tmrAutocalOFF_(context.console.timer("tmrAutocalOFF")),
      tmrDelayAutocal_(context.console.timer("tmrDelayAutocal")),
      tmrIniAutocal_(context.console.timer("tmrIniAutocal")) {
    context_.console["cmbAutocalibration"].on.click = [this] {
        if (!screen_.errorOnShow() && !screen_.closing()) {
            state_.m_ProtocolError = false;
            ToggleAutocalibrationMode();
        }
    };
    tmrAutocalON_.setTick([this] { onTick(); });
    tmrAutocalOFF_.setTick([this] { offTick(); });
    tmrDelayAutocal_.setTick([this] { handOver(); });
    tmrIniAutocal_.setTick([this] { blink(); });
    connectSignals();
}

void AutocalibrationMode::connectSignals() {
    LinkEvents& events = link_.events();
    events.AutocalibrationConfirm.connect([this] { confirmed(); });
    events.AutocalibrationDismiss.connect([this] { dismissed(); });
    events.AutocalibrationACK.connect([this](bool on) { acknowledged(on); });
    events.GeneratorPhaseChange.connect([this](std::int32_t phase) { phaseReported(phase); });
}

void AutocalibrationMode::ToggleAutocalibrationMode() {
    if (state_.m_ServiceMode == 2) {
        link_.setStatusUpdateEnable(false);
        screen_.disable({"fraTorvaneSerial"});
        context_.events.Busy.raise(1);
        askWorkstation();
    } else if (state_.m_ServiceMode == 9) {
        leave();
    }
}

void AutocalibrationMode::askWorkstation() {
    panels_.open(kSelectWorkstation, [this](ModalPanel&, std::string_view event, std::int16_t workstation) {
        if (event == kOk) {
            panels_.remove(kSelectWorkstation);
            state_.m_SelectedWorkstation = workstation;
            askPoint();
        }
    });
    ShowCalibrationButton(context_, false);
}

void AutocalibrationMode::askPoint() {
    panels_.open(kSelectPoint, [this](ModalPanel& panel, std::string_view event, std::int16_t) {
        if (event != kOk) {
            cancelled(kSelectPoint);
            return;
        }
        state_.m_SelAutocalmA = panel.get<bool>("SelAutocalmA");
        state_.m_AutocalSmallFocus = panel.get<bool>("SmallFocus");
        state_.m_AutocalLargeFocus = panel.get<bool>("LargeFocus");
        state_.m_AutocalParameter = panel.get<std::int16_t>("AutocalParameter");
        panels_.remove(kSelectPoint);
        warn();
    });
    ShowCalibrationButton(context_, false);
}

void AutocalibrationMode::warn() {
    panels_.open(kWarning, [this](ModalPanel&, std::string_view event, std::int16_t) {
        if (event != kOk) {
            cancelled(kWarning);
            return;
        }
        panels_.remove(kWarning);
        enter();
    });
}

void AutocalibrationMode::cancelled(std::string_view key) {
    context_.events.Busy.raise(0);
    panels_.remove(key);
    ShowCalibrationButton(context_, true);
}

void AutocalibrationMode::enter() {
    screen_.disable({"fraTorvaneSerial"});
    screen_.prompt(context_.texts.waitPrompt(context_.texts.sEnterAutocal));
    link_.setStatusUpdateEnable(false);
    state_.m_AutocalStarting = true;
    state_.m_AutocalOnStep = kSendWorkstation;
    seekPace_ = kSeekPace;
    tmrAutocalON_.start(kEntryDelay);
    disableModeButtons();
    if (isExposure(state_.m_LastPhase)) {
        endEntryBeforeItBegan();
    }
}

void AutocalibrationMode::onTick() {
    switch (state_.m_AutocalOnStep) {
    case kSendWorkstation:
        link_.call("Workstation", {state_.m_SelectedWorkstation});
        state_.m_AutocalOnStep = kSendCalibration;
        tmrAutocalON_.start(kWorkstationTime);
        break;
    case kSendCalibration:
        link_.call("ToggleCalibrationFeature");
        state_.m_AutocalOnStep = kSeek;
        tmrAutocalON_.start(kCalibrationTime);
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
    if (state_.m_ServiceMode != 6) {
        calibrationRefused();
    } else if (atPoint()) {
        pointFound();
    } else {
        state_.m_AutocalOnStep = kSeek;
        tmrAutocalON_.setInterval(seekPace_);
        stepTowardsPoint();
    }
}

bool AutocalibrationMode::atPoint() const {
    const GeneratorState& mirror = link_.mirror();
    const bool onParameter = mirror.m_CalibrationType > 0;
    if (!state_.m_SelAutocalmA) {
        return onParameter && mirror.m_CalibrationParameter == state_.m_AutocalParameter;
    }
    // A parameter may keep the focus of the station before it. What is calibrated must be what was asked for.
    const bool onFocus = (state_.m_AutocalLargeFocus && mirror.m_LargeFocus == 1) ||
                         (state_.m_AutocalSmallFocus && mirror.m_SmallFocus == 1);
    return onFocus && !onParameter;
}

void AutocalibrationMode::pointFound() {
    state_.m_AutocalOnStep = kSendAutocalibration;
    tmrAutocalON_.setInterval(state_.m_SelAutocalmA ? kFocusFoundTime : kParameterFoundTime);
    if (!state_.m_SelAutocalmA) {
        link_.Flush();
    }
}

void AutocalibrationMode::stepTowardsPoint() {
    const GeneratorState& mirror = link_.mirror();
    const bool onStation = mirror.m_CalibrationType == 0;
    if (!state_.m_SelAutocalmA) {
        // The parameters lie behind the stations.
        const bool up = onStation || state_.m_AutocalParameter > mirror.m_CalibrationParameter;
        link_.call(up ? "MAUp" : "MADown");
    } else if (!onStation) {
        link_.call("MADown");
    } else if (link_.facts().SolapeFocos) {
        // The stations of the focal spots overlap: no number of steps leads from one to the other.
        link_.call("ToggleFocus");
    } else {
        link_.call(state_.m_AutocalSmallFocus ? "MADown" : "MAUp");
    }
}

void AutocalibrationMode::askForAutocalibration() {
    if (!atPoint()) {
        // The answer to a step came after the look that found the point: the list has gone past it.
        seekPace_ = kSlowSeekPace;
        seekTick();
        return;
    }
    link_.call("ToggleAutocalibrationFeature");
    state_.m_AutocalWaitCount = 1;
    state_.m_AutocalOnStep = kWait;
    tmrAutocalON_.setInterval(kWaitPace);
}

void AutocalibrationMode::waitTick() {
    link_.setRXEnable(true);
    ++state_.m_AutocalWaitCount;
    if (state_.m_LastPhase == 11) {
        // The operator may take any time to answer.
        state_.m_AutocalWaitCount = 0;
    } else if (state_.m_AutocalWaitCount == kWaitLimit ||
               (state_.m_ProtocolError && state_.m_ServiceMode != 9)) {
        generatorNeverCame();
    } else if (state_.m_ServiceMode == 9) {
        modeReached();
    }
}

void AutocalibrationMode::modeReached() {
    tmrIniAutocal_.stop();
    link_.setStatusUpdateEnable(true);
    tmrAutocalON_.stop();
    screen_.enable({"fraTorvaneSerial"});
    if (!tmrDelayAutocal_.running()) {
        // A generator that came by way of Ready is never handed over; the console must close all the same.
        state_.m_AutocalStarting = false;
    }
}

void AutocalibrationMode::calibrationRefused() {
    const std::int16_t code = state_.m_ProtocolError ? ErrorCode::Protocol : ErrorCode::DipSwitch;
    giveUpEntry();
    panels_.ErrorMessage(code);
}

void AutocalibrationMode::generatorNeverCame() {
    giveUpEntry();
    screen_.hide({"fraTorvaneSerial"});
    ShowCalibrationButton(context_, true);
    panels_.ErrorMessage(ErrorCode::Protocol);
}

void AutocalibrationMode::giveUpEntry() {
    tmrAutocalON_.stop();
    tmrIniAutocal_.stop();
    context_.events.Busy.raise(0);
    state_.m_AutocalStarting = false;
    enableModeButtons();
    state_.m_AutocalOffStep = kFinish;
    screen_.clearPrompt();
}

void AutocalibrationMode::endEntryBeforeItBegan() {
    tmrAutocalON_.stop();
    context_.events.Busy.raise(0);
    state_.m_AutocalStarting = false;
    screen_.clearPrompt();
    link_.setStatusUpdateEnable(true);
    ShowCalibrationButton(context_, true);
}

void AutocalibrationMode::handOver() {
    state_.m_AutocalStarting = false;
    tmrDelayAutocal_.stop();
    tmrIniAutocal_.stop();
    screen_.on({"cmbAutocalibration"});
    screen_.enable({"cmbClose"});
    link_.setStatusUpdateEnable(true);
    screen_.enable({"cmbAutocalibration"});
    screen_.prompt(context_.texts.sPressPrepExpose);
    context_.events.Busy.raise(0);
}

void AutocalibrationMode::confirmed() {
    if (state_.m_LastPhase <= 2) {
        return; // the generator took its question back while the finger was on the key
    }
    screen_.disable({"fraTorvaneSerial"});
    lblHelp_.setCaption(initPrompt());
    tmrIniAutocal_.start(kBlinkPace);
}

void AutocalibrationMode::blink() {
    lblHelp_.setCaption(lblHelp_.caption().empty() ? initPrompt() : std::string());
}

void AutocalibrationMode::dismissed() {
    tmrIniAutocal_.stop();
    screen_.disable({"fraTorvaneSerial"});
    screen_.prompt(context_.texts.waitPrompt(context_.texts.sStopAutocal));
}

void AutocalibrationMode::acknowledged(bool on) {
    // The step stays behind when the entry has ended, so this shortens the ordinary exit as well. Once all of
    // it is over, a generator that says so again ends nothing.
    const bool autocalibrating = tmrAutocalON_.running() || tmrAutocalOFF_.running() || link_.answering() ||
                                 state_.m_ServiceMode == 9 || state_.m_LastPhase >= 11;
    if (on || state_.m_AutocalOnStep != kWait || !autocalibrating) {
        return;
    }
    screen_.disable({"fraTorvaneSerial"});
    screen_.prompt(exitPrompt());
    state_.m_AutocalStarting = false;
    startLeaving(kStopCalibration);
}

void AutocalibrationMode::phaseReported(std::int32_t phase) {
    leftUnheard_ = false;
    if (isExposure(phase) && tmrAutocalON_.running() && state_.m_AutocalOnStep == kSendWorkstation) {
        endEntryBeforeItBegan();
    }
    // These phases put words of their own on the prompt line, or take it away.
    if (phase == 1 || phase == 2 || phase >= 11) {
        tmrIniAutocal_.stop();
    }
}

void AutocalibrationMode::leave() {
    screen_.disable({"fraTorvaneSerial"});
    screen_.prompt(exitPrompt());
    state_.m_AutocalStarting = false;
    state_.m_CalibrationStarting = false;
    startLeaving(kStopAutocalibration);
    disableModeButtons();
    context_.events.Busy.raise(1);
}

void AutocalibrationMode::startLeaving(std::int32_t step) {
    tmrIniAutocal_.stop();
    link_.setStatusUpdateEnable(false);
    state_.m_AutocalOffStep = step;
    tmrAutocalOFF_.start(kExitDelay);
}

void AutocalibrationMode::offTick() {
    switch (state_.m_AutocalOffStep) {
    case kStopAutocalibration:
        link_.call("Autocalibration", {false});
        state_.m_AutocalOffStep = kStopCalibration;
        tmrAutocalOFF_.start(state_.m_SelAutocalmA ? kStationsStopTime : kParameterStopTime);
        break;
    case kStopCalibration:
        if (state_.m_LastPhase == 6 || state_.m_LastPhase == 7) {
            link_.call("calibration", {false});
            state_.m_AutocalOffStep = kFinish;
        } else {
            endLeaving();
            if (leftUnheard_) {
                link_.setStatusUpdateEnable(true); // left twice, and no answer: it has to be asked
            }
            leftUnheard_ = true;
            reportUnfinished();
        }
        break;
    default:
        endLeavingAfterCalibration();
        reportUnfinished();
        break;
    }
}

void AutocalibrationMode::endLeaving() {
    tmrAutocalOFF_.stop();
    tmrIniAutocal_.stop();
    context_.events.Busy.raise(0);
    state_.m_AutocalStarting = false;
    enableModeButtons();
    screen_.off({"cmbAutocalibration"});
    screen_.clearPrompt();
}

void AutocalibrationMode::endLeavingAfterCalibration() {
    link_.setRXEnable(false);
    endLeaving();
    tmrAutocalON_.stop();
    tmrDelayAutocal_.stop(); // nobody is to be asked for an exposure in Ready
    if (state_.m_LastPhase == 2) {
        link_.setStatusUpdateEnable(true);
    } else {
        screen_.hide({"fraTorvaneSerial"});
        ShowCalibrationButton(context_, true);
    }
}

void AutocalibrationMode::reportUnfinished() {
    if (state_.m_ProtocolError && state_.m_LastPhase != 2) {
        panels_.ErrorMessage(ErrorCode::Protocol);
    }
}

void AutocalibrationMode::enableModeButtons() {
    screen_.enable({"cmbConfiguration", "cmbManualCalibration", "cmbAutocalibration",
                    "cmbReadExposureCounters", "cmbClose"});
}

void AutocalibrationMode::disableModeButtons() {
    screen_.disable({"cmbConfiguration", "cmbManualCalibration", "cmbAutocalibration",
                     "cmbReadExposureCounters", "cmbClose"});
}

std::string AutocalibrationMode::exitPrompt() const {
    const ConsoleTexts& texts = context_.texts;
    const bool aborted = state_.m_LastPhase != 13 && link_.get<std::int32_t>("CalibrationType") == 0;
    return texts.waitPrompt(aborted ? texts.sStopAutocal : texts.sExitAutocal);
}

std::string AutocalibrationMode::initPrompt() const {
    return context_.texts.waitPrompt(context_.texts.sInitAutocal);
}

} // namespace quillon
