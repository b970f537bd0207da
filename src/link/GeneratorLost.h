#pragma once

#include <cstdint>

namespace quillon {

/// As many polls in a row may go without an answer; the next one declares the generator lost.
inline constexpr std::int16_t kPollsUntilLost = 30;

/// The code of the error that tells the loss.
inline constexpr std::int16_t kGeneratorLost = 33;

} // namespace quillon
