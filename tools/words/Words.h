#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quillon {

struct Meaning;

/// Seen from the console.
enum class Direction : std::uint8_t { In, Out };

/// The row of the mnemonic that a message begins with, the longest that is known; none for an unknown one.
[[nodiscard]] const Meaning* meaningOf(Direction direction, std::string_view message);

/// What a message says, such as "phase: 2, normal operation" or "kVp: 80 kV".
[[nodiscard]] std::string explained(Direction direction, std::string_view message);

} // namespace quillon
