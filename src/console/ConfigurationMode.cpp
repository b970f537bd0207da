#include "console/ConfigurationMode.h"

namespace quillon {

namespace {

constexpr int kWait = 3000; // ms that the generator gets to change its phase
constexpr std::int32_t kNormalOperation = 2;
constexpr std::int32_t kConfiguration = 8;

} // namespace

ConfigurationMode::ConfigurationMode(ConsoleContext& context, ConsolePanels& panels)
    : context_(context), panels_(panels), screen_(context), state_(context.state),
      tmrConfigON_(context.console.timer("tmrConfigON")),
      tmrConfigOFF_(context.console.timer("tmrConfigOFF")) {
    context_.console["cmbConfiguration"].on.click = [this] {
        if (!screen_.errorOnShow() && !screen_.closing()) {
            if (state_.m_ServiceMode != kConfiguration) {
                state_.m_ProtocolError = false;
            }
            ToggleConfigurationMode();
        }
    };
    tmrConfigON_.setTick([this] { entered(); });
    tmrConfigOFF_.setTick([this] { left(); });
}

void ConfigurationMode::ToggleConfigurationMode() {
    screen_.disable({"fraTorvaneSerial"});
    if (state_.m_ServiceMode == kNormalOperation) {
        enter();
    } else if (state_.m_ServiceMode == kConfiguration) {
        leave();
    } else {
        return;
    }
    context_.events.Busy.raise(1);
    screen_.disable({"cmbConfiguration", "cmbManualCalibration", "cmbAutocalibration",
                     "cmbReadExposureCounters", "cmbClose"});
}

void ConfigurationMode::enter() {
    tmrConfigOFF_.stop();
    screen_.prompt(context_.texts.waitPrompt(context_.texts.sEnterConfiguration));
    context_.link.setStatusUpdateEnable(false);
    context_.link.call("Configuration", {true});
    state_.m_ConfigOnStep = 1;
    tmrConfigON_.start(kWait);
}

void ConfigurationMode::leave() {
    tmrConfigON_.stop();
    screen_.prompt(context_.texts.waitPrompt(context_.texts.sExitConfiguration));
    context_.link.setStatusUpdateEnable(false);
    context_.link.call("Configuration", {false});
    state_.m_ConfigOffStep = 1;
    tmrConfigOFF_.start(kWait);
}

void ConfigurationMode::entered() {
    context_.link.setStatusUpdateEnable(true);
    tmrConfigON_.stop();
    if (state_.m_ServiceMode == kConfiguration) {
        screen_.on({"cmbConfiguration"});
        screen_.enable({"fraTorvaneSerial", "cmbConfiguration"});
    } else {
        panels_.ErrorMessage(state_.m_ProtocolError ? ErrorCode::Protocol : ErrorCode::DipSwitch);
        state_.m_ConfigOffStep = 1;
    }
    screen_.clearPrompt();
    screen_.enable({"cmbClose"});
    context_.events.Busy.raise(0);
}

void ConfigurationMode::left() {
    tmrConfigOFF_.stop();
    context_.link.setStatusUpdateEnable(true);
    for (const std::string_view button :
         {"cmbAutocalibration", "cmbManualCalibration", "cmbConfiguration", "cmbReadExposureCounters"}) {
        screen_.enable({button});
        screen_.off({button});
    }
    context_.events.Busy.raise(0);
    screen_.enable({"cmbClose"});
    if (state_.m_ProtocolError && state_.m_ServiceMode != kNormalOperation) {
        panels_.ErrorMessage(ErrorCode::Protocol);
    }
}

} // namespace quillon
