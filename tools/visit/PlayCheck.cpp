#include "PlayCheck.h"

#include <algorithm>

namespace quillon {

void PlayCheck::recorded(Milliseconds at, std::string_view frame) {
    recorded_.push_back({at, std::string(frame)});
    ++trust_.recorded;
    compare();
}

void PlayCheck::played(Milliseconds at, std::string_view frame) {
    played_.push_back({at, std::string(frame)});
    compare();
}

void PlayCheck::compare() {
    while (!trust_.differsAt && !recorded_.empty() && !played_.empty()) {
        if (recorded_.front() != played_.front()) {
            trust_.differsAt = std::min(recorded_.front().at, played_.front().at);
            return;
        }
        ++trust_.same;
        recorded_.pop_front();
        played_.pop_front();
    }
}

void PlayCheck::finish(Milliseconds end) {
    // The last lines of a recording that was cut off may tell of a frame and not of the time up to it.
    while (!recorded_.empty() && recorded_.back().at > end) {
        recorded_.pop_back();
        --trust_.recorded;
    }
    if (!trust_.differsAt && (!recorded_.empty() || !played_.empty())) {
        trust_.differsAt = (recorded_.empty() ? played_ : recorded_).front().at;
    }
}

} // namespace quillon
