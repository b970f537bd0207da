#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace simulator {

/// Cuts the console's bytes into frames, each TEXT CR LF ETX, and is strict about it, as
/// the console's write side is checked here: malformed frames are counted and dropped.
class FrameParser {
public:
    using Frame = std::function<void(std::string_view text)>;

    /// Takes bytes as they come; `frame` is called for each whole frame, with empty text for a flush.
    void receive(std::string_view bytes, std::int64_t nowMs, const Frame& frame);

    /// A frame begun before is forgotten: the machine was switched off.
    void reset() { partial_.clear(); }

    [[nodiscard]] int frames() const { return frames_; }
    [[nodiscard]] int flushes() const { return flushes_; }
    [[nodiscard]] int malformed() const { return malformed_; }

private:
    void complete(const Frame& frame);

    std::string partial_;
    std::int64_t lastByteMs_ = 0;
    int frames_ = 0;
    int flushes_ = 0;
    int malformed_ = 0;
};

} // namespace simulator
