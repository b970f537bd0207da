#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "link/CommunicationLog.h"
#include "link/LinkEvents.h"
#include "link/LinkState.h"
#include "link/SendQueue.h"
#include "runtime/Platform.h"
#include "runtime/Schedule.h"

namespace quillon {

/// The only way out to the generator: checks a message against the phase, queues it, sends it from a timer,
/// and repeats it until it is acknowledged or its tries have run out.
class SendPath {
public:
    static constexpr std::int16_t kTimeout = 350;

    /// The timers that pace the line; they are controls of the link control.
    struct Timers {
        Timer& tmrProtocolHandshaking;
        Timer& tmrWaitAfterRx;
        Timer& tmrAutoRepeat;
        Timer& timerStatusUpdate;
    };

    SendPath(LinkState& state, LinkEvents& events, SerialPort& port, CommunicationLog& log, Timers timers);

    /// Queues a message. `phases` are those that allow it; outside it WrongPhase is raised and
    /// nothing is queued. It leaves one `Timeout` (ms; 0 and below count as 350) later at the earliest.
    /// `SendImmediately` throws away whatever waits.
    void SendMessage(std::string_view newmessage, PhaseMask phases, bool WithACK = false,
                     std::int16_t Timeout = kTimeout, bool SendImmediately = false);
    /// Throws away whatever waits, what waits for its acknowledgement included.
    void discardWaiting();
    /// Asks for an acknowledgement when Handshaking is on.
    void SendMessageWithDefaults(std::string_view newmessage, PhaseMask phases);
    /// Sends the empty message: the three end bytes alone.
    void Flush();

    /// "AK" came. One counts per transmission.
    void fmessMessageAcknowledge();
    /// A message of the own table was handled: the next transmission waits until the line has been quiet.
    void messageHeard();
    /// The port is about to close: writes what waits, at once and in order. A message that was sent and waits
    /// only for its acknowledgement is not sent again.
    void drain();
    /// The port was opened or closed: nothing that waited survives, and no timer waits for it.
    void reset();

    /// Notices about each message: `handedOver` gives its ticket when it is queued, or that of an equal one
    /// that waits already; `left` comes when it is acknowledged (done), given up or thrown away, and for one
    /// that asks for no acknowledgement when it is sent (done).
    struct Notices {
        std::function<void(std::uint32_t ticket)> handedOver;
        std::function<void(std::uint32_t ticket, bool done)> left;
    };
    void setNotices(Notices notices);

    /// Whether the present phase lets a message with this mask out.
    [[nodiscard]] bool allows(PhaseMask phases) const;
    /// The last message about X-rays that went out.
    [[nodiscard]] std::string_view lastRaysMessage() const { return lastRaysMessage_; }
    [[nodiscard]] std::int16_t queueCount() const { return m_Queue.count(); }

private:
    void handshakingTick();
    void waitAfterRxTick();
    void transmit(const QueuedMessage& message);
    void frameLeft(std::string_view frame, bool sent);

    LinkState& state_;
    LinkEvents& events_;
    SerialPort& port_;
    CommunicationLog& log_;
    Timers timers_;
    SendQueue m_Queue;
    std::int16_t m_RetriesLeft = 0;
    bool m_AckPending = false;
    bool m_AckReceived = false;
    bool m_SendImmediate = false;
    bool m_WaitAfterRx = false;
    std::string lastRaysMessage_;
    std::uint32_t lastTicket_ = 0;
    std::function<void(std::uint32_t ticket)> handedOver_;
};

} // namespace quillon
