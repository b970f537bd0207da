#pragma once

#include <string>
#include <string_view>

#include "Journal.h"

namespace quillon {

/// Whether the message may ask for an acknowledgement at all.
[[nodiscard]] bool mayAsk(std::string_view message);

/// The session for a reader: a line each message, with what it is and what became of it.
[[nodiscard]] std::string listing(const Journal& journal);

} // namespace quillon
