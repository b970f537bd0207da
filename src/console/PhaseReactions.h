#pragma once

#include <string>

#include "console/AutocalibrationMode.h"
#include "console/ServiceSession.h"
#include "console/StartOfService.h"

namespace quillon {

/// What the console does when the generator reports a phase, and what it shows of an exposure.
class PhaseReactions {
public:
    PhaseReactions(ConsoleContext& context, ServiceSession& session, StartOfService& start,
                   AutocalibrationMode& autocalibration);

private:
    void phaseChange(Phase phase);
    void react(Phase phase);
    void initialization();
    void normalOperation();
    void modeIsOver();
    void preparation();
    void calibration();
    void configuration();
    void autocalibration();
    void result(Says words);
    void lightPreparation(bool lit);
    void lightExposure(bool lit);
    void askToConfirm();
    /// The link control comes up a moment from now.
    void bringLinkControl();
    void connectSignals();

    ConsoleContext& context_;
    ServiceSession& session_;
    ConsoleScreen screen_;
    ConsoleState& state_;
    ConsoleHost& console_;
    StartOfService& start_;
    AutocalibrationMode& autocalibration_;
    Control& cmdPrep_;
    Control& cmdExposure_;
    Timer& tmrDelay_;
};

} // namespace quillon
