#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "Journal.h"
#include "sim/Options.h"

namespace quillon {

/// A message of a machine.
struct Told {
    Milliseconds time;
    std::string text;
    std::size_t turn; ///< behind which frame it came
};

/// A frame of the console, and all until the next one. The first has no frame: it is the time before.
struct Turn {
    Milliseconds time;
    std::string command;
};

/// The frames of a recording, what its machine said, and what the simulator says to the same.
struct Playback {
    std::vector<Turn> turns;
    std::vector<Told> real;
    std::vector<Told> simulated;
    std::vector<std::string> hands;   ///< what was done to the simulator because the reports tell of it
    std::vector<std::string> strayed; ///< where the simulator had to be put into the machine's phase
};

/// Sends the frames of a recording to a simulated generator at their times. What people did at the machine is
/// read from its reports, and done to the simulator, too.
[[nodiscard]] Playback playAgainst(const Journal& recording, simulator::Options options);

/// The mnemonic of a machine's message: the longest that is known, or the letters it begins with.
[[nodiscard]] std::string mnemonicOf(std::string_view message);

} // namespace quillon
