#include "link/TorvaneSerial.h"

#include "link/TorvaneSerialParts.h"

namespace quillon {

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

Signal<std::string_view, std::string_view, bool>& TorvaneSerialV3_07_QLC1::messageTaken() {
    return parts_->taken;
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
    // An "RX1" that waited already has kept a later one out of the queue, behind an "RX0".
    if (send.lastRaysMessage() == "RX0") {
        parts_->generator.RXEnable = true;
        // In every phase, also in one that allows no message yet.
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
