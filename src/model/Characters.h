#pragma once

#include <algorithm>
#include <cstddef>
#include <limits>
#include <string_view>

namespace quillon {

/// The characters `first` to `last` of a message's value, counted from 1 as the protocol does; what lies
/// behind the end of a short value is missing from the result.
[[nodiscard]] constexpr std::string_view
characters(std::string_view value, std::size_t first,
           std::size_t last = std::numeric_limits<std::size_t>::max()) {
    return value.substr(std::min(first - 1, value.size()), last - first + 1);
}

} // namespace quillon
