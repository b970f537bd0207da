#pragma once

#include <span>
#include <string_view>

namespace quillon {

/// What cannot be reached, and why; `*` at the end stands for any rest. One that is reached all the same
/// makes its reason a complaint.
struct Reason {
    std::string_view probe;
    std::string_view why;
};
[[nodiscard]] std::span<const Reason> reasonsOfProbes();

} // namespace quillon
