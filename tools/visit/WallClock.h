#pragma once

#include <optional>
#include <string>
#include <vector>

#include "runtime/Clock.h"
#include "runtime/WallTime.h"

namespace quillon {

/// Tells the time of day along a visit, whose own time only goes on, from the remarks in its recordings.
class WallClock {
public:
    struct Mark {
        Milliseconds at;
        WallTime wall;
    };
    /// A clock that was set, or a PC that slept: so much the wall clock moved against the time of the visit.
    struct Jump {
        Milliseconds at;
        Milliseconds by;
    };

    void add(Milliseconds at, const WallTime& wall) { marks_.push_back({at, wall}); }
    [[nodiscard]] bool known() const { return !marks_.empty(); }
    /// Nothing where the recordings hold no time of day.
    [[nodiscard]] std::optional<WallTime> at(Milliseconds time) const;
    /// The time of day, behind the date where that is another one than at the beginning; or the hours,
    /// minutes and seconds since then.
    [[nodiscard]] std::string text(Milliseconds time) const;
    /// From one mark to the next within a session that begins at `begins`; below a second it is drift.
    [[nodiscard]] std::vector<Jump> jumps(const std::vector<Milliseconds>& begins) const;

private:
    std::vector<Mark> marks_;
};

/// "0:07:05".
[[nodiscard]] std::string clockText(Milliseconds ms);

} // namespace quillon
