#include "link/LinkSilence.h"

#include <utility>

namespace quillon {

namespace {

constexpr int kPollsMissed = 2;

} // namespace

void LinkSilence::heard() {
    heardAt_ = schedule_.now();
    const bool first = !std::exchange(everHeard_, true);
    set(false);
    if (first) {
        changed.raise();
    }
}

void LinkSilence::polled(int unanswered) {
    // The last of them may still be answered.
    if (everHeard_ && unanswered > kPollsMissed && !quiet_) {
        ++age.time;
        set(true);
    }
}

void LinkSilence::forget() {
    everHeard_ = false;
    quiet_ = false;
    changed.raise();
}

void LinkSilence::set(bool quiet) {
    if (quiet_ != quiet) {
        quiet_ = quiet;
        changed.raise();
    }
}

} // namespace quillon
