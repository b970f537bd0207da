#pragma once

#include "base/Phase.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace simulator {

enum class MessageEnd { Lf, Etx, LfEtx };
enum class GeneratorKind { Rad, RadFluoro };
enum class ThirdTube { None, OwnCounter, BehindDash };
enum class PositionerKind { None, Orla, Remote, Both };

/// What a filament and its focal track can bear.
struct Focus {
    double lowestMa;
    double highestMa;
    double highestKw;
};

struct Range {
    double low;
    double high;
};

/// What a simulated generator is and how its line behaves.
struct Options {
    std::uint32_t seed = 1;

    // The line.
    std::int64_t answerMs = 40;
    std::int64_t ackMs = 20;
    bool acknowledges = true;
    int dropEvery = 0; ///< every Nth acknowledgement is lost; 0 loses none
    int noisePercent = 0;
    int twicePercent = 0; ///< of the messages come twice
    int wrongPercent = 0; ///< of the values are others than those that hold
    bool stuck = false;   ///< each value stays what it was when it was first told
    bool silent = false;
    MessageEnd end = MessageEnd::Lf;
    int baud = 0; ///< pace of the line, both ways; 0 takes no time

    // The machine.
    std::int64_t powerUpMs = 3000;
    std::int64_t modeMs = 300;
    quillon::Phase startPhase = quillon::Phase::Initialization;
    bool dipSwitch = true;
    GeneratorKind kind = GeneratorKind::RadFluoro;
    ThirdTube thirdTube = ThirdTube::None;
    PositionerKind positioner = PositionerKind::Both;
    int techniqueMode = -1; ///< 0 to 3; negative: the machine has no technique modes
    int maxDensity = 8;
    int heatPercent = 0;
    Range kvp{40, 150};
    Focus smallFocus{10, 160, 24};
    Focus largeFocus{50, 640, 64};
    double highestMas = 600;
    double tubeKhu = 300;
    double coolingPerSecond = 0.1; ///< percent
    int tooHotPercent = 90;
    int coolEnoughPercent = 75;
    std::int64_t rotorMs = 1000;
    std::string stops = "door";    ///< lamps that forbid radiation, a comma between
    bool dipReadAtStart = false;   ///< the dip switch counts from the next start on
    bool handStaysPressed = false; ///< an exposure's end is no release of the hand switch
    std::string version = "SIM 1.0";

    // Autocalibration.
    bool autoExpose = false;
    int autocalExposures = 3;
    std::int64_t questionMs = 1500; ///< until it asks
    std::int64_t beginMs = 1500;    ///< from the confirmation on
    std::int64_t endMs = 500;       ///< behind the last exposure
    bool autocalSucceeds = true;
};

/// Applies KEY=VALUE; returns an error text, empty when fine.
[[nodiscard]] std::string applyOption(Options& options, std::string_view keyValue);

/// Lines 'KEY=VALUE  meaning'.
[[nodiscard]] std::string optionsHelp();

/// Applies a machine's profile: a line each KEY=VALUE, or a remark behind '#'. Returns an error text with the
/// number of the line, empty when fine.
[[nodiscard]] std::string applyProfile(Options& options, std::string_view content);
[[nodiscard]] std::string applyProfileFile(Options& options, const std::string& file);

/// A profile of these options, with what each line means.
[[nodiscard]] std::string profileOf(const Options& options);

} // namespace simulator
