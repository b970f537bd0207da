#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "link/LinkEvents.h"

namespace quillon {

/// Cuts the generator's bytes into frames at LF or ETX. A partial frame waits for the bytes that end it.
class FrameReceiver {
public:
    /// A frame without an end is given up beyond this many characters.
    static constexpr std::size_t kLongestFrame = 32760;

    using FrameHandler = std::function<void(std::string_view frame)>;

    /// `frame` is called with each frame, without its end byte; it may hold several messages.
    FrameReceiver(LinkEvents& events, FrameHandler frame);

    /// Takes bytes as they came. May be called from inside a frame's handler: the bytes then queue up behind
    /// those that are being worked on.
    void receive(std::string_view bytes);

    /// Turns the mode on in which "K" is followed by one binary byte and "t" by two.
    void setReducedCommandCineAndDSI(bool on) { ReducedCommandCineAndDSI = on; }

private:
    void takeByte(char c);
    void reducedMode(unsigned char byte);
    void cutText(std::size_t removed);

    LinkEvents& events_;
    FrameHandler frame_;
    std::string waiting_;
    std::size_t taken_ = 0;
    std::string m_RxText;
    std::string complete_; // the frame being handled
    std::int16_t m_RxCount = 0;
    bool overlong_ = false;
    bool m_RxByteMark = false;
    bool m_RxWordMark = false;
    bool ReducedCommandCineAndDSI = false;
};

} // namespace quillon
