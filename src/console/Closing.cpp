#include "console/Closing.h"

#include <string>

#include "base/Text.h"

namespace quillon {

namespace {

constexpr int kGoodbyeDelay = 1000; // ms
constexpr int kShutdownHold = 4000; // ms the key has to be held

constexpr std::string_view kShutdownTitle = "Torvane Generator Service";
constexpr std::string_view kShutdownQuestion = "Close the port and restart the PC?";
constexpr std::string_view kRestartRefused = "The PC was not restarted: ";

/// Anywhere on the command line this keeps the PC on.
constexpr std::string_view kKeepPcOn = "-d";

} // namespace

Closing::Closing(ConsoleContext& context, const Modes& modes)
    : context_(context), screen_(context), state_(context.state), modes_(modes),
      tmrGoodbye_(context.console.timer("tmrGoodbye")), tmrShutdown_(context.console.timer("tmrShutdown")) {
    ControlHandlers& key = context_.console["cmbClose"].on;
    key.press = [this] { closePressed(); };
    key.release = [this] { closeReleased(); };
    // A box has come up, perhaps this key's own question: it must not be asked once more behind it.
    key.cancel = [this] { tmrShutdown_.stop(); };
    tmrGoodbye_.setTick([this] { goodbyeTick(); });
    tmrShutdown_.setTick([this] { shutdownTick(); });
}

void Closing::closePressed() {
    context_.link.setRXEnable(false);
    tmrShutdown_.start(kShutdownHold);
}

void Closing::closeReleased() {
    tmrShutdown_.stop();
    if (screen_.errorOnShow() || screen_.withdrawn("cmbClose")) {
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

void Closing::goodbyeTick() {
    tmrGoodbye_.stop();
    context_.link.setPortOpen(false);
    context_.events.Goodbye.raise();
}

void Closing::shutdownTick() {
    if (!context_.desktop.ask(kShutdownTitle, kShutdownQuestion)) {
        return;
    }
    context_.link.setPortOpen(false);
    if (containsNoCase(context_.commandLine, kKeepPcOn) || !context_.restartPc) {
        return;
    }
    if (const Refusal refusal = context_.restartPc()) {
        // First the line: the machine is not left alone while the box stands.
        context_.link.setPortOpen(true);
        if (!context_.link.PortOpen()) {
            context_.events.CannotOpenPort.raise();
        }
        context_.desktop.message(BoxKind::Critical, kShutdownTitle, std::string(kRestartRefused) + *refusal);
    }
}

} // namespace quillon
