#pragma once

#include <string>
#include <vector>

#include "Playback.h"

namespace quillon {

/// How the simulator differs from the machine of a recording.
struct Comparison {
    std::string report;  ///< for a reader: what differs, sorted, with how often and where first; the delays
    std::string profile; ///< lines of a machine's profile with the delays that were measured
    std::vector<std::string> differences; ///< their kinds, such as "delay of AK"
};

[[nodiscard]] Comparison compared(const Playback& playback);

} // namespace quillon
