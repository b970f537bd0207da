#pragma once

#include <cstdint>

namespace quillon {

/// The positioner that a site has to calibrate.
enum class PositionerKind : std::uint8_t { None, Orla, Remote };

} // namespace quillon
