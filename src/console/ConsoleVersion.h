#pragma once

#include <string_view>

namespace quillon {

/// The version that the console's screen shows, counted separately from the package's.
inline constexpr std::string_view kConsoleVersion = "V6.18";

} // namespace quillon
