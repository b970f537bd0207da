#include "console/PollHold.h"

#include <utility>

namespace quillon {

namespace {

constexpr int kLongest = 30000; // ms that it may be off with nothing that holds it

} // namespace

PollHold::PollHold(ConsoleContext& context, std::function<bool()> wanted)
    : context_(context), wanted_(std::move(wanted)), watch_(context.console.schedule()) {
    watch_.setTick([this] { watch(); });
}

void PollHold::move(Poll poll, bool exposing) {
    held_ = poll == Poll::Held || (held_ && poll != Poll::Free && poll != Poll::OffUntilReport);
    // Only a report enables the keys after an exposure; if it is lost, the poll must bring another.
    const bool free = poll == Poll::Free || (poll == Poll::Resumed && offUntilReport_) ||
                      (poll == Poll::OffUntilReport && exposing);
    if (poll == Poll::Held || free) {
        context_.link.setStatusUpdateEnable(free);
    }
    if (poll != Poll::Stays) {
        offUntilReport_ = poll == Poll::OffUntilReport && !free;
        if (poll == Poll::Held || offUntilReport_) {
            watch_.start(kLongest);
        }
    }
}

void PollHold::notice() {
    if (context_.link.StatusUpdateEnable() && !context_.link.polls() && !watch_.running()) {
        watch_.start(kLongest);
    }
}

void PollHold::watch() {
    const bool byHost = !context_.link.StatusUpdateEnable() && !held_ && !offUntilReport_;
    if (context_.link.polls() || byHost || !context_.link.PortOpen()) {
        watch_.stop();
    } else if (wanted_()) {
        watch_.start(kLongest);
    } else {
        watch_.stop();
        held_ = false;
        offUntilReport_ = false;
        context_.link.pollAgain();
    }
}

} // namespace quillon
