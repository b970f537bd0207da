#pragma once

#include <cstdint>
#include <string>

#include "console/AutocalibrationChoice.h"
#include "console/CalibrationPoint.h"

namespace quillon {

/// The generator measures and stores one focal spot's currents or one parameter by itself: three panels ask
/// what to do, one stepped timer leads the generator there, another one leads it back.
class AutocalibrationMode {
public:
    AutocalibrationMode(ConsoleContext& context, ServiceSession& session, ConsolePanels& panels);

    /// Opens the first panel, or leaves the mode that runs. Nothing in any other mode.
    void ToggleAutocalibrationMode();
    /// The generator has gone from calibration into autocalibration, asked or not.
    void modeBegins();
    /// It reports the mode once more, or a result: a hand-over that was put off is made now.
    void modeReported(bool result);
    /// It asks whether to begin, for the first time or again.
    void questionRaised() { answered_ = false; }
    /// The question is open.
    void questionAsked();
    /// The question is open and unanswered, and the prompt shows its words.
    [[nodiscard]] bool asks() const;

private:
    void connectSignals();

    // The way in.
    void enter();
    void onTick();
    void seekTick();
    void pointFound();
    void waitTick();
    void modeReached();
    void askForAutocalibration();
    void calibrationRefused();
    void generatorNeverCame();
    void giveUpEntry();
    void handOverTick();
    void handOver();

    // Reports of the generator and keys of the link control meanwhile.
    void answer(const std::string& prompt);
    void confirmed();
    void dismissed();
    void acknowledged(bool on);
    void blink();

    // The way out.
    void leave();
    void startLeaving(int step);
    void offTick();
    void endLeaving();
    void endLeavingAfterCalibration();

    [[nodiscard]] std::string exitPrompt() const;
    [[nodiscard]] std::string initPrompt() const;

    ConsoleContext& context_;
    ServiceSession& session_;
    ConsolePanels& panels_;
    AutocalibrationChoice choice_;
    CalibrationPoint point_;
    ConsoleScreen screen_;
    ConsoleState& state_;
    TorvaneSerialV3_07_QLC1& link_;
    Control& lblHelp_;
    Timer& tmrAutocalON_;
    Timer& tmrAutocalOFF_;
    Timer& tmrDelayAutocal_;
    Timer& tmrIniAutocal_;
    int onStep_ = 0;
    int offStep_ = 0;
    int waitCount_ = 0; ///< ticks in the wait for the generator
    int seekPace_ = 0;  ///< ms from one step of the list to the next look
    bool handOverOwed_ = false;
    bool answered_ = false;
};

} // namespace quillon
