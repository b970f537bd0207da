#include "console/StartOfService.h"

namespace quillon {

namespace {

constexpr int kGreetingDelay = 3000; // ms
constexpr int kPowerUpWait = 5000;   // ms
constexpr int kRefreshWait = 10000;  // ms

} // namespace

StartOfService::StartOfService(ConsoleContext& context)
    : context_(context), screen_(context), state_(context.state),
      tmrDelayShow_(context.console.timer("tmrDelayShow")),
      tmrWaitStartGenerator_(context.console.timer("tmrWaitStartGenerator")),
      tmrWaitRefresh_(context.console.timer("tmrWaitRefresh")) {
    tmrDelayShow_.setTick([this] { delayShowTick(); });
    tmrWaitRefresh_.setTick([this] { waitRefreshTick(); });
    tmrWaitStartGenerator_.setTick([this] {
        // The generator may have left normal operation while it was waited for.
        if (state_.m_LastPhase == 2) {
            RefreshConsole();
        }
        tmrWaitStartGenerator_.stop();
    });
    context_.link.events().GeneratorSoftwareVersion.connect(
        [this](const std::string& version) { showVersions(version); });
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
    state_.m_LastPhase = 1;
    context_.link.call("GeneratorPhaseRequest");
    context_.link.setStatusUpdateEnable(true);
}

void StartOfService::UserControl_Show() {
    state_.ButtonOnColor = kActiveColour;
    state_.ButtonOffColor = kNormalColour;
    state_.ConsoleBackColor = kSurfaceColour;
    if (state_.m_LastPhase == 0) {
        state_.m_LastPhase = 1;
    }
    state_.m_ServiceMode = 1;
    state_.m_ProtocolError = false;
    for (const std::string_view timer :
         {"tmrDelay", "tmrGoodbye", "tmrAutocalON", "tmrAutocalOFF", "tmrCalON", "tmrCalOFF", "tmrConfigON",
          "tmrConfigOFF", "tmrDelayAutocal", "tmrReadExposureCounters", "tmrError"}) {
        context_.console.timer(timer).stop();
    }
    screen_.disable({"cmbConfiguration", "cmbManualCalibration", "cmbAutocalibration",
                     "cmbReadExposureCounters", "cmbGoToUserMode"});
    screen_.hide({"cmbGoToUserMode"});
    TorvaneSerialV3_07_QLC1& link = context_.link;
    link.setEventEnabled(true);
    link.setDebugActive(false);
    link.setHandshaking(true);
    link.setVisible(false);
    screen_.hide({"fraTorvaneSerial"});
    screen_.disable({"fraTorvaneSerial"});
    link.setFromGUI(true);
    state_.m_AutocalOffStep = 2;
    state_.m_CalOffStep = 2;
    state_.m_ConfigOffStep = 1;
    state_.m_AutocalStarting = false;
    state_.m_CountersActive = false;
    state_.m_CountersComplete = false;
    screen_.hide({"fraExposureCounters"});
    tmrDelayShow_.start(kGreetingDelay);
}

void StartOfService::showRestLayout() {
    screen_.show({"fraPrepExp", "cmbClose", "cmbReadExposureCounters", "cmbConfiguration",
                  "cmbManualCalibration", "cmbAutocalibration", "cmbResetError", "lblError",
                  "lblSoftwareVersion"});
    // A generator found in calibration has the working area already.
    if (state_.m_ServiceMode != 6 && state_.m_ServiceMode != 9) {
        screen_.show({"lblQuillonConsole", "imgQuillonConsole"});
    }
}

void StartOfService::delayShowTick() {
    tmrDelayShow_.stop();
    showRestLayout();
    screen_.hide({"lblErrorDescription", "lblHelp", "cmbGoToUserMode"});
    if (state_.m_LastPhase != 2) {
        screen_.prompt(context_.texts.sPowerUpGenerator);
    }
    screen_.hide({"fraExposureCounters"});
}

void StartOfService::refreshAfterPowerUp() {
    if (state_.m_PowerUpSeen) {
        tmrWaitStartGenerator_.start(kPowerUpWait);
    } else {
        RefreshConsole();
    }
}

void StartOfService::RefreshConsole() {
    state_.m_LastPhase = 2;
    for (const std::string_view request :
         {"FlRefresh", "RADRefresh", "TMReq", "GeneratorSoftwareVersionRequest"}) {
        context_.link.call(request);
    }
    tmrWaitRefresh_.start(kRefreshWait);
}

void StartOfService::waitRefreshTick() {
    const bool positionerOpen =
        context_.console["fraOrla"].visible() || context_.console["fraRemote"].visible();
    if (state_.m_LastPhase == 2 && positionerOpen) {
        state_.m_SavedModeEnabled = true; // they come with its closing
    } else if (state_.m_LastPhase == 2) {
        for (const std::string_view button :
             {"cmbManualCalibration", "cmbAutocalibration", "cmbConfiguration", "cmbReadExposureCounters"}) {
            screen_.enable({button});
            screen_.off({button});
        }
    }
    tmrWaitRefresh_.stop();
    Timer& arrival = context_.console.timer("tmrGotoUserMode");
    if (arrival.running() && state_.m_ServiceMode == 2) {
        // A report of Ready leaves this key to the arrival in user mode, which does not come any more.
        screen_.enable({"cmbClose"});
    }
    arrival.stop();
}

void StartOfService::showVersions(std::string_view generator) {
    std::string text;
    text.append(kLineBreak).append("SOFTWARE VERSIONS").append(kLineBreak).append(kLineBreak);
    if (!state_.TouchPanelVersion.empty()) {
        text.append("Quillon ").append(state_.TouchPanelVersion).append(kLineBreak).append(kLineBreak);
    }
    text.append("Generator ").append(generator);
    context_.console["lblSoftwareVersion"].setCaption(text);
}

} // namespace quillon
