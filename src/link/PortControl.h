#pragma once

#include <string>

#include "link/CommunicationLog.h"
#include "link/LinkEvents.h"
#include "link/LinkSettings.h"
#include "link/SendPath.h"
#include "link/StatusPoll.h"
#include "panel/layout/Names.h"
#include "runtime/Platform.h"
#include "runtime/Signal.h"

namespace quillon {

/// Opens and closes the port, and shows on the Comm page which it is.
class PortControl {
public:
    /// `panel` holds the key and the lists of the Comm page, and the timer of the blinking keys.
    PortControl(PanelHost& panel, SerialPort& port, LinkSettings& settings, LinkEvents& events,
                SendPath& send, StatusPoll& poll, CommunicationLog& log);

    [[nodiscard]] bool PortOpen() const { return m_PortOpen; }
    /// Opens the stored port with the stored settings, closing first what is open, or closes it. A port that
    /// does not open raises CannotOpenPort.
    void setPortOpen(bool open);

    /// The port stands open at last, long after it could not be opened.
    Signal<> arrived;

private:
    void open();
    void opened();
    void deviceCame();
    void close();
    void showClosed();
    [[nodiscard]] std::string wholeSettings() const;

    SerialPort& SerialCom_;
    LinkSettings& settings_;
    LinkEvents& events_;
    SendPath& send_;
    StatusPoll& poll_;
    CommunicationLog& log_;
    Control& cmbCommOnOff_;
    Timer& tmrBlink_;
    bool m_PortOpen = false;
    std::string asked_; ///< the port and its settings, as they were to be opened last
};

} // namespace quillon
