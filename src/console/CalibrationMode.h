#pragma once

#include "console/ServiceSession.h"
#include "console/panels/ConsolePanels.h"

namespace quillon {

/// The way into manual calibration at a workstation and out of it, and back into it when the machine was
/// lent to its users.
class CalibrationMode {
public:
    CalibrationMode(ConsoleContext& context, ServiceSession& session, ConsolePanels& panels);

    /// Enters from normal operation, leaves when calibration runs, and does nothing in any other mode.
    void ToggleCalibrationMode();
    /// It is being left, and the generator has not followed yet.

private:
    void enter();
    void comeBack();
    void leave();
    void workstationChosen(std::int16_t workstation);
    /// The timed part of the entry, once the workstation is known.
    void beginEntry(int firstWait);
    [[nodiscard]] RunHooks entryHooks();
    [[nodiscard]] RunHooks exitHooks();
    void giveXRaysBack(bool exitSent);
    void sendWorkstation();
    void onTick();
    void offTick();
    void entered();
    void notEntered();
    void left();
    /// The mode keys of Ready, or the key that lends the machine.
    void showModeKeys(bool show);

    ConsoleContext& context_;
    ServiceSession& session_;
    ConsolePanels& panels_;
    ConsoleScreen screen_;
    Timer& tmrCalON_;
    Timer& tmrCalOFF_;
    int onStep_ = 0;
    bool workstationSent_ = false;
    bool exitSent_ = false;
};

} // namespace quillon
