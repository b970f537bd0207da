#pragma once

#include <string>

#include "Journal.h"

namespace quillon {

/// A scenario that plays the generator's side of a log: its messages in their order, at assumed times.
[[nodiscard]] std::string scenarioOf(const Journal& log);

} // namespace quillon
