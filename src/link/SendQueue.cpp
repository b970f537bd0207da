#include "link/SendQueue.h"

#include <cassert>

namespace quillon {

namespace {

std::int16_t next(std::int16_t index) {
    return static_cast<std::int16_t>((index + 1) % SendQueue::kCapacity);
}

} // namespace

/// From head to tail there are as many as are counted.
bool SendQueue::whole() const {
    return m_QueueCount >= 0 && m_QueueCount <= kCapacity &&
           (m_QueueHead + m_QueueCount) % kCapacity == m_QueueTail;
}

QueuedMessage SendQueue::front() const {
    return empty() ? QueuedMessage{} : m_Queue[static_cast<std::size_t>(m_QueueHead)];
}

void SendQueue::dequeue(bool done) {
    if (!empty()) {
        const std::uint32_t ticket = m_Queue[static_cast<std::size_t>(m_QueueHead)].ticket;
        m_QueueHead = next(m_QueueHead);
        --m_QueueCount;
        assert(whole());
        if (onLeft) {
            onLeft(ticket, done);
        }
    }
}

void SendQueue::enqueue(QueuedMessage message) {
    if (m_QueueCount < kCapacity) {
        ++m_QueueCount;
        m_Queue[static_cast<std::size_t>(m_QueueTail)] = std::move(message);
        m_QueueTail = next(m_QueueTail);
        assert(whole());
    }
}

std::uint32_t SendQueue::queued(const QueuedMessage& message) const {
    for (std::int16_t at = m_QueueHead; at < m_QueueTail; at = next(at)) {
        const QueuedMessage& waiting = m_Queue[static_cast<std::size_t>(at)];
        if (waiting.Message == message.Message && waiting.phases == message.phases &&
            waiting.Timeout == message.Timeout) {
            return waiting.ticket;
        }
    }
    return 0;
}

void SendQueue::clear() {
    while (!empty()) {
        dequeue(false);
    }
    m_QueueHead = 0;
    m_QueueTail = 0;
}

} // namespace quillon
