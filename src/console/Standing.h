#pragma once

#include <cstdint>
#include <string_view>

#include "base/Phase.h"
#include "console/ConsoleKeys.h"
#include "console/Effects.h"

namespace quillon {

/// The states of the generator that the screen at rest distinguishes. Preparation, exposures, an error and an
/// overheated tube count as the state before them.
enum class Stand : std::uint8_t {
    Silent, ///< no mode was reported yet
    Lost,
    PoweringUp,
    Ready,
    WithUsers, ///< Ready, and the machine lent
    Calibration,
    Configuration,
    Autocalibration,
    Asking, ///< outside of a mode it asks whether to autocalibrate
};
inline constexpr std::size_t kStands = static_cast<std::size_t>(Stand::Asking) + 1;

/// What the working area holds.
enum class Area : std::uint8_t { Picture, LinkControl };
/// The page of the link control: of its main menu, whichever was left there, or of its service menu.
enum class Page : std::uint8_t { AsLeft, Main, Configuration, Calibration };
/// What the prompt says.
enum class Says : std::uint8_t { AsLeft, None, Lost, PoweringUp, Question, Expose, ResultError, ResultOk };
/// The positioner's key, where there is one.
enum class Offer : std::uint8_t { AsLeft, Shown, Hidden };

/// Whether autocalibration asks the operator for exposures.
enum class ExposureRequest : std::uint8_t {
    None,
    Stands, ///< autocalibration was handed over to the operator
    Over,   ///< leaving it was begun
};

/// The screen while there is no run. It enables the keys that lead on, and disables none.
struct StandingRow {
    Stand stand;
    std::string_view name;
    Area area;
    Page page;
    Keys inReach;
    Keys shown; ///< of the mode keys and the one that lends; the others of them are hidden
    Keys lit;   ///< of the same; the others have the colour of a key at rest
    Caption caption;
    Says words;
    Offer positioner;
};

[[nodiscard]] const StandingRow& rowOf(Stand stand);

/// What the generator has reported.
struct Heard {
    Phase mode;  ///< the last of 2, 6, 8 and 9
    Phase phase; ///< the last report
    bool lost;
    bool poweringUp;
    bool lent;
    ExposureRequest exposures;
    bool exitUnheard; ///< leaving was tried while the generator was lost
};
[[nodiscard]] Stand standOf(const Heard& heard);
/// The row of its state, changed by its present phase.
[[nodiscard]] StandingRow standingOf(const Heard& heard);

} // namespace quillon
