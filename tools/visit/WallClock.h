#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "runtime/Clock.h"

namespace quillon {

/// A moment as the clock of a PC had it.
struct WallTime {
    std::int64_t ms = 0; ///< since the beginning of 1970, as the place counts its hours
    std::string zone;    ///< behind an ISO time: "+01:00", "Z" or nothing

    /// "2026-11-25T09:04:12.310+01:00"; nothing when it is none.
    [[nodiscard]] static std::optional<WallTime> read(std::string_view iso);
    [[nodiscard]] std::string iso() const;
    [[nodiscard]] std::string date() const;      ///< 2026-11-25
    [[nodiscard]] std::string timeOfDay() const; ///< 09:04:12
};

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
