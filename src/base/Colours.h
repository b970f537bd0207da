#pragma once

#include <cstdint>

namespace quillon {

/// 0x00BBGGRR; with the top bit set the low byte is the number of a system colour.
using Colour = std::uint32_t;

inline constexpr Colour kActiveColour = 0xC0FFFF;      ///< a key that is on: light yellow
inline constexpr Colour kNormalColour = 0x8000000F;    ///< a key at rest: the system's button face
inline constexpr Colour kSurfaceColour = 0xC0C0C0;     ///< the console's surface
inline constexpr Colour kErrorFlashColour = 0x00FFFF;  ///< the reset key while an error stands: yellow
inline constexpr Colour kPreparationColour = 0x80FF80; ///< preparation lamp
inline constexpr Colour kExposureColour = 0x80FFFF;    ///< exposure lamp
inline constexpr Colour kWindowColour = 0x80000005;    ///< the system's window background
inline constexpr Colour kRefusedColour = 0x8080FF;     ///< a text box whose text could not be used

} // namespace quillon
