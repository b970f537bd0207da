#include "console/ConfigurationMode.h"

#include <cassert>

#include "model/Commands.h"

namespace quillon {

namespace {

using namespace keys;

constexpr Effects kConfigurationAsked{.off = modes | X, .poll = Poll::Held, .busy = Busy::Taken};
constexpr Effects kConfigurationReached{
    .on = C | X | F, .active = C, .poll = Poll::Free, .busy = Busy::Given, .prompt = Prompt::Cleared};
constexpr Effects kConfigurationNotReached{
    .on = X, .poll = Poll::Free, .busy = Busy::Given, .prompt = Prompt::Cleared};
constexpr Effects kConfigurationDone{
    .on = modes | X, .atRest = modes, .poll = Poll::Free, .busy = Busy::Given};

constexpr int kWait = 3000; // ms that the generator gets to change its phase

} // namespace

ConfigurationMode::ConfigurationMode(ConsoleContext& context, ServiceSession& session, ConsolePanels& panels)
    : context_(context), session_(session), panels_(panels), screen_(context),
      tmrConfigON_(context.console.timer("tmrConfigON")),
      tmrConfigOFF_(context.console.timer("tmrConfigOFF")) {
    session_.onClick(Key::Configuration, [this] {
        if (session_.mode() != Phase::Configuration) {
            context_.state.m_ProtocolError = false;
        }
        ToggleConfigurationMode();
    });
    session_.onLeave(Phase::Configuration, [this] { ToggleConfigurationMode(); });
    tmrConfigON_.setTick([this] { entered(); });
    tmrConfigOFF_.setTick([this] { left(); });
}

void ConfigurationMode::ToggleConfigurationMode() {
    session_.apply(effects::kFrameTaken);
    if (session_.mode() == Phase::NormalOperation) {
        session_.begin(Run::EnteringConfiguration, kConfigurationAsked);
        tell(true, context_.texts.sEnterConfiguration, tmrConfigON_);
    } else if (session_.mode() == Phase::Configuration) {
        session_.openLine();
        session_.begin(Run::LeavingConfiguration, kConfigurationAsked);
        tell(false, context_.texts.sExitConfiguration, tmrConfigOFF_);
    }
}

void ConfigurationMode::tell(bool enable, std::string_view prompt, Timer& wait) {
    screen_.prompt(Role::Prompt, context_.texts.waitPrompt(prompt));
    context_.link.commands().send(command("Configuration"), enable);
    session_.generator().asked(enable ? Phase::Configuration : Phase::None);
    wait.start(kWait);
}

void ConfigurationMode::entered() {
    assert(session_.is(Run::EnteringConfiguration));
    if (session_.mode() == Phase::Configuration) {
        session_.end(kConfigurationReached);
    } else {
        session_.fail(kConfigurationNotReached);
        panels_.ErrorMessage(panels_.failureCode(), Phase::Configuration);
    }
}

void ConfigurationMode::left() {
    assert(session_.is(Run::LeavingConfiguration));
    session_.end(kConfigurationDone);
    if (session_.mode() != Phase::NormalOperation) {
        panels_.tellProtocolError();
    }
}

} // namespace quillon
