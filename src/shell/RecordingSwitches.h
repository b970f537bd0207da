#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quillon {

/// The section RECORDINGS of "Quillon.ini", which is read whatever stands on the command line.
struct RecordingSwitches {
    bool keep = true;                 ///< "KEEP", off with "NO"
    std::int64_t bytes = 100'000'000; ///< "MB", 5 to 2000
};

[[nodiscard]] RecordingSwitches recordingSwitches(std::string profile);

/// The profile with KEEP set so, and all else as it is.
[[nodiscard]] std::string withKeep(std::string_view profile, bool keep);

} // namespace quillon
