#pragma once

#include <deque>
#include <string>
#include <string_view>

#include "Visit.h"

namespace quillon {

/// Holds the frames that go out against those that the recording tells of.
class PlayCheck {
public:
    explicit PlayCheck(Trust& trust) : trust_(trust) {}

    void recorded(Milliseconds at, std::string_view frame);
    void played(Milliseconds at, std::string_view frame);
    /// The recording has ended, at this time.
    void finish(Milliseconds end);

private:
    struct Frame {
        Milliseconds at;
        std::string text;
        bool operator==(const Frame&) const = default;
    };

    void compare();

    Trust& trust_;
    // What has no counterpart yet.
    std::deque<Frame> recorded_;
    std::deque<Frame> played_;
};

} // namespace quillon
