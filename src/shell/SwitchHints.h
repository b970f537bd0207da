#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillon {

/// What is on the console's command line and means nothing to it, a sentence each. The console starts all the
/// same: a switch that it does not know still keeps the section CONFIG from being read.
[[nodiscard]] std::vector<std::string> switchHints(std::string_view commandLine);

} // namespace quillon
