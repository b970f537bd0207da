#include "link/PortControl.h"

#include <string>

#include "base/Numbers.h"

namespace quillon {

PortControl::PortControl(PanelHost& panel, SerialPort& port, LinkSettings& settings, LinkEvents& events,
                         SendPath& send, StatusPoll& poll, CommunicationLog& log)
    : SerialCom_(port), settings_(settings), events_(events), send_(send), poll_(poll), log_(log),
      cmbCommOnOff_(panel["cmbCommOnOff"]), tmrBlink_(panel.timer("tmrBlink")) {
    cmbCommOnOff_.on.click = [this] {
        const bool closing = m_PortOpen;
        setPortOpen(!closing);
        if (closing) {
            tmrBlink_.stop();
        }
    };
    SerialCom_.setArrival([this] { deviceCame(); });
}

void PortControl::setPortOpen(bool wanted) {
    m_PortOpen = false;
    // What waited belongs to the line as it was; a reopened link starts with nothing in its way.
    send_.reset();
    if (wanted) {
        open();
    } else {
        close();
    }
    tmrBlink_.run();
}

void PortControl::open() {
    settings_.show();
    asked_ = wholeSettings();
    if (!SerialCom_.open(settings_.port, settings_.portSettings())) {
        showClosed();
        if (const std::string why = SerialCom_.failure(); !why.empty()) {
            log_.noted(why);
        }
        events_.CannotOpenPort.raise(settings_.port);
        return;
    }
    opened();
}

void PortControl::opened() {
    cmbCommOnOff_.setBackColour(kActiveColour);
    cmbCommOnOff_.setCaption("OFF");
    m_PortOpen = true;
    poll_.begin();
    settings_.setListsEnabled(false);
    settings_.SaveConfiguration();
}

void PortControl::deviceCame() {
    if (asked_ != wholeSettings()) {
        SerialCom_.close(); // other settings were chosen on the Comm page, whose key opens the port
        return;
    }
    opened();
    arrived.raise();
}

std::string PortControl::wholeSettings() const {
    return decimalText(settings_.port) + ":" + settings_.portSettings();
}

void PortControl::close() {
    SerialCom_.close();
    showClosed();
}

void PortControl::showClosed() {
    poll_.end();
    cmbCommOnOff_.setBackColour(kNormalColour);
    cmbCommOnOff_.setCaption("ON");
    settings_.setListsEnabled(true);
}

} // namespace quillon
