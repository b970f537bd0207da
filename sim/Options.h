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
    std::string version = "SIM 1.0";

    // Autocalibration.
    bool autoExpose = false;
    int autocalExposures = 3;
    bool autocalSucceeds = true;
};

/// Applies KEY=VALUE; returns an error text, empty when fine.
[[nodiscard]] std::string applyOption(Options& options, std::string_view keyValue);

/// Lines 'KEY=VALUE  meaning'.
[[nodiscard]] std::string optionsHelp();

} // namespace simulator
