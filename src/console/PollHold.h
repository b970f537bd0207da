#pragma once

#include <functional>

#include "console/ConsoleContext.h"
#include "console/Effects.h"

namespace quillon {

/// Why the status poll is off, and for how long: a run that holds it frees it itself, and so does an answer
/// to the generator. For any other reason it is off for 30 s at most.
class PollHold {
public:
    /// `wanted` says whether something is under way that has a reason to hold the poll.
    PollHold(ConsoleContext& context, std::function<bool()> wanted);

    /// During an exposure nothing is parked.
    void move(Poll poll, bool exposing);
    /// To be called whenever it may have stopped.
    void notice();
    /// Held by a moment, and not freed since.
    [[nodiscard]] bool held() const { return held_; }

private:
    void watch();

    ConsoleContext& context_;
    std::function<bool()> wanted_;
    Timer watch_; ///< while the poll is away
    bool held_ = false;
    bool offUntilReport_ = false;
};

} // namespace quillon
