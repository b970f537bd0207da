#pragma once

#include "console/AutocalibrationMode.h"
#include "console/CalibrationMode.h"
#include "console/ConfigurationMode.h"
#include "console/ExposureCounters.h"
#include "console/ServiceSession.h"

namespace quillon {

/// cmbClose: one press leaves the running mode, the next one the program. Held long, it offers to restart the
/// PC.
class Closing {
public:
    /// What the key leaves before it closes.
    struct Modes {
        ConfigurationMode& configuration;
        CalibrationMode& calibration;
        AutocalibrationMode& autocalibration;
        ExposureCounters& counters;
    };

    Closing(ConsoleContext& context, ServiceSession& session, const Modes& modes);

    /// The console says goodbye one second from now.
    void BeginClosing();

private:
    void closePressed();
    void closeClicked();
    /// The press led to nothing: X-rays are allowed again.
    void pressedForNothing();
    /// Leaves the mode that is reached, or what else is open. False when nothing is.
    bool leave();
    void close();
    void goodbyeTick();
    void shutdownTick();

    ConsoleContext& context_;
    ServiceSession& session_;
    ConsoleScreen screen_;
    Modes modes_;
    Timer& tmrGoodbye_;
    Timer& tmrShutdown_;
};

} // namespace quillon
