#include "sim/Wire.h"

#include <algorithm>

namespace simulator {

namespace {

constexpr char kEtx = '\x03';
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::size_t kLongestFrame = 160;
constexpr std::int64_t kLongestGapMs = 1000;

} // namespace

void FrameParser::receive(std::string_view bytes, std::int64_t nowMs, const Frame& frame) {
    if (!partial_.empty() && nowMs - lastByteMs_ > kLongestGapMs) {
        // The rest will not come: drop the unfinished frame so the next one parses.
        ++malformed_;
        partial_.clear();
    }
    lastByteMs_ = nowMs;
    for (const char byte : bytes) {
        if (byte == kEtx) {
            complete(frame);
        } else {
            partial_ += byte;
            if (partial_.size() > kLongestFrame) {
                ++malformed_;
                partial_.clear();
            }
        }
    }
}

void FrameParser::complete(const Frame& frame) {
    std::string text;
    text.swap(partial_);
    const bool ended = text.ends_with(kLineEnd);
    if (ended) {
        text.resize(text.size() - kLineEnd.size());
    }
    if (!ended || !std::ranges::all_of(text, [](char c) { return c >= ' ' && c <= '~'; })) {
        ++malformed_;
        return;
    }
    ++frames_;
    if (text.empty()) {
        ++flushes_;
    }
    frame(text);
}

} // namespace simulator
