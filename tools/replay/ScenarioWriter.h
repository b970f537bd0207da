#pragma once

#include <string>

#include "Session.h"

namespace quillon {

/// A scenario that plays the generator's side of a log: its messages in their order, at assumed times.
[[nodiscard]] std::string scenarioOf(const Session& log);

} // namespace quillon
