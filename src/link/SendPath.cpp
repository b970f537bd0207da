#include "link/SendPath.h"

#include <cassert>
#include <string>

#include "link/OutboundTable.h"
#include "panel/layout/PanelTimers.h"

namespace quillon {

namespace {

constexpr std::string_view kFrameEnd = "\r\n\x03";
constexpr int kShortestRemainder = 10; // ms; below it the whole time-out is waited for

} // namespace

SendPath::SendPath(LinkState& state, LinkEvents& events, SerialPort& port, CommunicationLog& log,
                   Timers timers)
    : state_(state), events_(events), port_(port), log_(log), timers_(timers) {
    timers_.tmrProtocolHandshaking.setTick([this] { handshakingTick(); });
    timers_.tmrWaitAfterRx.setTick([this] { waitAfterRxTick(); });
    port_.setOutcome([this](std::string_view frame, bool sent) { frameLeft(frame, sent); });
}

bool SendPath::allows(PhaseMask phases) const {
    // What every phase allows also passes in an unknown phase: the poll must survive a garbled report.
    return phases == kAllPhases || (state_.m_PhaseMask & phases) == state_.m_PhaseMask;
}

void SendPath::SendMessage(std::string_view newmessage, PhaseMask phases, bool WithACK, std::int16_t Timeout,
                           bool SendImmediately) {
    if (!allows(phases)) {
        events_.WrongPhase.raise(std::string(newmessage));
        return;
    }
    // While a key repeats, its steps must neither wait for an acknowledgement nor be taken for one another.
    const bool repeating = timers_.tmrAutoRepeat.running();
    QueuedMessage message{std::string(newmessage), phases, Timeout > 0 ? Timeout : kTimeout,
                          WithACK && !repeating, lastTicket_ + 1};
    if (SendImmediately) {
        m_Queue.clear();
        m_SendImmediate = true;
    }
    const std::uint32_t same = repeating ? 0 : m_Queue.queued(message);
    if (same == 0 && m_Queue.count() < SendQueue::kCapacity) {
        ++lastTicket_;
    }
    if (handedOver_) {
        handedOver_(same == 0 ? lastTicket_ : same);
    }
    if (same != 0) {
        return;
    }
    const int timeout = message.Timeout;
    m_Queue.enqueue(std::move(message));
    if (m_Queue.count() == 1) {
        m_RetriesLeft = state_.numretries;
        timers_.tmrProtocolHandshaking.start(timeout);
    }
}

void SendPath::discardWaiting() {
    m_Queue.clear();
    m_AckPending = false; // no acknowledgement is pending for what was thrown away
}

void SendPath::setNotices(Notices notices) {
    handedOver_ = std::move(notices.handedOver);
    m_Queue.onLeft = std::move(notices.left);
}

void SendPath::SendMessageWithDefaults(std::string_view newmessage, PhaseMask phases) {
    SendMessage(newmessage, phases, state_.Handshaking);
}

void SendPath::Flush() {
    SendMessage("", kAllPhases);
}

void SendPath::transmit(const QueuedMessage& message) {
    assert(port_.isOpen());
    std::string frame;
    frame.reserve(message.Message.size() + kFrameEnd.size());
    frame.append(message.Message).append(kFrameEnd);
    port_.write(frame);
    --m_RetriesLeft;
    if (message.Message.starts_with("RX")) {
        lastRaysMessage_ = message.Message;
    }
}

void SendPath::frameLeft(std::string_view frame, bool sent) {
    frame.remove_suffix(kFrameEnd.size());
    if (sent) {
        log_.sent(frame);
    } else {
        log_.notSent(frame);
    }
}

void SendPath::handshakingTick() {
    if (m_WaitAfterRx) {
        return;
    }
    if (m_RetriesLeft == 0) {
        m_Queue.dequeue(false);
        m_SendImmediate = false;
        m_RetriesLeft = state_.numretries;
        return;
    }
    QueuedMessage message;
    const bool open = port_.isOpen();
    if (open) {
        message = m_Queue.front();
        transmit(message);
    }
    m_AckReceived = false;
    m_AckPending = true;
    if (!message.WithACK) {
        m_Queue.dequeue(open);
        m_AckPending = false;
        m_RetriesLeft = state_.numretries;
    }
    if (m_Queue.empty()) {
        timers_.tmrProtocolHandshaking.stop();
        timers_.timerStatusUpdate.start(kPollInterval);
    } else {
        timers_.tmrProtocolHandshaking.start(message.Timeout);
    }
}

void SendPath::fmessMessageAcknowledge() {
    if (m_AckReceived) {
        return;
    }
    m_AckReceived = true;
    if (!m_AckPending) {
        return;
    }
    m_Queue.dequeue(true);
    m_SendImmediate = false;
    if (!m_Queue.empty()) {
        timers_.tmrProtocolHandshaking.start(m_Queue.front().Timeout);
    }
    m_RetriesLeft = state_.numretries;
    timers_.timerStatusUpdate.setRunning(m_Queue.empty());
}

void SendPath::messageHeard() {
    if (m_AckPending && !m_SendImmediate) {
        timers_.tmrProtocolHandshaking.stop();
        m_WaitAfterRx = true;
        timers_.tmrWaitAfterRx.start(kWaitAfterRx);
    }
}

void SendPath::waitAfterRxTick() {
    if (m_Queue.empty()) {
        timers_.tmrProtocolHandshaking.stop();
    } else {
        const int timeout = m_Queue.front().Timeout;
        const int rest = timeout - kWaitAfterRx;
        timers_.tmrProtocolHandshaking.start(rest < kShortestRemainder ? timeout : rest);
    }
    timers_.tmrWaitAfterRx.stop();
    m_WaitAfterRx = false;
}

void SendPath::drain() {
    if (m_RetriesLeft < state_.numretries) {
        m_Queue.dequeue(false); // transmitted already, and nobody waits for its acknowledgement any more
    }
    for (; !m_Queue.empty() && port_.isOpen(); m_Queue.dequeue(true)) {
        transmit(m_Queue.front());
    }
    reset();
}

void SendPath::reset() {
    m_Queue.clear();
    timers_.tmrProtocolHandshaking.stop();
    timers_.tmrWaitAfterRx.stop();
    m_RetriesLeft = 0;
    m_AckPending = false;
    m_AckReceived = false;
    m_SendImmediate = false;
    m_WaitAfterRx = false;
}

} // namespace quillon
