#pragma once

#include <string>

namespace quillon {

/// What the console does at a time and what ends it, as the program's tables tell it, in Markdown.
[[nodiscard]] std::string workflowsDocument();

} // namespace quillon
