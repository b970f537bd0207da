#pragma once

#include "console/ConsoleContext.h"

namespace quillon {

/// The place in the generator's list of stations and parameters that is to be autocalibrated. The list is
/// moved a step at a time, with the keys that move it in calibration.
class CalibrationPoint {
public:
    explicit CalibrationPoint(ConsoleContext& context) : context_(context) {}

    /// Where the list stands is known, and it is the point that was asked for.
    [[nodiscard]] bool reached() const;
    /// One step of the list towards it.
    void step();

private:
    ConsoleContext& context_;
};

} // namespace quillon
