#pragma once

#include <cstdint>
#include <string>

#include "console/ConsoleContext.h"
#include "console/panels/ConsolePanels.h"

namespace quillon {

/// The generator measures and stores one focal spot's currents or one parameter by itself: three panels ask
/// what to do, one stepped timer leads the generator there, another one leads it back.
class AutocalibrationMode {
public:
    AutocalibrationMode(ConsoleContext& context, ConsolePanels& panels);

    /// Opens the first panel, or leaves the mode that runs. Nothing in any other mode.
    void ToggleAutocalibrationMode();

private:
    void connectSignals();

    // The panels, one after the other.
    void askWorkstation();
    void askPoint();
    void warn();
    void cancelled(std::string_view key);
    void enter();

    // The way in.
    void onTick();
    void seekTick();
    /// Where the generator's list stands is known, and it is the point that was asked for.
    [[nodiscard]] bool atPoint() const;
    void pointFound();
    /// One step of the generator's list towards the point.
    void stepTowardsPoint();
    void waitTick();
    void modeReached();
    void askForAutocalibration();
    void calibrationRefused();
    void generatorNeverCame();
    /// What both failures of the entry have in common.
    void giveUpEntry();
    /// An exposure came before the first command: nothing was said to the generator, and nothing is told.
    void endEntryBeforeItBegan();
    void handOver();

    // What the generator and the keys of the link control say meanwhile.
    void confirmed();
    void dismissed();
    void acknowledged(bool on);
    void phaseReported(std::int32_t phase);
    void blink();

    // The way out.
    void leave();
    void startLeaving(std::int32_t step);
    void offTick();
    void endLeaving();
    void endLeavingAfterCalibration();
    /// Tells of a protocol error when the generator has not come back to normal operation.
    void reportUnfinished();

    void enableModeButtons();
    void disableModeButtons();
    [[nodiscard]] std::string exitPrompt() const;
    [[nodiscard]] std::string initPrompt() const;

    ConsoleContext& context_;
    ConsolePanels& panels_;
    ConsoleScreen screen_;
    ConsoleState& state_;
    TorvaneSerialV3_07_QLC1& link_;
    Control& lblHelp_;
    Timer& tmrAutocalON_;
    Timer& tmrAutocalOFF_;
    Timer& tmrDelayAutocal_;
    Timer& tmrIniAutocal_;
    int seekPace_ = 0;         ///< ms from one step of the list to the next look
    bool leftUnheard_ = false; ///< an exit has ended, and no report of it came
};

} // namespace quillon
