#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "base/Phase.h"
#include "console/ConsoleTexts.h"
#include "console/Runs.h"

namespace quillon {

/// How a field of the status bar is meant; how it looks follows.
enum class Tone : std::uint8_t { Plain, Unknown, Good, Waits, HeldBack, Radiation, Warning, Alarm };

/// What the console makes of a phase wherever it needs no more than a word.
struct PhaseMeaning {
    Phase phase;
    std::optional<Stimulus> stimulus; ///< to the run
    Tone tone = Tone::Plain;
    std::string ConsoleTexts::*state = nullptr; ///< what it is called; null where a mode's key says it
    std::string ConsoleTexts::*why = nullptr;   ///< why a key does nothing in it; null where that is not why
};

/// The row of a phase; an empty one for a phase that is not known.
[[nodiscard]] PhaseMeaning meaningOf(Phase phase);

} // namespace quillon
