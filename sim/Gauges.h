#pragma once

#include "sim/Exposure.h"
#include "sim/Plug.h"

#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace simulator {

class Assembly;

/// What the machine's own gauges and lamps show at one moment. Nothing here is known from the line.
struct Gauges {
    std::int64_t now = 0;
    Phase phase = kOff;
    int error = 0;
    bool raysAllowed = false;
    std::string hindrance; ///< why there can be no radiation; empty when there can
    double heatPercent = 0;
    std::int64_t restMs = 0; ///< until a tube that is too hot may expose again
    Shot technique;          ///< what an exposure would be made with
    bool largeFocus = false;
    int hand = 0;               ///< position of the hand switch
    bool prepared = false;      ///< the rotor is up
    Shot running;               ///< the exposure that runs, or the last one
    std::int64_t runningMs = 0; ///< for how long it has run
    int workstation = 1;
    int tube = 1;
    std::array<std::array<int, 7>, 8> stations{};
    std::array<int, 4> counters{};
    bool dipSwitch = true;
    bool dipSwitchCounts = true; ///< the machine knows the switch as it stands
    bool silent = false;
    bool acknowledges = true;
    Plug::State plug = Plug::State::In;
    int autocalExposures = 0;                             ///< so far
    std::vector<std::pair<std::string, int>> calibration; ///< stored values by their places' names
    std::vector<std::string> lamps;                       ///< the conditions that stand
    int reading = 0;                                      ///< of the remote positioner's converter
    int fixedValues = 0;                                  ///< that tell something else than the machine means
};

[[nodiscard]] Gauges readGauges(const Assembly& machine);

} // namespace simulator
