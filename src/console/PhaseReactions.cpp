#include "console/PhaseReactions.h"

#include <algorithm>
#include <array>

namespace quillon {

namespace {

constexpr int kLinkControlDelay = 500; // ms from the report to the link control's panel
constexpr int kAutocalDelay = 4500;    // ms until autocalibration is handed to the operator

} // namespace

PhaseReactions::PhaseReactions(ConsoleContext& context, StartOfService& start)
    : context_(context), screen_(context), state_(context.state), console_(context.console), start_(start),
      cmdPrep_(context.console["cmdPrep"]), cmdExposure_(context.console["cmdExposure"]),
      tmrDelay_(context.console.timer("tmrDelay")) {
    tmrDelay_.setTick([this] { showLinkControl(); });
    connectSignals();
}

void PhaseReactions::connectSignals() {
    LinkEvents& events = context_.link.events();
    events.GeneratorPhaseChange.connect([this](std::int32_t phase) {
        phaseChange(phase);
        state_.m_LastPhase = phase;
    });
    events.ReadyStatusChange.connect(
        [this](bool ready) { cmdPrep_.setBackColour(ready ? kPreparationColour : state_.ButtonOffColor); });
    events.XRayStatusChange.connect([this](bool lit) { lightExposure(lit); });
    events.FlExposureStatusChange.connect([this](bool lit) { lightExposure(lit); });
    events.AutocalConfirmDismiss.connect([this] { askToConfirm(); });
    events.Beep.connect([this](const std::string&) { context_.desktop.beep(); });
    events.KVPChangeValue.connect([this](const std::string& value) { state_.m_LastKVPDisplay = value; });
    events.MASChangeDisplay.connect(
        [this](const std::string&) { context_.link.setStatusUpdateEnable(true); });
    events.PostDisplay.connect([this](const std::string& mA, const std::string& ms, const std::string& mAs) {
        if (context_.link.TempUserMode()) {
            screen_.show({"fraActualExposureParameters"});
            console_["lblActKVP"].setCaption(state_.m_LastKVPDisplay);
            console_["lblActMA"].setCaption(mA);
            console_["lblActMS"].setCaption(ms);
            console_["lblActMAS"].setCaption(mAs);
        }
    });
}

void PhaseReactions::phaseChange(std::int32_t newStatus) {
    const ConsoleTexts& texts = context_.texts;
    if (console_["lblHelp"].caption() == texts.sCommError && newStatus != 1 && newStatus != 11) {
        // It answers again. Not every phase writes words of its own over those of the loss, as these two do.
        screen_.clearPrompt();
    }
    if (state_.m_LastPhase == 11 && (newStatus == 6 || newStatus == 9) && !context_.link.answering()) {
        // It has taken its question back, and may go anywhere from here.
        screen_.clearPrompt();
        context_.link.setStatusUpdateEnable(true);
    }
    switch (newStatus) {
    case 1:
        initialization();
        break;
    case 2:
        normalOperation();
        break;
    case 3:
        preparation();
        break;
    case 4:
    case 5:
        lightExposure(true);
        break;
    case 6:
        calibration();
        break;
    case 7:
        screen_.enable({"cmbResetError"});
        break;
    case 8:
        configuration();
        break;
    case 9:
        autocalibration();
        break;
    case 11:
        screen_.prompt(std::string(texts.sPressConfirm).append(kLineBreak).append(texts.sPressDismiss));
        break;
    case 12:
        screen_.prompt(std::string(texts.sAutocal).append(kLineBreak).append(texts.sAutocalERROR));
        break;
    case 13:
        screen_.prompt(std::string(texts.sAutocal).append(kLineBreak).append(texts.sAutocalOK));
        break;
    default:
        break;
    }
    const bool fromExposure = state_.m_LastPhase == 3 || state_.m_LastPhase == 4;
    const bool result = state_.m_ServiceMode == 9 && (newStatus == 12 || newStatus == 13);
    if ((newStatus == 9 && fromExposure) || result) {
        // The operator must be able to leave once exposures were made.
        screen_.enable({"cmbAutocalibration", "cmbClose"});
    }
}

void PhaseReactions::lightPreparation(bool lit) {
    cmdPrep_.setBackColour(lit ? kPreparationColour : state_.ButtonOffColor);
    cmdPrep_.setTag(lit ? "ON" : "OFF");
}

void PhaseReactions::lightExposure(bool lit) {
    cmdExposure_.setBackColour(lit ? kExposureColour : state_.ButtonOffColor);
    cmdExposure_.setTag(lit ? "ON" : "OFF");
}

void PhaseReactions::initialization() {
    const ConsoleTexts& texts = context_.texts;
    console_["lblHelp"].setCaption(std::string(texts.sGenerator)
                                       .append(kLineBreak)
                                       .append(texts.sPoweringUp)
                                       .append(kLineBreak)
                                       .append(texts.sPleaseWait));
    lightPreparation(false);
    lightExposure(false);
    context_.link.setVisible(false);
    screen_.hide({"fraTorvaneSerial"});
    screen_.disable({"fraTorvaneSerial"});
    screen_.disable(
        {"cmbConfiguration", "cmbManualCalibration", "cmbAutocalibration", "cmbReadExposureCounters"});
    screen_.off({"cmbConfiguration", "cmbManualCalibration", "cmbAutocalibration", "cmbReadExposureCounters",
                 "cmbGoToUserMode"});
    screen_.show({"cmbConfiguration", "cmbAutocalibration", "cmbReadExposureCounters"});
    screen_.hide({"fraExposureCounters", "cmbGoToUserMode"});
    screen_.show({"imgQuillonConsole", "lblQuillonConsole"});
    state_.m_PowerUpSeen = true;
}

void PhaseReactions::normalOperation() {
    if (state_.loanCutOff) {
        state_.loanCutOff = false;
        context_.link.setTempUserMode(false);
    }
    const bool userMode = context_.link.TempUserMode();
    const bool movingToUserMode = console_.timer("tmrGotoUserMode").running();
    if (state_.m_LastPhase != 1 && state_.m_LastPhase != 7) {
        const bool workflow =
            console_.timer("tmrWaitRefresh").running() || console_.timer("tmrConfigOFF").running() ||
            console_.timer("tmrCalOFF").running() || console_.timer("tmrAutocalOFF").running();
        if (!workflow && !console_["fraExposureCounters"].visible() && !userMode) {
            screen_.enable({"cmbManualCalibration"});
        }
    } else {
        // The refresh writes the phase of before; what follows still needs to see it.
        const std::int32_t before = state_.m_LastPhase;
        start_.refreshAfterPowerUp();
        state_.m_LastPhase = before;
    }
    if (userMode && state_.m_ServiceMode == 6) {
        if (!movingToUserMode) {
            screen_.enable({"fraTorvaneSerial"});
            screen_.on({"cmbGoToUserMode"});
            screen_.show({"fraActualExposureParameters"});
            screen_.clearActualExposure();
        }
    } else if (userMode) {
        screen_.enable({"cmbManualCalibration"});
    }
    if (console_["lblHelp"].visible()) {
        screen_.clearPrompt();
    }
    if (cmdPrep_.tag() == "ON") {
        lightPreparation(false);
    }
    if (cmdExposure_.tag() == "ON") {
        lightExposure(false);
    }
    if (state_.m_LastPhase == 6 || state_.m_LastPhase == 8 || state_.m_LastPhase == 9) {
        if (!userMode) {
            context_.link.setVisible(false);
            screen_.hide({"fraTorvaneSerial"});
            screen_.disable({"fraTorvaneSerial"});
            ShowCalibrationButton(context_, true);
        }
        screen_.show({"lblQuillonConsole"});
        if (state_.GeneratorVisible) {
            screen_.show({"imgQuillonConsole"});
        }
        screen_.clearPrompt();
    }
    state_.m_ServiceMode = 2;
    if (!movingToUserMode) {
        screen_.enable({"cmbClose"});
        console_["cmbClose"].setCaption(context_.texts.scmbClose);
    }
}

void PhaseReactions::preparation() {
    if (screen_.errorOnShow()) {
        console_.timer("tmrError").stop();
        console_["lblError"].setCaption("");
        screen_.off({"cmbResetError"});
    }
    if (state_.m_LastPhase == 2) {
        screen_.hide({"fraActualExposureParameters"});
        if (context_.link.TempUserMode()) {
            screen_.clearActualExposure();
        }
    }
    lightPreparation(true);
    pollAgain();
    screen_.disable({"cmbManualCalibration", "cmbGoToUserMode", "cmbAutocalibration", "cmbConfiguration",
                     "cmbReadExposureCounters", "cmbClose"});
}

/// A cancelled choice leaves the poll off. From a preparation on only a report gives the keys back, and one
/// that is lost must not be the last.
void PhaseReactions::pollAgain() {
    constexpr std::array kHoldThePoll{"tmrConfigON",
                                      "tmrConfigOFF",
                                      "tmrCalON",
                                      "tmrCalOFF",
                                      "tmrAutocalON",
                                      "tmrAutocalOFF",
                                      "tmrReadExposureCounters",
                                      "tmrGoodbye"};
    const auto running = [this](const char* timer) { return console_.timer(timer).running(); };
    if (state_.m_ServiceMode == 2 && !context_.link.StatusUpdateEnable() &&
        std::ranges::none_of(kHoldThePoll, running)) {
        context_.link.setStatusUpdateEnable(true);
    }
}

void PhaseReactions::calibration() {
    if (!state_.m_AutocalStarting) {
        lightPreparation(false);
        if (!console_.timer("tmrAutocalOFF").running() && !state_.m_CalibrationStarting) {
            screen_.enable({"cmbManualCalibration", "cmbGoToUserMode", "cmbClose"});
            screen_.off({"cmbReadExposureCounters"});
            screen_.disable({"cmbReadExposureCounters"});
            screen_.on({"cmbManualCalibration"});
            screen_.enable({"fraTorvaneSerial"});
            screen_.off({"cmbAutocalibration", "cmbGoToUserMode"});
            console_.timer("tmrCalON").stop();
            screen_.hide({"fraActualExposureParameters", "fraExposureCounters"});
        }
    }
    if (state_.m_ServiceMode != 9) {
        screen_.hide({"lblQuillonConsole", "imgQuillonConsole"});
        tmrDelay_.start(kLinkControlDelay);
    }
    if (state_.m_ServiceMode == 2) {
        screen_.off({"cmbGoToUserMode"});
        screen_.hide({"fraActualExposureParameters"});
    }
    state_.m_ServiceMode = 6;
    console_["cmbClose"].setCaption(context_.texts.m_ExitCaption);
}

void PhaseReactions::configuration() {
    console_.timer("tmrDelayShow").stop();
    screen_.enable({"fraTorvaneSerial", "cmbConfiguration"});
    screen_.show({"cmbConfiguration"});
    screen_.on({"cmbConfiguration"});
    screen_.disable({"cmbManualCalibration", "cmbAutocalibration", "cmbReadExposureCounters"});
    screen_.off({"cmbManualCalibration", "cmbAutocalibration", "cmbReadExposureCounters", "cmbGoToUserMode"});
    screen_.show({"cmbManualCalibration", "cmbAutocalibration", "cmbReadExposureCounters"});
    screen_.hide({"cmbGoToUserMode", "lblErrorDescription"});
    screen_.enable({"cmbGoToUserMode"});
    screen_.clearPrompt();
    screen_.hide({"fraActualExposureParameters", "lblQuillonConsole", "imgQuillonConsole"});
    tmrDelay_.start(kLinkControlDelay);
    if (state_.m_CountersActive) {
        screen_.enable({"cmbClose"}); // taken by the reading, whose last answer does not come in this phase
    }
    state_.m_ServiceMode = 8;
    console_["cmbClose"].setCaption(context_.texts.m_ExitCaption);
}

void PhaseReactions::autocalibration() {
    if (state_.m_ServiceMode == 6) {
        console_.timer("tmrDelayAutocal").start(kAutocalDelay);
        screen_.hide({"lblQuillonConsole", "imgQuillonConsole"});
    }
    state_.m_ServiceMode = 9;
    console_["cmbClose"].setCaption(context_.texts.m_ExitCaption);
}

void PhaseReactions::askToConfirm() {
    screen_.enable({"fraTorvaneSerial"});
    if (!console_["fraTorvaneSerial"].visible() && state_.m_ServiceMode == 6 && !tmrDelay_.running()) {
        // The entry was given up before the generator asked; its question must be in reach all the same.
        screen_.hide({"lblQuillonConsole", "imgQuillonConsole"});
        screen_.show({"lblHelp"});
        showLinkControl();
    }
}

void PhaseReactions::showLinkControl() {
    context_.link.setVisible(true);
    screen_.show({"fraTorvaneSerial"});
    context_.link.UserControl_Show();
    tmrDelay_.stop();
    ShowCalibrationButton(context_, false);
}

} // namespace quillon
