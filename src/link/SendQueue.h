#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>

#include "base/Phase.h"

namespace quillon {

/// One message that waits to be sent.
struct QueuedMessage {
    std::string Message;      ///< without end bytes
    PhaseMask phases = 0;     ///< that let it out
    std::int16_t Timeout = 0; ///< ms to the next tick after this message
    bool WithACK = false;     ///< stays at the head until it is acknowledged
    std::uint32_t ticket = 0; ///< names it among all that were ever queued
};

/// A ring of 100 messages. A message that finds it full is lost without a word.
class SendQueue {
public:
    static constexpr std::int16_t kCapacity = 100;

    [[nodiscard]] std::int16_t count() const { return m_QueueCount; }
    [[nodiscard]] bool empty() const { return m_QueueCount == 0; }
    /// A copy of the message at the head; an empty one when there is none.
    [[nodiscard]] QueuedMessage front() const;
    /// The message at the head leaves; `done`: it was sent, and acknowledged where it asks for that.
    void dequeue(bool done);
    void enqueue(QueuedMessage message);
    /// The ticket of a message of the same text, phase mask and time-out that waits between head and tail, 0
    /// for none. Once the tail has wrapped round below the head, nothing is found.
    [[nodiscard]] std::uint32_t queued(const QueuedMessage& message) const;
    void clear();

    /// Told of each message that leaves, and whether it was done or lost.
    std::function<void(std::uint32_t ticket, bool done)> onLeft;

private:
    [[nodiscard]] bool whole() const;

    std::array<QueuedMessage, kCapacity> m_Queue;
    std::int16_t m_QueueCount = 0;
    std::int16_t m_QueueHead = 0;
    std::int16_t m_QueueTail = 0;
};

} // namespace quillon
