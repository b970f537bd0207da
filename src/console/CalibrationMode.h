#pragma once

#include "console/ConsoleContext.h"
#include "console/panels/ConsolePanels.h"

namespace quillon {

/// The way into manual calibration at a workstation and out of it, and back into it when the machine was
/// lent to its users.
class CalibrationMode {
public:
    CalibrationMode(ConsoleContext& context, ConsolePanels& panels);

    /// Enters from normal operation, leaves when calibration runs, and does nothing in any other mode.
    void ToggleCalibrationMode();

private:
    void enter();
    void leave();
    /// The timed part of the entry, once the workstation is known.
    void beginEntry(int firstWait);
    void workstationChosen(std::int16_t workstation);
    void onTick();
    void offTick();
    /// An exposure came before the first command: nothing was said to the generator, and nothing is told.
    void endEntryBeforeItBegan();
    /// The rest layout's keys instead of the one that lends the machine.
    void showModeKeys();
    void entered();
    void notEntered();
    void left();

    ConsoleContext& context_;
    ConsolePanels& panels_;
    ConsoleScreen screen_;
    ConsoleState& state_;
    Timer& tmrCalON_;
    Timer& tmrCalOFF_;
    bool commandSent_ = false; ///< the entry has said something to the generator
};

} // namespace quillon
