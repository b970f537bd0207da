#pragma once

#include <string_view>

#include "Visit.h"

namespace quillon {

/// Plays each recording of a visit through the console's own program, and tells what happened. A session
/// begins when its clock says so, or else when the one before has ended.
[[nodiscard]] Visit visitOf(std::string_view content);

} // namespace quillon
