#include "console/Closing.h"

#include <cassert>
#include <string>
#include <utility>

#include "base/Text.h"
#include "console/CloseAction.h"
#include "console/ServiceModes.h"

namespace quillon {

namespace {

constexpr int kShutdownHold = 4000; // ms the key has to be held

/// Anywhere on the command line this keeps the PC on.
constexpr std::string_view kKeepPcOn = "-d";

} // namespace

Closing::Closing(ConsoleContext& context, ServiceSession& session, CalibrationMode& calibration,
                 ExposureCounters& counters)
    : context_(context), session_(session), screen_(context), calibration_(calibration), counters_(counters),
      tmrGoodbye_(context.console.timer("tmrGoodbye")), tmrShutdown_(context.console.timer("tmrShutdown")) {
    ControlHandlers& key = context_.console["cmbClose"].on;
    key.press = [this] { closePressed(); };
    key.release = [this] { tmrShutdown_.stop(); };
    key.click = [this] { closeClicked(); };
    key.abandon = [this] { pressedForNothing(); };
    // A box is open, perhaps this key's own question: it must not be asked again behind it.
    key.cancel = [this] {
        tmrShutdown_.stop();
        pressedForNothing();
    };
    tmrGoodbye_.setTick([this] { goodbyeTick(); });
    tmrShutdown_.setTick([this] { shutdownTick(); });
}

void Closing::closePressed() {
    if (!session_.is(Run::Closing)) {
        if (!tmrShutdown_.running()) { // otherwise a second finger is on the key
            session_.closePressed();
        }
        tmrShutdown_.start(kShutdownHold);
    }
}

void Closing::pressedForNothing() {
    if (!session_.is(Run::Closing)) {
        session_.pressCameToNothing();
    }
}

void Closing::closeClicked() {
    const CloseAction action = closeActionOf(session_);
    if (!session_.takes(Key::Close) || action == CloseAction::Nothing) {
        pressedForNothing();
        return;
    }
    session_.restScreen().closeScreen();
    switch (action) {
    case CloseAction::Nothing:
        break;
    case CloseAction::GivesUp:
        session_.giveUp();
        session_.giveXRaysBack();
        break;
    case CloseAction::LeavesMode:
        session_.leaveMode();
        break;
    case CloseAction::HidesCounters:
        counters_.ToggleExposureCounterView();
        break;
    case CloseAction::TakesMachineBack:
        context_.state.m_ProtocolError = false;
        calibration_.ToggleCalibrationMode();
        break;
    case CloseAction::Closes:
        close();
        break;
    }
}

void Closing::close() {
    if (const Phase arriving = session_.generator().onTheWayTo(); arriving != Phase::None) {
        context_.link.discardWaiting(); // the command into the mode may not have left yet
        sendExitFrom(arriving, context_.link);
    }
    BeginClosing();
    screen_.prompt(Role::Prompt, context_.texts.sClosing);
    session_.loan().takeBack();
    screen_.hide(Key::ReadCounters | Key::GoToUserMode);
    screen_.show(kModeKeys.without(Key::ReadCounters));
}

void Closing::BeginClosing() {
    session_.begin(Run::Closing, effects::kClosingBegins);
    goodbyeIn(kGoodbyeDelay);
}

void Closing::goodbyeIn(int delay, std::function<void()> lastWord) {
    lastWord_ = std::move(lastWord);
    tmrGoodbye_.start(delay);
}

void Closing::goodbyeTick() {
    assert(session_.is(Run::Closing));
    tmrGoodbye_.stop();
    if (lastWord_) {
        lastWord_();
    }
    context_.link.leavePort();
    context_.events.Goodbye.raise();
}

void Closing::shutdownTick() {
    if (!context_.desktop.ask(context_.texts.sBoxTitle, context_.texts.sShutdownQuestion)) {
        return;
    }
    context_.link.leavePort();
    if (containsNoCase(context_.commandLine, kKeepPcOn) || !context_.restartPc) {
        return;
    }
    if (const Refusal refusal = context_.restartPc()) {
        // The line first: the generator is not left without the console while the box is open.
        context_.link.setPortOpen(true);
        if (!context_.link.PortOpen()) {
            context_.events.CannotOpenPort.raise();
        }
        context_.desktop.message(
            BoxKind::Critical, context_.texts.sBoxTitle,
            ConsoleTexts::filled(context_.texts.sRestartRefused, {std::string_view(*refusal)}));
    }
}

} // namespace quillon
