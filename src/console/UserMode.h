#pragma once

#include "console/CalibrationMode.h"
#include "console/ConsoleContext.h"

namespace quillon {

/// From calibration the machine is lent to its users for a while, and the engineer comes back to calibration
/// without choosing a workstation again.
class UserMode {
public:
    UserMode(ConsoleContext& context, ServiceSession& session, CalibrationMode& calibration);

private:
    void goToUserMode();
    void refreshTick();
    void arrivalTick();

    ConsoleContext& context_;
    ServiceSession& session_;
    ConsoleScreen screen_;
    CalibrationMode& calibration_;
    Timer& tmrFlRefresh_;
    Timer& tmrGotoUserMode_;
};

} // namespace quillon
