#include "runtime/OutputBacklog.h"

#include <utility>

namespace quillon {

void OutputBacklog::add(std::string_view frame, Milliseconds now) {
    if (size_ + frame.size() > kCapacity) {
        lose(frame);
        return;
    }
    frames_.push_back({std::string(frame), now});
    size_ += frame.size();
}

void OutputBacklog::pass(Milliseconds now, const Device& device) {
    while (!frames_.empty() && now - frames_.front().since > kLongestWait) {
        removeFirst(false);
    }
    while (!frames_.empty() && device(frames_.front().bytes)) {
        removeFirst(true);
    }
}

void OutputBacklog::clear() {
    while (!frames_.empty()) {
        removeFirst(false);
    }
}

void OutputBacklog::removeFirst(bool sent) {
    const Frame frame = std::move(frames_.front());
    frames_.pop_front();
    size_ -= frame.bytes.size();
    if (sent) {
        outcome_(frame.bytes, true);
    } else {
        lose(frame.bytes);
    }
}

void OutputBacklog::lose(std::string_view frame) {
    ++lost_;
    outcome_(frame, false);
}

} // namespace quillon
