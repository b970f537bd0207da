#include "link/SendQueue.h"

namespace quillon {

namespace {

std::int16_t next(std::int16_t index) {
    return static_cast<std::int16_t>((index + 1) % SendQueue::kCapacity);
}

} // namespace

QueuedMessage SendQueue::front() const {
    return empty() ? QueuedMessage{} : m_Queue[static_cast<std::size_t>(m_QueueHead)];
}

void SendQueue::dequeue() {
    if (!empty()) {
        m_QueueHead = next(m_QueueHead);
        --m_QueueCount;
    }
}

void SendQueue::enqueue(QueuedMessage message) {
    if (m_QueueCount < kCapacity) {
        ++m_QueueCount;
        m_Queue[static_cast<std::size_t>(m_QueueTail)] = std::move(message);
        m_QueueTail = next(m_QueueTail);
    }
}

bool SendQueue::isQueued(const QueuedMessage& message) const {
    for (std::int16_t at = m_QueueHead; at < m_QueueTail; at = next(at)) {
        const QueuedMessage& queued = m_Queue[static_cast<std::size_t>(at)];
        if (queued.Message == message.Message && queued.Phase == message.Phase &&
            queued.Timeout == message.Timeout) {
            return true;
        }
    }
    return false;
}

void SendQueue::clear() {
    m_QueueCount = 0;
    m_QueueHead = 0;
    m_QueueTail = 0;
}

} // namespace quillon
