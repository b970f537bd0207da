#include "sim/Line.h"

#include <algorithm>

namespace simulator {

namespace {

constexpr std::int64_t kNsPerMs = 1'000'000;
constexpr std::int64_t kNsPerSecond = 1'000'000'000;
constexpr int kBitsPerByte = 10; // with start and stop bit

} // namespace

std::int64_t Line::byteNs() const {
    return options_.baud > 0 ? kBitsPerByte * kNsPerSecond / options_.baud : 0;
}

void Line::put(std::string_view bytes, std::int64_t nowMs) {
    if (waiting_.empty()) {
        firstNs_ = std::max(nowMs * kNsPerMs, freeNs_) + byteNs();
    }
    waiting_ += bytes;
}

std::optional<std::int64_t> Line::nextDue() const {
    if (waiting_.empty()) {
        return std::nullopt;
    }
    return (firstNs_ + kNsPerMs - 1) / kNsPerMs;
}

std::string Line::take(std::int64_t nowMs) {
    std::size_t count = 0;
    for (; count < waiting_.size() && firstNs_ <= nowMs * kNsPerMs; ++count) {
        freeNs_ = firstNs_;
        firstNs_ += byteNs();
    }
    std::string passed = waiting_.substr(0, count);
    waiting_.erase(0, count);
    return passed;
}

} // namespace simulator
