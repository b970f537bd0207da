#pragma once

#include "model/GeneratorState.h"
#include "panel/layout/Names.h"

namespace quillon {

/// Flashes the keys that wait for the operator and the technique fields that a warning marks. Who reports the
/// error or the warning starts the timers.
class Blinking {
public:
    Blinking(GeneratorState& state, PanelHost& panel);

private:
    void blinkTick();
    void blinkingTick();
    void blinkingOffTick();

    void paintWarnedKey(bool dark);

    GeneratorState& state_;
    PanelHost& panel_;
    Control& cmbResetError_;
    Control& cmbResetExposureCounter_;
    Control& cmbTM3_;
    Timer& tmrBlinking_;
    Timer& tmrBlinkingOff_;
};

} // namespace quillon
