#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "base/Phase.h"
#include "console/ConsoleTexts.h"
#include "console/Runs.h"

namespace quillon {

/// What a field of the status bar means; its look is derived from that.
enum class Tone : std::uint8_t { Plain, Unknown, Good, Waits, HeldBack, Radiation, Warning, Alarm };

/// Facts about a phase that are looked up in this table.
struct PhaseMeaning {
    Phase phase;
    std::optional<Stimulus> stimulus; ///< to the run
    Tone tone = Tone::Plain;
    std::string ConsoleTexts::*state = nullptr; ///< its name; null if it has that of the mode's key
    std::string ConsoleTexts::*why = nullptr;   ///< why a key does nothing in it; null if that is no reason
};

/// The row of a phase; an empty one for a phase that is not known.
[[nodiscard]] PhaseMeaning meaningOf(Phase phase);

} // namespace quillon
