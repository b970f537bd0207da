#pragma once

#include <cstdint>
#include <vector>

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
    /// The system wants the program to end. What the console took is given back, the mode is left as far as
    /// its commands go out within 3 s, and the console says goodbye whatever became of it. Nothing else
    /// happens meanwhile. No effect when it closes already.
    void LeaveNow();

private:
    void closePressed();
    void closeClicked();
    /// The press led to nothing.
    void giveBack();
    /// X-rays are allowed again: now, or later when this phase refuses it.
    void allowRays();
    void phaseReported(std::int32_t phase);
    /// Where the generator stands or may soon stand.
    [[nodiscard]] std::vector<std::int32_t> modesToLeave() const;
    /// Sends what leads out of that phase.
    void leave(std::int32_t phase);
    void stopAllTimers();
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
    bool leaving_ = false;
    std::int32_t stood_ = 0; // the phase that was left last
};

} // namespace quillon
