#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <string>
#include <string_view>

#include "runtime/Clock.h"
#include "runtime/Platform.h"

namespace quillon {

/// Frames that wait for a device to take them, in their order and whole. One that has waited too long is
/// dropped: a command that the machine gets late is worse than one that it never gets.
class OutputBacklog {
public:
    static constexpr Milliseconds kLongestWait = 2000;
    /// So many bytes wait at most, what 19200 baud carry in that time; a frame that does not fit is lost.
    static constexpr std::size_t kCapacity = 3840;

    /// Takes the frame whole, or refuses it for now.
    using Device = std::function<bool(std::string_view frame)>;

    /// Told of each frame once, in order, when it was taken or lost.
    explicit OutputBacklog(SerialPort::Outcome outcome) : outcome_(std::move(outcome)) {}

    void add(std::string_view frame, Milliseconds now);
    /// Drops what is too old and hands on what the device takes. A device that fails meanwhile may clear().
    void pass(Milliseconds now, const Device& device);
    /// The device is gone: all that waits is lost.
    void clear();

    [[nodiscard]] bool empty() const { return frames_.empty(); }
    /// Bytes that wait.
    [[nodiscard]] std::size_t size() const { return size_; }
    /// Frames that were lost so far.
    [[nodiscard]] std::size_t lost() const { return lost_; }

private:
    struct Frame {
        std::string bytes;
        Milliseconds since;
    };

    void removeFirst(bool sent);
    void lose(std::string_view frame);

    SerialPort::Outcome outcome_;
    std::deque<Frame> frames_;
    std::size_t size_ = 0;
    std::size_t lost_ = 0;
};

} // namespace quillon
