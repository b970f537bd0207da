#include "console/Closing.h"

#include <cassert>
#include <string>

#include "base/Text.h"
#include "model/Commands.h"
#include "model/Service.h"

namespace quillon {

namespace {

constexpr int kGoodbyeDelay = 1000; // ms
constexpr int kShutdownHold = 4000; // ms the key has to be held

/// Anywhere on the command line this keeps the PC on.
constexpr std::string_view kKeepPcOn = "-d";

} // namespace

Closing::Closing(ConsoleContext& context, ServiceSession& session, const Modes& modes)
    : context_(context), session_(session), screen_(context), modes_(modes),
      tmrGoodbye_(context.console.timer("tmrGoodbye")), tmrShutdown_(context.console.timer("tmrShutdown")) {
    ControlHandlers& key = context_.console["cmbClose"].on;
    key.press = [this] { closePressed(); };
    key.release = [this] { tmrShutdown_.stop(); };
    key.click = [this] { closeClicked(); };
    key.abandon = [this] { pressedForNothing(); };
    // A box has come up, perhaps this key's own question: it must not be asked once more behind it.
    key.cancel = [this] {
        tmrShutdown_.stop();
        pressedForNothing();
    };
    tmrGoodbye_.setTick([this] { goodbyeTick(); });
    tmrShutdown_.setTick([this] { shutdownTick(); });
}

void Closing::closePressed() {
    if (!session_.is(Run::Closing)) {
        if (!tmrShutdown_.running()) { // another finger is on it
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
    if (screen_.keptBack(Key::Close) || session_.is(Run::Closing)) {
        pressedForNothing();
        return;
    }
    session_.restScreen().closeScreen();
    if (session_.mode() != Phase::Autocalibration && session_.giveUp()) {
        session_.giveXRaysBack();
    } else if (session_.poweringUp() || session_.exitUnheard() || !leave()) {
        // After a start anew, whatever stood before is over; and nobody waits twice for one that is lost.
        close();
    }
}

bool Closing::leave() {
    const bool waits = answerOf(session_.run(), Way::CloseKey) == Answer::Waits;
    if (session_.mode() == Phase::Configuration) {
        modes_.configuration.ToggleConfigurationMode();
    } else if (session_.mode() == Phase::Autocalibration) {
        modes_.autocalibration.ToggleAutocalibrationMode();
    } else if (waits) {
        session_.pressCameToNothing();
    } else if (session_.mode() == Phase::Calibration) {
        session_.loan().takeBack(); // the way out is the engineer's again
        modes_.calibration.ToggleCalibrationMode();
    } else if (session_.countersActive()) {
        modes_.counters.ToggleExposureCounterView();
    } else if (session_.lent()) {
        context_.state.m_ProtocolError = false;
        modes_.calibration.ToggleCalibrationMode();
    } else {
        return false;
    }
    return true;
}

void Closing::close() {
    if (const Phase arriving = session_.onTheWayTo(); arriving != Phase::None) {
        context_.link.discardWaiting(); // the command into the mode may not have left yet
        if (arriving == Phase::Calibration) {
            context_.link.service().calibration(false);
        } else {
            context_.link.commands().send(command("Configuration"), false);
        }
    }
    BeginClosing();
    screen_.prompt(Role::Prompt, context_.texts.sClosing);
    session_.loan().takeBack();
    screen_.hide(Key::ReadCounters | Key::GoToUserMode);
    screen_.show(kModeKeys.without(Key::ReadCounters));
}

void Closing::BeginClosing() {
    session_.begin(Run::Closing, moments::kClosingBegins);
    tmrGoodbye_.start(kGoodbyeDelay);
}

void Closing::goodbyeTick() {
    assert(session_.is(Run::Closing));
    tmrGoodbye_.stop();
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
        // First the line: the machine is not left alone while the box stands.
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
