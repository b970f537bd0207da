#pragma once

#include <string_view>

namespace quillon {

/// The version of the console that its own screen tells, counted apart from the package's.
inline constexpr std::string_view kConsoleVersion = "V6.18";

} // namespace quillon
