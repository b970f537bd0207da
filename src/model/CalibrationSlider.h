#pragma once

#include <cstdint>

#include "model/GeneratorState.h"
#include "ui/Control.h"

namespace quillon {

/// Gives the calibration slider another range. A reported value that the old range cut off comes back where
/// the new one has room for it: what the slider shows is what its release sends.
void setCalibrationRange(const GeneratorState& state, Control& slider, std::int32_t maximum);

/// Shows a value that the generator reported on the calibration slider.
void showCalibrationValue(GeneratorState& state, Control& slider, std::int32_t value);

} // namespace quillon
