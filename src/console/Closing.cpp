#include "console/Closing.h"

#include <utility>

#include "base/Text.h"

namespace quillon {

namespace {

constexpr int kGoodbyeDelay = 1000; // ms
constexpr int kLeaveTime = 3000;    // ms that a mode gets to be left when the system ends the program
constexpr int kShutdownHold = 4000; // ms the key has to be held

constexpr std::string_view kShutdownTitle = "Torvane Generator Service";
constexpr std::string_view kShutdownQuestion = "Close the port and restart the PC?";

/// Anywhere on the command line this keeps the PC on.
constexpr std::string_view kKeepPcOn = "-d";

} // namespace

Closing::Closing(ConsoleContext& context, const Modes& modes)
    : context_(context), screen_(context), state_(context.state), modes_(modes),
      tmrGoodbye_(context.console.timer("tmrGoodbye")), tmrShutdown_(context.console.timer("tmrShutdown")) {
    ControlHandlers& key = context_.console["cmbClose"].on;
    key.press = [this] { closePressed(); };
    key.release = [this] { tmrShutdown_.stop(); };
    key.click = [this] { closeClicked(); };
    key.abandon = [this] { giveBack(); };
    // A box has come up, perhaps this key's own question: it must not be asked once more behind it.
    key.cancel = [this] {
        tmrShutdown_.stop();
        giveBack();
    };
    LinkEvents& events = context_.link.events();
    events.WrongPhase.connect([this](const std::string&) { refused_ = true; });
    events.GeneratorPhaseChange.connect([this](std::int32_t phase) { phaseReported(phase); });
    context_.operations.add("LeaveNow", [this] { LeaveNow(); });
    tmrGoodbye_.setTick([this] { goodbyeTick(); });
    tmrShutdown_.setTick([this] { shutdownTick(); });
}

void Closing::closePressed() {
    if (screen_.closing()) {
        return;
    }
    owed_ = false;
    context_.link.setRXEnable(false);
    tmrShutdown_.start(kShutdownHold);
}

void Closing::giveBack() {
    if (!screen_.closing()) { // which gives back by itself
        allowRays();
    }
}

void Closing::allowRays() {
    refused_ = false;
    context_.link.setRXEnable(true);
    owed_ = refused_;
}

void Closing::phaseReported(std::int32_t phase) {
    if (leaving_) {
        if (std::exchange(stood_, phase) != phase) {
            leave(phase);
        }
        screen_.prompt(context_.texts.sClosing);
    }
    if (owed_ && (phase == 2 || phase == 6 || phase == 8 || phase == 9)) {
        allowRays();
    }
}

void Closing::closeClicked() {
    if (screen_.errorOnShow() || screen_.closing()) {
        return;
    }
    if (state_.m_ServiceMode == 8) {
        modes_.configuration.ToggleConfigurationMode();
    } else if (state_.m_ServiceMode == 6) {
        modes_.calibration.ToggleCalibrationMode();
        context_.link.setTempUserMode(false);
    } else if (state_.m_ServiceMode == 9) {
        modes_.autocalibration.ToggleAutocalibrationMode();
    } else if (state_.m_CountersActive) {
        modes_.counters.ToggleExposureCounterView();
    } else if (context_.link.TempUserMode()) {
        state_.m_ProtocolError = false;
        modes_.calibration.ToggleCalibrationMode();
        context_.link.setTempUserMode(false);
    } else if (!state_.m_AutocalStarting) {
        close();
    }
}

void Closing::close() {
    screen_.prompt(context_.texts.sClosing);
    context_.link.setTempUserMode(false);
    screen_.hide({"cmbReadExposureCounters", "cmbGoToUserMode"});
    screen_.show({"cmbConfiguration", "cmbManualCalibration", "cmbAutocalibration"});
    BeginClosing();
}

void Closing::BeginClosing() {
    context_.link.setRXEnable(true);
    context_.link.setStatusUpdateEnable(false);
    tmrGoodbye_.start(kGoodbyeDelay);
}

void Closing::LeaveNow() {
    if (screen_.closing()) {
        return;
    }
    const std::vector<std::int32_t> modes = modesToLeave();
    stopAllTimers();
    if (Control* window = context_.console.container()) {
        window->setEnabled(false); // nothing is in reach any more
    }
    state_.m_CalibrationStarting = false;
    state_.m_AutocalStarting = false;
    state_.m_AutocalOnStep = 0;
    leaving_ = true;
    stood_ = state_.m_LastPhase;
    for (const std::int32_t mode : modes) {
        leave(mode);
    }
    if (context_.console["fraRemote"].visible()) {
        context_.link.call("URSEnterServiceMode", {0});
    }
    context_.link.setTempUserMode(false);
    allowRays();
    context_.link.setStatusUpdateEnable(!modes.empty());
    screen_.prompt(context_.texts.sClosing);
    tmrGoodbye_.start(modes.empty() ? kGoodbyeDelay : kLeaveTime);
}

std::vector<std::int32_t> Closing::modesToLeave() const {
    const std::int32_t mode = state_.m_ServiceMode;
    const bool starting = state_.m_CalibrationStarting || state_.m_AutocalStarting;
    std::vector<std::int32_t> modes;
    if (mode == 9 || state_.m_LastPhase >= 11 || (mode == 6 && state_.m_AutocalStarting)) {
        modes.push_back(9);
    }
    if (mode == 6 || (mode == 2 && starting)) {
        modes.push_back(6);
    }
    if (mode == 8 || context_.console.timer("tmrConfigON").running()) {
        modes.push_back(8);
    }
    return modes;
}

void Closing::leave(std::int32_t phase) {
    if (phase == 6) {
        context_.link.call("calibration", {false});
    } else if (phase == 8) {
        context_.link.call("Configuration", {false});
    } else if (phase == 9 || phase >= 11) {
        context_.link.call("Autocalibration", {false});
        owed_ = true; // that command has thrown away what waited
    }
}

void Closing::stopAllTimers() {
    for (const auto& control : context_.console.controls()) {
        if (auto* timer = dynamic_cast<TimerControl*>(control.get())) {
            timer->timer().stop();
        }
    }
    // An answer to the question of an autocalibration would be repeated.
    context_.link.timer("tmrConfirm").stop();
    context_.link.timer("tmrDismiss").stop();
}

void Closing::goodbyeTick() {
    tmrGoodbye_.stop();
    if (leaving_ && state_.m_ServiceMode == 9) {
        leave(6); // it has not been seen to follow; it may all the same
    }
    context_.link.leavePort();
    context_.events.Goodbye.raise();
}

void Closing::shutdownTick() {
    if (!context_.desktop.ask(kShutdownTitle, kShutdownQuestion)) {
        return;
    }
    context_.link.leavePort();
    if (!containsNoCase(context_.commandLine, kKeepPcOn) && context_.restartPc) {
        context_.restartPc();
    }
}

} // namespace quillon
