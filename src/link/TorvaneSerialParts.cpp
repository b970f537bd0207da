#include "link/TorvaneSerialParts.h"

#include <cassert>

#include "base/Temporarily.h"
#include "base/Text.h"
#include "panel/layout/PanelControls.h"

namespace quillon {

namespace {

/// The panel's controls stand before any part looks for its own.
PanelHost& withControls(PanelHost& panel) {
    panel.setPlace({0, 0, kPanelDesignWidth, kPanelDesignHeight});
    addPanelControls(panel);
    return panel;
}

} // namespace

TorvaneSerialV3_07_QLC1::Parts::Parts(PanelHost& host, const Context& given)
    : panel(withControls(host)), port(given.port), folder(given.folder), handlers(given.schedule.handlers()),
      facts(InstallationFacts::read(given.folder)), decoder(handlers), settings(panel, given.store),
      log(panel, given.folder, given.desktop),
      send(state, events, given.port, log,
           {panel.timer("tmrProtocolHandshaking"), panel.timer("tmrWaitAfterRx"),
            panel.timer("tmrAutoRepeat"), panel.timer("timerStatusUpdate")}),
      silence(given.schedule),
      poll(state, events, send, given.port, silence, panel.timer("timerStatusUpdate")),
      receiver(events,
               [this](std::string_view text) {
                   log.received(text);
                   const Temporarily reporting(silence.age.reporting, true);
                   decoder.DecodeMessages(text);
               }),
      portControl(panel, given.port, settings, events, send, poll, log), commands(state, send, operations),
      pages(panel, generator, fromGUI),
      frame(panel), context{state, generator, settings, facts,        events,
                            send,  poll,      commands, decoder,      operations,
                            panel, pages,     fromGUI,  TempUserMode, given.commandLine},
      errorTable(given.errorTable), service(context), phase(context, service), technique(context),
      errors(context, errorTable), exposureControl(context), fluoroscopy(context), programs(context),
      positioner(context), records(context), blinking(generator, panel),
      needs([this](std::string_view mnemonic) { return send.allows(phasesOf(mnemonic)); }),
      heldKeys(subjects, needs), panelKeys(subjects, needs, pages, frame) {
    applyFacts();
    panel.setReportAge(&silence.age);
    silence.changed.connect([this] { panel.showAge(); });
    port.setNotice([this](std::string_view text) {
        log.noted(text);
        silence.changed.raise();
    });
    faults = handlers.faulted.connect([this](const Cause& cause, int fault) {
        const Temporarily reporting(silence.age.reporting, false);
        log.ended("fault " + std::to_string(fault) + " ended " + textOf(cause));
    });
    decoder.bind("fmessMessageAcknowledge", [this](std::string_view) { send.fmessMessageAcknowledge(); });
    decoder.setNotices({.heard = [this] { poll.heard(); },
                        .handled = [this] { send.messageHeard(); },
                        .taken = [this](std::string_view key, std::string_view value,
                                        bool known) { taken.raise(key, value, known); }});
    addOperations();
    panel["txtDebugComm"].on.click = [this] { log.clearDebug(); };
    panel["fraDebug"].on.click = [this] { log.clearDebug(); };
    panel["cmbToggleDebug"].on.click = [this] { log.toggleDebug(); };
    assert(decoder.complete());
    pages.resetPages();
    pages.showTechniqueKeys(false);
    pages.ResetPanelKeys();
    frame.record();
    log.setLogActive(containsNoCase(given.commandLine, "-logFile"));
    applyDesignStore();
    port.setReceiver([this](std::string_view bytes) { receiver.receive(bytes); });
}

void TorvaneSerialV3_07_QLC1::Parts::applyFacts() {
    generator.m_TechniqueMode = facts.techniqueMode;
    panel["lstExtendedPosition"].setItems({facts.extended.begin(), facts.extended.end()});
}

void TorvaneSerialV3_07_QLC1::Parts::applyDesignStore() {
    settings.port = 2;
    state.numretries = 4;
    state.RetriesInterval = 200;
    log.setDebugActive(false);
}

void TorvaneSerialV3_07_QLC1::Parts::addOperations() {
    operations.add("SendMessage",
                   [this](std::string_view message, PhaseMask phases, bool WithACK, std::int16_t Timeout,
                          bool SendImmediately) {
                       send.SendMessage(message, phases, WithACK, Timeout, SendImmediately);
                   },
                   {false, std::int32_t{SendPath::kTimeout}, false});
    operations.add("SendMessageWithDefaults", [this](std::string_view message, PhaseMask phases) {
        send.SendMessageWithDefaults(message, phases);
    });
    operations.add("Flush", [this] { send.Flush(); });
    operations.add("GeneratorPhaseRequest", [this] { poll.GeneratorPhaseRequest(); });
    operations.add("HURequest", [this] { poll.HURequest(); });
    operations.add("ResetNoAnswerFromGeneratorError", [this] { poll.ResetNoAnswerFromGeneratorError(); });
    operations.add("ReadConfiguration", [this] { settings.ReadConfiguration(); });
    operations.add("SaveConfiguration", [this] { settings.SaveConfiguration(); });
    operations.add("SaveDefaultConfiguration", [this] { settings.SaveDefaultConfiguration(); });
    operations.add("ReadInitConfiguration", [this] {
        facts = InstallationFacts::read(folder);
        applyFacts();
    });
    operations.add("DecodeMessages", [this](std::string_view text) { decoder.DecodeMessages(text); });
    decoder.addTo(operations);

    operations.addProperty(
        "PortOpen", [this] { return portControl.PortOpen(); },
        [this](bool open) { portControl.setPortOpen(open); });
    operations.addProperty(
        "StatusUpdateEnable", [this] { return poll.StatusUpdateEnable(); },
        [this](bool enable) { poll.setStatusUpdateEnable(enable); });
    operations.addProperty(
        "DebugActive", [this] { return log.DebugActive(); },
        [this](bool active) { log.setDebugActive(active); });
    operations.addProperty(
        "LogActive", [this] { return log.LogActive(); }, [this](bool active) { log.setLogActive(active); });
    operations.addProperty(
        "fromGUI", [this] { return fromGUI; }, [this](bool embedded) { setFromGUI(embedded); });
    operations.addProperty(
        "TempUserMode", [this] { return TempUserMode; }, [this](bool on) { setTempUserMode(on); });
    operations.addProperty(
        "Parity", [this] { return settings.Parity(); },
        [this](std::int16_t number) { settings.setParity(number); });
    operations.addReadOnly("SoftVersion", [] { return std::string(SoftVersion()); });
    operations.addWriteOnly("ErrorInfoFile", [this](std::string_view path) { errorTable.Setup(path); });
    operations.add("DefaultErrorInfoFile", [this] { errorTable.Setup(); });
    operations.addWriteOnly("RegistryKey",
                            [this](std::string key) { settings.RegistryKey = std::move(key); });
    operations.addWriteOnly("ReducedCommandCineAndDSI",
                            [this](bool on) { receiver.setReducedCommandCineAndDSI(on); });
    // The poll took its interval when it was created; a later value has no effect.
    operations.addWriteOnly("StatusUpdateInterval", [](std::int16_t) {});
    operations.addMember("EventEnabled", state.EventEnabled);
    operations.addMember("Handshaking", state.Handshaking);
    operations.addMember("numretries", state.numretries);
    operations.addMember("RetriesInterval", state.RetriesInterval);
    operations.addMember("StatusRequestinFluoro", state.StatusRequestinFluoro);
    operations.addMember("baudrate", settings.baudrate);
    operations.addMember("StopBits", settings.StopBits);
    operations.addMember("DataBits", settings.DataBits);
    operations.addMember("port", settings.port);
    operations.addMember("GeneratorType", settings.GeneratorType);
    operations.addMember("ThirdTube", facts.ThirdTube);
    operations.addMember("SolapeFocos", facts.SolapeFocos);
    operations.addMember("AutocalibrationRetry", facts.AutocalibrationRetry);
}

void TorvaneSerialV3_07_QLC1::Parts::setFromGUI(bool embedded) {
    fromGUI = embedded;
    if (embedded) {
        panel["cmbMinimize"].setVisible(false);
        pages.giveUpOwnWays();
    }
}

void TorvaneSerialV3_07_QLC1::Parts::setTempUserMode(bool on) {
    if (state.m_OperatingPhase == (on ? Phase::Calibration : Phase::NormalOperation)) {
        TempUserMode = on;
        pages.setUserMode(on);
    }
}

} // namespace quillon
