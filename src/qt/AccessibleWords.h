#pragma once

#include <QString>

#include "console/Indicators.h"
#include "ui/Control.h"

namespace quillon {

/// What a screen reader calls the control; empty for one that shows nothing. A key that carries an arrow is
/// called by what it steps, "kVp +".
[[nodiscard]] QString accessibleName(const Control& control, const Indicators* indicators);

/// What its look says beside the name: rank, age, what keeps it back or what it waits for; and what a key or
/// a value is about, where a label beside it says so.
[[nodiscard]] QString accessibleDescription(const Control& control, const Indicators* indicators);

/// It is lit, or set.
[[nodiscard]] bool isLit(const Control& control);

} // namespace quillon
