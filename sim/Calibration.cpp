#include "sim/Calibration.h"

#include "base/Numbers.h"
#include "sim/Formats.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace simulator {

namespace {

constexpr double kSmallStations[] = {10, 16, 25, 50, 80, 100, 160};
constexpr double kLargeStations[] = {50, 80, 100, 160, 200, 320, 400, 640};
constexpr int kParameters = 32;
constexpr int kHighestValue = 4095;
constexpr double kShortestMs = 10;
constexpr double kLongestMs = 1000;

/// The one parameter that differs between the focal spots.
constexpr int kFocusParameter = 1;

} // namespace

Calibration::Calibration(Machine& machine) : machine_(machine) {
    const auto addStations = [this](std::span<const double> stations, bool large) {
        const Focus& focus = large ? machine_.options.largeFocus : machine_.options.smallFocus;
        for (const double ma : stations) {
            if (ma < focus.lowestMa || ma > focus.highestMa) {
                continue;
            }
            // Filament values rise with the current they give.
            const int value = std::min(kHighestValue, static_cast<int>(300 + ma));
            list_.push_back({0, large, {70, ma, 100}, value, value});
        }
    };
    addStations(kSmallStations, false);
    addStations(kLargeStations, true);
    for (int number = 1; number <= kParameters; ++number) {
        list_.push_back({number, false, {80, 100, 100}, 100 + number, 100 + number});
    }
}

std::span<const Row<Calibration>> Calibration::rows() {
    using C = Calibration;
    // clang-format off
    static constexpr Row<Calibration> rows[] = {
        {"MA?",  kCalibrating,       Takes::Nothing, &C::tellPlace},
        {"MA+",  kCalibrating,       Takes::Nothing, &C::walk, 1},
        {"MAU",  kCalibrating,       Takes::Nothing, &C::walk, 1},
        {"MA-",  kCalibrating,       Takes::Nothing, &C::walk, -1},
        {"MAD",  kCalibrating,       Takes::Nothing, &C::walk, -1},
        {"FO",   kCalibrating,       Takes::Nothing, &C::toggleFocus},
        {"CO",   kCalibratingEither, Takes::Nothing, &C::toggleFocus},
        {"FO?",  kCalibrating,       Takes::Nothing, &C::tellFocus},
        {"KV?",  kCalibrating,       Takes::Nothing, &C::tellKvp},
        {"KV+",  kCalibratingEither, Takes::Nothing, &C::stepKvp, 1},
        {"KV++", kCalibrating,       Takes::Nothing, &C::stepKvp, 5},
        {"KVU",  kCalibratingEither, Takes::Nothing, &C::stepKvp, 1},
        {"KV-",  kCalibratingEither, Takes::Nothing, &C::stepKvp, -1},
        {"KV--", kCalibrating,       Takes::Nothing, &C::stepKvp, -5},
        {"KVD",  kCalibratingEither, Takes::Nothing, &C::stepKvp, -1},
        {"MS?",  kCalibrating,       Takes::Nothing, &C::tellMs},
        {"MX?",  kCalibrating,       Takes::Nothing, &C::tellMas},
        {"MX+",  kAutocalibrating,   Takes::Nothing, &C::stepMas, 1},
        {"MXU",  kAutocalibrating,   Takes::Nothing, &C::stepMas, 1},
        {"MX-",  kAutocalibrating,   Takes::Nothing, &C::stepMas, -1},
        {"MXD",  kAutocalibrating,   Takes::Nothing, &C::stepMas, -1},
        {"C+",   kCalibratingEither, Takes::Nothing, &C::stepValue, 1},
        {"C++",  kCalibratingEither, Takes::Nothing, &C::stepValue, 10},
        {"C-",   kCalibratingEither, Takes::Nothing, &C::stepValue, -1},
        {"C--",  kCalibratingEither, Takes::Nothing, &C::stepValue, -10},
        {"CV",   kCalibratingEither, Takes::Number,  &C::setValue},
        {"CS",   kCalibratingEither, Takes::Nothing, &C::storeValue},
        {"CR",   kCalibratingEither, Takes::Nothing, &C::readValue},
    };
    // clang-format on
    return rows;
}

std::vector<std::pair<std::string, int>> Calibration::storedValues() const {
    std::vector<std::pair<std::string, int>> values;
    for (const Place& each : list_) {
        values.emplace_back(each.parameter != 0
                                ? "E" + quillon::fixedDigits(each.parameter, 2)
                                : (each.large ? "large." : "small.") + shortNumber(each.shot.ma, 1),
                            each.stored);
    }
    return values;
}

void Calibration::report() {
    sayPlace();
    if (!onParameter()) {
        sayFocus();
        sayMs();
        sayMas();
    } else if (place().parameter == kFocusParameter) {
        sayFocus();
    }
    sayKvp();
    sayValue();
}

void Calibration::reportShot() {
    sayKvp();
    sayMs();
    sayMas();
}

void Calibration::adopt(int value) {
    place().value = place().stored = std::clamp(value, 0, kHighestValue);
    sayValue();
}

bool Calibration::walk(const Request& request) {
    place().value = place().stored; // what was not stored is lost by leaving
    if (request.amount > 0) {
        at_ = std::min(at_ + 1, list_.size() - 1);
    } else {
        at_ = at_ == 0 ? 0 : at_ - 1;
    }
    report();
    return true;
}

bool Calibration::toggleFocus(const Request&) {
    if (place().parameter == kFocusParameter) {
        place().large = !place().large;
        sayFocus();
    } else if (!onParameter()) {
        // The station of the other focus with the same current, or the nearest to it.
        const bool large = !place().large;
        const double ma = place().shot.ma;
        const auto distance = [&](const Place& p) {
            return p.parameter != 0 || p.large != large ? kLongestMs : std::abs(p.shot.ma - ma);
        };
        at_ = static_cast<std::size_t>(std::ranges::min_element(list_, {}, distance) - list_.begin());
        report();
    }
    return true;
}

bool Calibration::stepKvp(const Request& request) {
    double& kvp = place().shot.kvp;
    kvp = std::clamp(kvp + request.amount, machine_.options.kvp.low, machine_.options.kvp.high);
    sayKvp();
    return true;
}

bool Calibration::stepMas(const Request& request) {
    double& ms = place().shot.ms;
    ms = std::clamp(request.amount > 0 ? ms * 2 : ms / 2, kShortestMs, kLongestMs);
    sayMas();
    sayMs();
    return true;
}

bool Calibration::stepValue(const Request& request) {
    place().value = std::clamp(place().value + request.amount, 0, kHighestValue);
    sayValue();
    return true;
}

bool Calibration::setValue(const Request& request) {
    if (*request.number < 0 || *request.number > kHighestValue) {
        return false;
    }
    place().value = static_cast<int>(std::lround(*request.number));
    sayValue();
    return true;
}

bool Calibration::storeValue(const Request&) {
    place().stored = place().value;
    sayValue();
    return true;
}

bool Calibration::readValue(const Request&) {
    place().value = place().stored;
    sayValue();
    return true;
}

void Calibration::sayPlace() {
    if (onParameter()) {
        // A parameter stands on the mA display, where no current could be mistaken for it.
        machine_.say("MASE" + quillon::fixedDigits(place().parameter, 2));
    } else {
        machine_.say("MA" + shortNumber(place().shot.ma, 1));
    }
}

void Calibration::sayFocus() {
    machine_.say(place().large ? "FO10" : "FO11");
    machine_.say(place().large ? "FO21" : "FO20");
}

void Calibration::sayKvp() {
    machine_.say("KV" + shortNumber(place().shot.kvp, 0));
}

void Calibration::sayMs() {
    machine_.say("MS" + millisecondsText(place().shot.ms));
}

void Calibration::sayMas() {
    machine_.say("MX" + milliampSecondsText(place().shot.mas()));
}

void Calibration::sayValue() {
    machine_.say("CV" + std::to_string(place().value));
}

} // namespace simulator
