#pragma once

#include <string>
#include <string_view>

namespace quillon {

/// A text of the wire or of a small file, in which a byte is a character, for the world outside.
[[nodiscard]] std::string utf8Of(std::string_view bytes);

} // namespace quillon
