#pragma once

#include "Stage.h"

namespace quillon {

// The ways that several scenes begin with.

/// Ready, its settings read.
void ready(Stage& stage);
/// From the start into Configuration.
void configuration(Stage& stage);
/// The choice of a workstation for the manual calibration, and what follows when it is made.
void workstation(Stage& stage);
void enteringCalibration(Stage& stage);
/// Calibration of a station, and with the question for the focal spot.
void calibrationStation(Stage& stage);
void calibrationFocus(Stage& stage);
/// Autocalibration with two exposures made.
void autocalExposures(Stage& stage);

} // namespace quillon
