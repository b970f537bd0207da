#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "runtime/Clock.h"

namespace quillon {

/// The PC's own date and time. They may go back, and only remarks use them.
struct WallTime {
    Milliseconds sinceEpoch = 0; ///< of 1970, UTC
    int offset = 0;              ///< minutes that the place is ahead of UTC
};

/// "2026-11-25T09:04:12.310+01:00".
[[nodiscard]] std::string isoText(const WallTime& time);
/// "2026-11-25" and "09:04:12", as the place has them.
[[nodiscard]] std::string dateText(const WallTime& time);
[[nodiscard]] std::string timeOfDayText(const WallTime& time);
/// Nothing when the text does not look like an ISO time with its offset.
[[nodiscard]] std::optional<WallTime> wallTimeOf(std::string_view text);

} // namespace quillon
