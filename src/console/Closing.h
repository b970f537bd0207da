#pragma once

#include "console/AutocalibrationMode.h"
#include "console/CalibrationMode.h"
#include "console/ConfigurationMode.h"
#include "console/ConsoleContext.h"
#include "console/ExposureCounters.h"

namespace quillon {

/// The way out of everything: one press of cmbClose leaves the running mode, the next one the program. Held
/// long, it offers to restart the PC.
class Closing {
public:
    /// What the key leaves before it closes.
    struct Modes {
        ConfigurationMode& configuration;
        CalibrationMode& calibration;
        AutocalibrationMode& autocalibration;
        ExposureCounters& counters;
    };

    Closing(ConsoleContext& context, const Modes& modes);

    /// The console says goodbye one second from now.
    void BeginClosing();

private:
    void closePressed();
    void closeClicked();
    /// The press led to nothing: X-rays are allowed again, after an exposure if it is one that refuses it
    /// now.
    void giveBack();
    void close();
    void goodbyeTick();
    void shutdownTick();

    ConsoleContext& context_;
    ConsoleScreen screen_;
    ConsoleState& state_;
    Modes modes_;
    Timer& tmrGoodbye_;
    Timer& tmrShutdown_;
    bool refused_ = false; // the last command, by the phase
    bool owed_ = false;    // X-rays are still to be allowed
};

} // namespace quillon
