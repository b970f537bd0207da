#pragma once

#include <optional>

#include "Recordings.h"
#include "tools/visit/Visit.h"

namespace quillon {

/// The newest visit of the recordings before that one, of the same device and generator version; only the few
/// that come first are played for it.
[[nodiscard]] std::optional<Visit> earlierVisit(Recordings& recordings, const RecordedVisit& than,
                                                const Visit& played);

} // namespace quillon
