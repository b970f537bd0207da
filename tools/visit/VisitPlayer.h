#pragma once

#include <string_view>
#include <vector>

#include "Visit.h"

namespace quillon {

/// A file holds one recording or more, one behind the other. What stands in a small file that a recording
/// carries is no beginning.
[[nodiscard]] std::vector<std::string_view> recordingsIn(std::string_view content);

/// Plays each recording of a visit through the console's own program, and tells what happened. A session
/// begins when its clock says so, or else when the one before has ended.
[[nodiscard]] Visit visitOf(std::string_view content);

} // namespace quillon
