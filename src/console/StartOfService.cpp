#include "console/StartOfService.h"

#include "link/StatusPoll.h"
#include "model/Commands.h"
#include "model/Technique.h"

namespace quillon {

namespace {

using namespace keys;

constexpr Effects kShown{.off = modes | U | F};
constexpr Effects kRefreshDone{.on = modes, .atRest = modes};

constexpr int kGreetingDelay = 3000; // ms
constexpr int kPowerUpWait = 5000;   // ms
constexpr int kRefreshWait = 10000;  // ms

} // namespace

StartOfService::StartOfService(ConsoleContext& context, ServiceSession& session)
    : context_(context), session_(session), screen_(context), state_(context.state),
      tmrDelayShow_(context.console.timer("tmrDelayShow")),
      tmrWaitStartGenerator_(context.console.timer("tmrWaitStartGenerator")),
      tmrWaitRefresh_(context.console.timer("tmrWaitRefresh")) {
    tmrDelayShow_.setTick([this] { delayShowTick(); });
    tmrWaitRefresh_.setTick([this] { waitRefreshTick(); });
    tmrWaitStartGenerator_.setTick([this] {
        // The generator may have left normal operation while it was waited for.
        refreshOwed_ = true;
        if (session_.lastPhase() == Phase::NormalOperation) {
            refreshIfOwed();
        }
        tmrWaitStartGenerator_.stop();
    });
    context_.link.events().GeneratorSoftwareVersion.connect(
        [this](const std::string& version) { showVersions(version); });
    context_.link.phaseRepeated().connect([this] { heard(); });
    context_.link.portArrived().connect([this] {
        if (session_.lastPhase() <= Phase::Initialization) { // nothing was heard on it before
            opened();
        }
    });
    context_.operations.add("PortOpen", [this](bool newStatus) { PortOpen(newStatus); });
    context_.operations.add("RefreshConsole", [this] { RefreshConsole(); });
}

void StartOfService::PortOpen(bool newStatus) {
    context_.link.setPortOpen(newStatus);
    if (newStatus && !context_.link.PortOpen()) {
        screen_.hide({"fraExposureCounters"});
        context_.events.CannotOpenPort.raise();
        return;
    }
    opened();
}

void StartOfService::opened() {
    session_.generator().setLastPhase(Phase::Initialization);
    context_.link.poll().GeneratorPhaseRequest();
    session_.apply(effects::kPollFree);
}

void StartOfService::UserControl_Show() {
    state_.ButtonOnColor = kActiveColour;
    state_.ButtonOffColor = kNormalColour;
    state_.ConsoleBackColor = kSurfaceColour;
    if (session_.lastPhase() == Phase::None) {
        session_.generator().setLastPhase(Phase::Initialization);
    }
    session_.generator().setMode(Phase::Initialization);
    session_.reset();
    state_.m_ProtocolError = false;
    context_.console.timer("tmrError").stop();
    session_.apply(kShown);
    screen_.hide(Key::GoToUserMode);
    TorvaneSerialV3_07_QLC1& link = context_.link;
    link.setEventEnabled(true);
    link.setDebugActive(false);
    link.setHandshaking(true);
    link.setVisible(false);
    screen_.hide({"fraTorvaneSerial", "fraExposureCounters"});
    link.setFromGUI(true);
    tmrDelayShow_.start(kGreetingDelay);
}

void StartOfService::showRestLayout() {
    screen_.show({"fraPrepExp", "lblError", "lblSoftwareVersion"});
    screen_.show(kModeKeys | Key::Close | Key::ResetError);
    // A generator found in calibration has the working area already.
    if (session_.mode() != Phase::Calibration && session_.mode() != Phase::Autocalibration) {
        screen_.show({"lblQuillonConsole", "imgQuillonConsole"});
    }
}

void StartOfService::delayShowTick() {
    tmrDelayShow_.stop();
    showRestLayout();
    screen_.hide({"lblErrorDescription", "lblHelp"});
    screen_.hide(Key::GoToUserMode);
    screen_.hide({"fraExposureCounters"});
    session_.stand();
    if (session_.lastPhase() != Phase::NormalOperation) {
        screen_.prompt(Role::Prompt, context_.texts.sPowerUpGenerator);
    }
}

void StartOfService::heard() {
    if (!session_.generator().poweringUp() &&
        context_.console["lblHelp"].caption() == context_.texts.sPowerUpGenerator) {
        screen_.clearPrompt();
        session_.stand(); // its words replace the greeting
    }
}

void StartOfService::refreshAfterPowerUp() {
    if (state_.m_PowerUpSeen) {
        tmrWaitStartGenerator_.start(kPowerUpWait);
    } else {
        RefreshConsole();
    }
}

void StartOfService::refreshIfOwed() {
    if (refreshOwed_) {
        RefreshConsole();
    }
}

void StartOfService::RefreshConsole() {
    refreshOwed_ = false;
    session_.generator().setLastPhase(Phase::NormalOperation);
    context_.link.commands().send(command("FlRefresh"));
    context_.link.commands().send(command("RADRefresh"));
    context_.link.technique().TMReq();
    context_.link.commands().send(command("GeneratorSoftwareVersionRequest"));
    tmrWaitRefresh_.start(kRefreshWait);
}

void StartOfService::waitRefreshTick() {
    if (session_.lastPhase() == Phase::NormalOperation &&
        (session_.isFree() || session_.is(Run::ShowingCounters))) {
        session_.apply(kRefreshDone);
    }
    tmrWaitRefresh_.stop();
    session_.cancelLending();
    session_.stand();
}

void StartOfService::showVersions(std::string_view generator) {
    std::string text;
    text.append(kLineBreak).append(context_.texts.sSoftwareVersions).append(kLineBreak).append(kLineBreak);
    if (!state_.TouchPanelVersion.empty()) {
        text.append("Quillon ").append(state_.TouchPanelVersion).append(kLineBreak).append(kLineBreak);
    }
    text.append(context_.texts.sGeneratorVersion).append(" ").append(generator);
    context_.console["lblSoftwareVersion"].setCaption(text);
}

} // namespace quillon
