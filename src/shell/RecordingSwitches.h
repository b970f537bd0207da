#pragma once

#include <cstdint>
#include <string>

namespace quillon {

/// The section RECORDINGS of "Quillon.ini", which is read whatever stands on the command line.
struct RecordingSwitches {
    bool keep = true;                 ///< "KEEP", off with "NO"
    std::int64_t bytes = 100'000'000; ///< "MB", 5 to 2000
};

[[nodiscard]] RecordingSwitches recordingSwitches(std::string profile);

} // namespace quillon
