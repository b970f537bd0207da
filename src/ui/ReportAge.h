#pragma once

#include <cstdint>

namespace quillon {

/// Times between silences of whoever reports the values on the screen. What a report writes to a control
/// bears the number of its time; a value from before the last silence is old.
struct ReportAge {
    std::uint32_t time = 1;
    bool reporting = false; ///< what is written now was reported
};

} // namespace quillon
