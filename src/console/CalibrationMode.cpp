#include "console/CalibrationMode.h"

namespace quillon {

namespace {

constexpr std::string_view kPanel = "SelWSCal";
constexpr std::int32_t kNormalOperation = 2;
constexpr std::int32_t kCalibration = 6;
constexpr std::int32_t kError = 7;

// ms
constexpr int kChosenWait = 1000;      // from the choice of a workstation to its command
constexpr int kReturnWait = 2000;      // on the way back from the users, between its two commands
constexpr int kWorkstationWait = 1000; // from the workstation to the mode
constexpr int kModeWait = 2500;        // from the mode to the look at the phase
constexpr int kLeaveWait = 1000;
constexpr int kLeaveAgain = 4000;

} // namespace

CalibrationMode::CalibrationMode(ConsoleContext& context, ConsolePanels& panels)
    : context_(context), panels_(panels), screen_(context), state_(context.state),
      tmrCalON_(context.console.timer("tmrCalON")), tmrCalOFF_(context.console.timer("tmrCalOFF")) {
    context_.console["cmbManualCalibration"].on.click = [this] {
        if (screen_.closing()) {
            return;
        }
        state_.m_ProtocolError = false;
        ToggleCalibrationMode();
        context_.link.setTempUserMode(false);
        screen_.hide({"fraActualExposureParameters"});
    };
    tmrCalON_.setTick([this] { onTick(); });
    tmrCalOFF_.setTick([this] { offTick(); });
    context_.link.events().GeneratorPhaseChange.connect([this](std::int32_t phase) {
        if (isExposure(phase) && tmrCalON_.running() && !commandSent_) {
            endEntryBeforeItBegan();
        }
    });
}

void CalibrationMode::ToggleCalibrationMode() {
    if (state_.m_ServiceMode != kNormalOperation && state_.m_ServiceMode != kCalibration) {
        return;
    }
    if (state_.m_AutocalStarting) {
        return; // an exposure has given the key back in the middle of that entry
    }
    screen_.disable({"fraTorvaneSerial"});
    context_.events.Busy.raise(1);
    if (state_.m_ServiceMode == kCalibration) {
        leave();
    } else {
        enter();
    }
    screen_.disable({"cmbConfiguration", "cmbManualCalibration", "cmbGoToUserMode"});
    screen_.enable({"cmbResetError"});
    screen_.disable({"cmbAutocalibration", "cmbReadExposureCounters", "cmbClose"});
}

void CalibrationMode::leave() {
    tmrCalON_.stop();
    screen_.prompt(context_.texts.waitPrompt(context_.texts.sExitCalibration));
    context_.link.setStatusUpdateEnable(false);
    state_.m_CalOffStep = 1;
    tmrCalOFF_.start(kLeaveWait);
    if (!context_.link.TempUserMode()) {
        showModeKeys();
    }
}

void CalibrationMode::enter() {
    tmrCalOFF_.stop();
    context_.link.setStatusUpdateEnable(false);
    if (!context_.link.TempUserMode()) {
        panels_.open(kPanel, [this](ModalPanel&, std::string_view event, std::int16_t workstation) {
            if (event == "OK") {
                panels_.remove(kPanel);
                workstationChosen(workstation);
            }
        });
        ShowCalibrationButton(context_, false);
        return;
    }
    context_.link.setTempUserMode(false);
    screen_.prompt(context_.texts.waitPrompt(context_.texts.sEnterCalibration));
    context_.link.call("Workstation", {state_.m_SelectedWorkstation});
    beginEntry(kReturnWait);
    commandSent_ = true;
}

void CalibrationMode::workstationChosen(std::int16_t workstation) {
    // The panel has given back what was enabled before it came; nothing else may begin during the entry.
    screen_.disable({"cmbConfiguration", "cmbManualCalibration", "cmbGoToUserMode", "cmbAutocalibration",
                     "cmbReadExposureCounters", "cmbClose"});
    state_.m_SelectedWorkstation = workstation;
    screen_.prompt(context_.texts.waitPrompt(context_.texts.sEnterCalibration));
    context_.link.setStatusUpdateEnable(false);
    beginEntry(kChosenWait);
    if (isExposure(state_.m_LastPhase)) {
        endEntryBeforeItBegan();
    }
}

void CalibrationMode::beginEntry(int firstWait) {
    state_.m_CalOnStep = 0;
    commandSent_ = false;
    tmrCalON_.start(firstWait);
    state_.m_CalibrationStarting = true;
    screen_.hide({"cmbConfiguration", "cmbAutocalibration", "cmbReadExposureCounters"});
    screen_.show({"cmbGoToUserMode"});
}

void CalibrationMode::endEntryBeforeItBegan() {
    tmrCalON_.stop();
    context_.events.Busy.raise(0);
    state_.m_CalibrationStarting = false;
    screen_.clearPrompt();
    showModeKeys();
    context_.link.setStatusUpdateEnable(true);
    ShowCalibrationButton(context_, true);
}

void CalibrationMode::showModeKeys() {
    screen_.show({"cmbConfiguration", "cmbAutocalibration", "cmbReadExposureCounters"});
    screen_.hide({"cmbGoToUserMode"});
}

void CalibrationMode::onTick() {
    switch (state_.m_CalOnStep) {
    case 0:
        context_.link.call("Workstation", {state_.m_SelectedWorkstation});
        commandSent_ = true;
        state_.m_CalOnStep = 1;
        tmrCalON_.start(kWorkstationWait);
        break;
    case 1:
        context_.link.call("ToggleCalibrationFeature");
        state_.m_CalOnStep = 2;
        tmrCalON_.start(kModeWait);
        break;
    default:
        context_.link.setRXEnable(true);
        state_.m_CalibrationStarting = false;
        context_.link.setStatusUpdateEnable(true);
        if (state_.m_ServiceMode == kCalibration) {
            entered();
        } else {
            notEntered();
        }
        screen_.clearPrompt();
        break;
    }
}

void CalibrationMode::entered() {
    screen_.on({"cmbManualCalibration"});
    screen_.enable({"fraTorvaneSerial"});
    screen_.off({"cmbAutocalibration"});
    screen_.enable({"cmbManualCalibration", "cmbGoToUserMode"});
    screen_.off({"cmbGoToUserMode"});
    tmrCalON_.stop();
    screen_.hide({"fraActualExposureParameters"});
    screen_.enable({"cmbClose"});
    context_.events.Busy.raise(0);
}

void CalibrationMode::notEntered() {
    context_.events.Busy.raise(0);
    screen_.enable(
        {"cmbConfiguration", "cmbManualCalibration", "cmbAutocalibration", "cmbReadExposureCounters"});
    showModeKeys();
    state_.m_CalOffStep = 2;
    state_.m_AutocalStarting = false;
    if (state_.m_LastPhase == kError) {
        // The generator's own error is on show and tells more than a panel would.
        screen_.enable({"cmbClose"});
        screen_.hide({"fraTorvaneSerial"});
        ShowCalibrationButton(context_, true);
    } else {
        panels_.ErrorMessage(state_.m_ProtocolError ? ErrorCode::Protocol : ErrorCode::DipSwitch);
    }
    tmrCalON_.stop();
    screen_.enable({"cmbClose"});
}

void CalibrationMode::offTick() {
    if (state_.m_CalOffStep == 1) {
        context_.link.call("calibration", {false});
        state_.m_CalOffStep = 2;
        tmrCalOFF_.start(kLeaveAgain);
    } else {
        left();
    }
}

void CalibrationMode::left() {
    context_.link.setRXEnable(false);
    screen_.enable({"cmbAutocalibration"});
    screen_.off({"cmbAutocalibration"});
    if (!context_.link.TempUserMode()) {
        screen_.enable({"cmbManualCalibration"});
    }
    screen_.off({"cmbManualCalibration"});
    screen_.enable({"cmbConfiguration", "cmbReadExposureCounters"});
    screen_.off({"cmbConfiguration", "cmbReadExposureCounters"});
    context_.link.setStatusUpdateEnable(true);
    if (state_.m_ServiceMode == kNormalOperation) {
        tmrCalOFF_.stop();
    }
    context_.events.Busy.raise(0);
    if (state_.m_ProtocolError && state_.m_ServiceMode != kNormalOperation) {
        tmrCalOFF_.stop();
        panels_.ErrorMessage(ErrorCode::Protocol);
    }
}

} // namespace quillon
