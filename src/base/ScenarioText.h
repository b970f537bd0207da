#pragma once

#include <string>
#include <string_view>

namespace quillon {

/// In double quotes, with the escapes of a scenario for all that is not plain ASCII.
[[nodiscard]] std::string scenarioText(std::string_view bytes);

} // namespace quillon
