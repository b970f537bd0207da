#pragma once

#include <functional>

#include "console/CalibrationMode.h"
#include "console/ExposureCounters.h"
#include "console/ServiceSession.h"

namespace quillon {

/// cmbClose: one press leaves the running mode, the next one the program. Held long, it offers to restart the
/// PC.
class Closing {
public:
    Closing(ConsoleContext& context, ServiceSession& session, CalibrationMode& calibration,
            ExposureCounters& counters);

    static constexpr int kGoodbyeDelay = 1000; ///< ms

    /// The console says goodbye after kGoodbyeDelay.
    void BeginClosing();
    /// It does so `delay` ms from now; `lastWord` is called before the port is closed.
    void goodbyeIn(int delay, std::function<void()> lastWord = {});

private:
    void closePressed();
    void closeClicked();
    /// The press had no effect: X-rays are what they were before it.
    void pressedForNothing();
    void close();
    void goodbyeTick();
    void shutdownTick();

    ConsoleContext& context_;
    ServiceSession& session_;
    ConsoleScreen screen_;
    CalibrationMode& calibration_;
    ExposureCounters& counters_;
    Timer& tmrGoodbye_;
    Timer& tmrShutdown_;
    std::function<void()> lastWord_;
};

} // namespace quillon
