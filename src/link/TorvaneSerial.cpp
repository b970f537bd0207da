#include "link/TorvaneSerial.h"

#include "base/Temporarily.h"
#include "base/Text.h"
#include "link/CommunicationLog.h"
#include "link/FrameReceiver.h"
#include "link/LinkSilence.h"
#include "link/MessageDecoder.h"
#include "link/OutboundTable.h"
#include "link/PortControl.h"
#include "link/SendPath.h"
#include "link/StatusPoll.h"
#include "model/Commands.h"
#include "model/ErrorsAndWarnings.h"
#include "model/ExposureControl.h"
#include "model/Fluoroscopy.h"
#include "model/ModelContext.h"
#include "model/PhaseReports.h"
#include "model/Positioner.h"
#include "model/Programs.h"
#include "model/Records.h"
#include "model/Service.h"
#include "model/Technique.h"
#include "panel/Blinking.h"
#include "panel/HeldKeys.h"
#include "panel/KeyNeeds.h"
#include "panel/PanelFrame.h"
#include "panel/PanelKeys.h"
#include "panel/PanelPages.h"
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

struct TorvaneSerialV3_07_QLC1::Parts {
    Parts(PanelHost& host, const Context& context);

    void addOperations();
    void applyFacts();
    void applyDesignStore();
    void setFromGUI(bool embedded);
    void setTempUserMode(bool on);

    PanelHost& panel;
    SerialPort& port;
    Folder& folder;
    bool fromGUI = false;
    bool TempUserMode = false;

    LinkState state;
    GeneratorState generator;
    LinkEvents events;
    Operations operations;
    Handlers& handlers;
    Signal<Cause, int>::Connection faults = 0;
    InstallationFacts facts;
    MessageDecoder decoder;
    LinkSettings settings;
    CommunicationLog log;
    SendPath send;
    LinkSilence silence;
    StatusPoll poll;
    FrameReceiver receiver;
    PortControl portControl;
    Commands commands;
    PanelPages pages;
    PanelFrame frame;
    ModelContext context;

    ErrorTable& errorTable;
    Service service;
    PhaseReports phase;
    Technique technique;
    ErrorsAndWarnings errors;
    ExposureControl exposureControl;
    Fluoroscopy fluoroscopy;
    Programs programs;
    Positioner positioner;
    Records records;
    Blinking blinking;
    PanelSubjects subjects{context, service, errors, exposureControl, fluoroscopy};
    KeyNeeds needs;
    HeldKeys heldKeys;
    PanelKeys panelKeys;
};

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
    decoder.setNotices({.heard = [this] { poll.heard(); }, .handled = [this] { send.messageHeard(); }});
    addOperations();
    panel["txtDebugComm"].on.click = [this] { log.clearDebug(); };
    panel["fraDebug"].on.click = [this] { log.clearDebug(); };
    panel["cmbToggleDebug"].on.click = [this] { log.toggleDebug(); };
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
    settings.baudrate = 19200;
    settings.parity = "n";
    settings.StopBits = 1;
    settings.DataBits = 8;
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

TorvaneSerialV3_07_QLC1::TorvaneSerialV3_07_QLC1(const Context& context)
    : PanelHost(Kind::User, "TorvaneSerial", context.schedule) {
    parts_ = std::make_unique<Parts>(*this, context);
}

TorvaneSerialV3_07_QLC1::~TorvaneSerialV3_07_QLC1() {
    parts_->port.setReceiver({});
    parts_->port.close();
    parts_->port.setOutcome({});
    parts_->port.setNotice({});
    parts_->port.setArrival({});
    parts_->handlers.faulted.disconnect(parts_->faults);
}

LinkEvents& TorvaneSerialV3_07_QLC1::events() {
    return parts_->events;
}

Signal<>& TorvaneSerialV3_07_QLC1::phaseRepeated() {
    return parts_->phase.repeated;
}

const Operations& TorvaneSerialV3_07_QLC1::operations() const {
    return parts_->operations;
}

LinkSettings& TorvaneSerialV3_07_QLC1::settings() {
    return parts_->settings;
}

const InstallationFacts& TorvaneSerialV3_07_QLC1::facts() const {
    return parts_->facts;
}

const Commands& TorvaneSerialV3_07_QLC1::commands() const {
    return parts_->commands;
}

Service& TorvaneSerialV3_07_QLC1::service() {
    return parts_->service;
}

Technique& TorvaneSerialV3_07_QLC1::technique() {
    return parts_->technique;
}

ErrorsAndWarnings& TorvaneSerialV3_07_QLC1::errors() {
    return parts_->errors;
}

LinkSilence& TorvaneSerialV3_07_QLC1::silence() {
    return parts_->silence;
}

Hindrance TorvaneSerialV3_07_QLC1::hindrance(const Control& key) const {
    return parts_->needs.of(key);
}

const SerialPort& TorvaneSerialV3_07_QLC1::line() const {
    return parts_->port;
}

StatusPoll& TorvaneSerialV3_07_QLC1::poll() {
    return parts_->poll;
}

Signal<>& TorvaneSerialV3_07_QLC1::portArrived() {
    return parts_->portControl.arrived;
}

bool TorvaneSerialV3_07_QLC1::PortOpen() const {
    return parts_->portControl.PortOpen();
}

void TorvaneSerialV3_07_QLC1::setPortOpen(bool open) {
    parts_->portControl.setPortOpen(open);
}

void TorvaneSerialV3_07_QLC1::leavePort() {
    SendPath& send = parts_->send;
    send.drain();
    // One that waited already has kept a later one of the same word out, behind its opposite.
    if (send.lastRaysMessage() == "RX0") {
        parts_->generator.RXEnable = true;
        // Whatever the phase: it may be one in which nothing was to be said yet.
        send.SendMessage("RX1", kAllPhases);
        send.drain();
    }
    setPortOpen(false);
}

bool TorvaneSerialV3_07_QLC1::StatusUpdateEnable() const {
    return parts_->poll.StatusUpdateEnable();
}

void TorvaneSerialV3_07_QLC1::setStatusUpdateEnable(bool enable) {
    parts_->poll.setStatusUpdateEnable(enable);
}

void TorvaneSerialV3_07_QLC1::setEventEnabled(bool enabled) {
    parts_->state.EventEnabled = enabled;
}

void TorvaneSerialV3_07_QLC1::setHandshaking(bool asked) {
    parts_->state.Handshaking = asked;
}

void TorvaneSerialV3_07_QLC1::setDebugActive(bool active) {
    parts_->log.setDebugActive(active);
}

void TorvaneSerialV3_07_QLC1::setFromGUI(bool embedded) {
    parts_->setFromGUI(embedded);
}

void TorvaneSerialV3_07_QLC1::setRXEnable(bool enable) {
    parts_->records.setRXEnable(enable);
}

bool TorvaneSerialV3_07_QLC1::TempUserMode() const {
    return parts_->TempUserMode;
}

bool TorvaneSerialV3_07_QLC1::polls() const {
    return parts_->poll.polls();
}

void TorvaneSerialV3_07_QLC1::pollAgain() {
    parts_->poll.setStatusUpdateEnable(true);
    if (parts_->port.isOpen()) {
        parts_->poll.run();
    }
}

void TorvaneSerialV3_07_QLC1::setTempUserMode(bool lent) {
    parts_->setTempUserMode(lent);
}

void TorvaneSerialV3_07_QLC1::SendMessage(std::string_view message, PhaseMask phases, bool WithACK) {
    parts_->send.SendMessage(message, phases, WithACK);
}

bool TorvaneSerialV3_07_QLC1::allows(std::string_view mnemonic) const {
    return parts_->send.allows(phasesOf(mnemonic));
}

bool TorvaneSerialV3_07_QLC1::answering() const {
    return parts_->service.answering();
}

void TorvaneSerialV3_07_QLC1::repeatQuestion() {
    parts_->phase.repeatQuestion();
}

const GeneratorState& TorvaneSerialV3_07_QLC1::mirror() const {
    return parts_->generator;
}

void TorvaneSerialV3_07_QLC1::showMainMenu() {
    if (!parts_->pages.mainMenuShown()) {
        parts_->pages.ShowMainMenu();
    }
}

void TorvaneSerialV3_07_QLC1::showServicePage(std::int16_t page) {
    parts_->pages.keepServicePage(page);
}

void TorvaneSerialV3_07_QLC1::discardWaiting() {
    parts_->send.discardWaiting();
}

void TorvaneSerialV3_07_QLC1::Flush() {
    parts_->send.Flush();
}

void TorvaneSerialV3_07_QLC1::setSendNotices(SendPath::Notices notices) {
    parts_->send.setNotices(std::move(notices));
}

void TorvaneSerialV3_07_QLC1::AddParentMessage(std::string_view message, std::string_view method,
                                               const Operations& object) {
    parts_->decoder.AddParentMessage(object, method, message);
}

void TorvaneSerialV3_07_QLC1::UserControl_Show() {
    parts_->frame.UserControl_Show();
}

void TorvaneSerialV3_07_QLC1::resized() {
    if (parts_) {
        parts_->frame.UserControl_Resize();
    }
}

} // namespace quillon
