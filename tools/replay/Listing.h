#pragma once

#include <string>
#include <string_view>

#include "Journal.h"
#include "tools/protocol/Meanings.h"

namespace quillon {

/// What a message says, such as "phase: 2, normal operation" or "kVp: 80 kV".
[[nodiscard]] std::string explained(Direction direction, std::string_view message);

/// The session for a reader: a line each message, with what it is and what became of it.
[[nodiscard]] std::string listing(const Journal& journal);

} // namespace quillon
