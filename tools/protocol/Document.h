#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillon {

/// An event that something else than a message raises.
struct OtherSource {
    std::string_view event;
    std::string_view source;
};
[[nodiscard]] const std::vector<OtherSource>& otherEventSources();

/// The whole protocol as the program's tables tell it, in Markdown.
[[nodiscard]] std::string protocolDocument();

} // namespace quillon
