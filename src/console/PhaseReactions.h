#pragma once

#include <cstdint>

#include "console/ConsoleContext.h"
#include "console/StartOfService.h"

namespace quillon {

/// What the console does when the generator reports a phase, and what it shows of an exposure.
class PhaseReactions {
public:
    PhaseReactions(ConsoleContext& context, StartOfService& start);

private:
    void phaseChange(std::int32_t newStatus);
    void initialization();
    void normalOperation();
    void preparation();
    void pollAgain();
    void calibration();
    void configuration();
    void autocalibration();
    void lightPreparation(bool lit);
    void lightExposure(bool lit);
    void askToConfirm();
    void showLinkControl();
    void connectSignals();

    ConsoleContext& context_;
    ConsoleScreen screen_;
    ConsoleState& state_;
    ControlHost& console_;
    StartOfService& start_;
    Control& cmdPrep_;
    Control& cmdExposure_;
    Timer& tmrDelay_;
};

} // namespace quillon
