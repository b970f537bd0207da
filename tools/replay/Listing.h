#pragma once

#include <string>
#include <string_view>

#include "Journal.h"

namespace quillon {

/// The session for a reader: a line each message, with what it is and what became of it.
[[nodiscard]] std::string listing(const Journal& journal);

} // namespace quillon
