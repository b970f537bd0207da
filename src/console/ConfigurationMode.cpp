#include "console/ConfigurationMode.h"

#include "model/Commands.h"

namespace quillon {

namespace {

constexpr int kWait = 3000; // ms that the generator gets to change its phase

} // namespace

ConfigurationMode::ConfigurationMode(ConsoleContext& context, ServiceSession& session, ConsolePanels& panels)
    : context_(context), session_(session), panels_(panels), screen_(context),
      tmrConfigON_(context.console.timer("tmrConfigON")),
      tmrConfigOFF_(context.console.timer("tmrConfigOFF")) {
    context_.console["cmbConfiguration"].on.click = [this] {
        if (!screen_.keptBack(Key::Configuration) && !session_.is(Run::Closing)) {
            if (session_.mode() != Phase::Configuration) {
                context_.state.m_ProtocolError = false;
            }
            ToggleConfigurationMode();
        }
    };
    tmrConfigON_.setTick([this] { entered(); });
    tmrConfigOFF_.setTick([this] { left(); });
}

void ConfigurationMode::ToggleConfigurationMode() {
    session_.at(Moment::ConfigurationPressed);
    if (session_.mode() == Phase::NormalOperation) {
        session_.begin(Run::EnteringConfiguration, Moment::ConfigurationAsked);
        tell(true, context_.texts.sEnterConfiguration, tmrConfigON_);
    } else if (session_.mode() == Phase::Configuration) {
        session_.openLine();
        session_.begin(Run::LeavingConfiguration, Moment::ConfigurationLeft);
        tell(false, context_.texts.sExitConfiguration, tmrConfigOFF_);
    }
}

void ConfigurationMode::tell(bool enable, std::string_view prompt, Timer& wait) {
    screen_.prompt(Role::Prompt, context_.texts.waitPrompt(prompt));
    context_.link.commands().send(command("Configuration"), enable);
    session_.asked(enable ? Phase::Configuration : Phase::None);
    wait.start(kWait);
}

void ConfigurationMode::entered() {
    if (session_.mode() == Phase::Configuration) {
        session_.end(Moment::ConfigurationReached);
    } else {
        session_.fail(Moment::ConfigurationNotReached);
        panels_.ErrorMessage(panels_.failureCode(), Phase::Configuration);
    }
}

void ConfigurationMode::left() {
    session_.end(Moment::ConfigurationDone);
    if (session_.mode() != Phase::NormalOperation) {
        panels_.tellProtocolError();
    }
}

} // namespace quillon
