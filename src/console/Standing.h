#pragma once

#include <cstdint>
#include <string_view>

#include "base/Phase.h"
#include "console/ConsoleKeys.h"
#include "console/Moments.h"

namespace quillon {

/// Where the generator stands, as far as the screen goes. Preparation, exposures, an error and an overheated
/// tube keep what they came from.
enum class Stand : std::uint8_t {
    Silent, ///< nothing was heard that tells a mode
    Lost,
    PoweringUp,
    Ready,
    WithUsers, ///< Ready, and the machine lent
    Calibration,
    Configuration,
    Autocalibration,
    Asking, ///< outside of a mode it asks whether to autocalibrate
};
inline constexpr std::size_t kStands = 9;

/// What the working area holds.
enum class Area : std::uint8_t { AsLeft, Picture, LinkControl };
/// What the prompt says.
enum class Says : std::uint8_t { AsLeft, None, Lost, PoweringUp, Question, Expose, Result };
/// The positioner's key, where there is one.
enum class Offer : std::uint8_t { AsLeft, Shown, Hidden };

/// What is on the screen while nothing is under way. A key that is neither in reach nor out of it is as left.
struct StandingRow {
    Stand stand;
    std::string_view name;
    Area area;
    Keys inReach;
    Keys outOfReach;
    Keys shown;  ///< of the mode keys and the one that lends; the others of them are hidden
    Keys hidden; ///< those
    Keys lit;    ///< of the same; the others have the colour of a key at rest
    Caption caption;
    Says words;
    Offer positioner;
    Rx rx;
};

[[nodiscard]] const StandingRow& rowOf(Stand stand);

/// What has been heard of it.
struct Heard {
    Phase mode;  ///< the last of 2, 6, 8 and 9
    Phase phase; ///< the last report
    bool lost;
    bool poweringUp;
    bool lent;
    bool exposes; ///< in autocalibration the operator is asked for exposures
    bool exitUnheard; ///< a way out was tried while it was lost
};
[[nodiscard]] Stand standOf(const Heard& heard);
/// The row of where it stands, with what its present phase takes and says.
[[nodiscard]] StandingRow standingOf(const Heard& heard);

} // namespace quillon
