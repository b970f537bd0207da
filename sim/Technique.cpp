#include "sim/Technique.h"

#include "sim/Formats.h"

#include <algorithm>
#include <cmath>

namespace simulator {

namespace {

// Codes of "WN": what stood in the way.
constexpr int kKvpHigh = 3;
constexpr int kKvpLow = 4;
constexpr int kMaHigh = 5;
constexpr int kMaLow = 6;
constexpr int kMsHigh = 7;
constexpr int kMsLow = 8;
constexpr int kMasHigh = 9;
constexpr int kMasLow = 10;
constexpr int kPower = 11;

constexpr double kMaStations[] = {10,  12.5, 16,  20,  25,  32,  40,  50,  63, 80,
                                  100, 125,  160, 200, 250, 320, 400, 500, 640};
constexpr double kMsStations[] = {1,   2,    3,    4,    5,    6,    8,    10,   12,   16,   20,   25,   32,
                                  40,  50,   63,   80,   100,  125,  160,  200,  250,  320,  400,  500,  630,
                                  800, 1000, 1250, 1600, 2000, 2500, 3200, 4000, 5000, 6300, 8000, 10000};
constexpr double kMasStations[] = {0.1, 0.2, 0.3, 0.4, 0.5, 0.63, 0.8,  1,   1.25, 1.6, 2,   2.5,
                                   3.2, 4,   5,   6.3, 8,   10,   12.5, 16,  20,   25,  32,  40,
                                   50,  63,  80,  100, 125, 160,  200,  250, 320,  400, 500, 600};

/// The station next to a value in the direction of `amount`; the value itself at the end of the list.
double neighbour(std::span<const double> stations, double value, int amount) {
    constexpr double kSame = 1e-6;
    if (amount > 0) {
        const auto above = std::ranges::upper_bound(stations, value + kSame);
        return above == stations.end() ? value : *above;
    }
    const auto at = std::ranges::lower_bound(stations, value - kSame);
    return at == stations.begin() ? value : *(at - 1);
}

double nearest(std::span<const double> stations, double value) {
    return *std::ranges::min_element(stations, {},
                                     [value](double station) { return std::abs(station - value); });
}

} // namespace

std::span<const Row<Technique>> Technique::rows() {
    using T = Technique;
    // clang-format off
    static constexpr Row<Technique> rows[] = {
        {"KV",   kReadyOrFluoro, Takes::Number,  &T::setKvp},
        {"KV?",  kReadyOrFluoro, Takes::Nothing, &T::tellKvp},
        {"KV+",  kReadyOrFluoro, Takes::Nothing, &T::stepKvp, 1},
        {"KV++", kReadyOrFluoro, Takes::Nothing, &T::stepKvp, 5},
        {"KVU",  kReadyOrFluoro, Takes::Nothing, &T::stepKvp, 1},
        {"KV-",  kReadyOrFluoro, Takes::Nothing, &T::stepKvp, -1},
        {"KV--", kReadyOrFluoro, Takes::Nothing, &T::stepKvp, -5},
        {"KVD",  kReadyOrFluoro, Takes::Nothing, &T::stepKvp, -1},
        {"MA",   kReadyOrFluoro, Takes::Number,  &T::setMa},
        {"MA?",  kReadyOrFluoro, Takes::Nothing, &T::tellMa},
        {"MA+",  kReadyOrFluoro, Takes::Nothing, &T::stepMa, 1},
        {"MAU",  kReadyOrFluoro, Takes::Nothing, &T::stepMa, 1},
        {"MA-",  kReadyOrFluoro, Takes::Nothing, &T::stepMa, -1},
        {"MAD",  kReadyOrFluoro, Takes::Nothing, &T::stepMa, -1},
        {"MS",   kReadyOrFluoro, Takes::Number,  &T::setMs},
        {"MS?",  kReady,         Takes::Nothing, &T::tellMs},
        {"MS+",  kReadyOrFluoro, Takes::Nothing, &T::stepMs, 1},
        {"MSU",  kReadyOrFluoro, Takes::Nothing, &T::stepMs, 1},
        {"MS-",  kReadyOrFluoro, Takes::Nothing, &T::stepMs, -1},
        {"MSD",  kReadyOrFluoro, Takes::Nothing, &T::stepMs, -1},
        {"MX",   kReadyOrFluoro, Takes::Number,  &T::setMas},
        {"MX?",  kReadyOrFluoro, Takes::Nothing, &T::tellMas},
        {"MX+",  kReadyOrFluoro, Takes::Nothing, &T::stepMas, 1},
        {"MXU",  kReadyOrFluoro, Takes::Nothing, &T::stepMas, 1},
        {"MX-",  kReadyOrFluoro, Takes::Nothing, &T::stepMas, -1},
        {"MXD",  kReadyOrFluoro, Takes::Nothing, &T::stepMas, -1},
        {"FO",   kReady,         Takes::Nothing, &T::toggleFocus},
        {"FOS",  kReady,         Takes::Number,  &T::setFocus},
        {"FO?",  kReady,         Takes::Nothing, &T::tellFocus},
        {"TM",   kReady,         Takes::Number,  &T::setMode},
        {"TM?",  kReady,         Takes::Nothing, &T::tellMode},
        {"RF",   kReady,         Takes::Nothing, &T::refresh},
    };
    // clang-format on
    return rows;
}

void Technique::powerUp() {
    const Focus& focus = focusOf(false);
    kvp_ = std::clamp(70.0, machine_.options.kvp.low, machine_.options.kvp.high);
    ma_ = std::clamp(100.0, focus.lowestMa, std::min(focus.highestMa, focus.highestKw * 1000 / kvp_));
    ms_ = 100;
    largeFocus_ = false;
}

bool Technique::chooseKvp(double kvp) {
    const double asked = std::round(kvp);
    const double limited = std::clamp(asked, machine_.options.kvp.low, machine_.options.kvp.high);
    const bool tooStrong = limited * ma_ / 1000 > focusOf(largeFocus_).highestKw;
    if (!tooStrong) {
        kvp_ = limited;
    }
    sayKvp();
    if (limited != asked) {
        warn(asked > limited ? kKvpHigh : kKvpLow);
    } else if (tooStrong) {
        warn(kPower);
    }
    return kvp_ == asked;
}

bool Technique::chooseMa(double ma) {
    const Focus& focus = focusOf(largeFocus_);
    const double station = nearest(kMaStations, std::clamp(ma, focus.lowestMa, focus.highestMa));
    const bool tooStrong = station * kvp_ / 1000 > focus.highestKw;
    const bool tooMuch = station * ms_ / 1000 > machine_.options.highestMas;
    if (!tooStrong && !tooMuch) {
        ma_ = station;
    }
    sayMa("MA");
    sayMas("MXS");
    if (ma < focus.lowestMa || ma > focus.highestMa) {
        warn(ma > focus.highestMa ? kMaHigh : kMaLow);
    } else if (tooStrong || tooMuch) {
        warn(tooStrong ? kPower : kMasHigh);
    }
    return ma_ == ma;
}

bool Technique::chooseMs(double ms) {
    const double limited = std::clamp(ms, kMsStations[0], std::end(kMsStations)[-1]);
    const bool tooMuch = ma_ * limited / 1000 > machine_.options.highestMas;
    if (!tooMuch) {
        ms_ = limited;
    }
    sayMs("MS");
    sayMas("MXS");
    if (limited != ms) {
        warn(ms > limited ? kMsHigh : kMsLow);
    } else if (tooMuch) {
        warn(kMasHigh);
    }
    return ms_ == ms;
}

bool Technique::chooseMas(double mas) {
    const double lowest = ma_ * kMsStations[0] / 1000;
    const double highest = std::min(machine_.options.highestMas, ma_ * std::end(kMsStations)[-1] / 1000);
    const double limited = std::clamp(mas, lowest, highest);
    ms_ = limited * 1000 / ma_;
    sayMas("MX");
    sayMs("MSS");
    if (limited != mas) {
        warn(mas > limited ? kMasHigh : kMasLow);
    }
    return limited == mas;
}

bool Technique::chooseFocus(bool large) {
    const Focus& focus = focusOf(large);
    double ma = std::clamp(ma_, focus.lowestMa, focus.highestMa);
    while (ma > focus.lowestMa && ma * kvp_ / 1000 > focus.highestKw) {
        ma = neighbour(kMaStations, ma, -1);
    }
    const bool kept = ma == ma_;
    largeFocus_ = large;
    sayFocus();
    if (!kept) {
        ma_ = ma;
        sayMa("MAS");
        sayMas("MXS");
    }
    return kept;
}

bool Technique::stepMa(const Request& request) {
    const double next = neighbour(kMaStations, ma_, request.amount);
    // At the end of the list the step goes nowhere, and the limit's warning tells so.
    return chooseMa(next == ma_ ? ma_ + request.amount : next), true;
}

bool Technique::stepMs(const Request& request) {
    const double next = neighbour(kMsStations, ms_, request.amount);
    return chooseMs(next == ms_ ? ms_ + request.amount : next), true;
}

bool Technique::stepMas(const Request& request) {
    const double next = neighbour(kMasStations, mas(), request.amount);
    return chooseMas(next == mas() ? mas() + request.amount : next), true;
}

bool Technique::setFocus(const Request& request) {
    if (*request.number != 1 && *request.number != 2) {
        return false;
    }
    return chooseFocus(*request.number == 2), true;
}

bool Technique::setMode(const Request& request) {
    const double mode = *request.number;
    if (machine_.options.techniqueMode < 0 || mode < 0 || mode > 3 || mode != std::floor(mode)) {
        return false;
    }
    machine_.options.techniqueMode = static_cast<int>(mode);
    return sayMode(), true;
}

bool Technique::refresh(const Request&) {
    report();
    return sayMode(), true;
}

void Technique::report() {
    sayKvp();
    sayMa("MA");
    sayMs("MS");
    sayMas("MX");
    sayFocus();
}

void Technique::sayKvp() {
    machine_.say("KV" + shortNumber(kvp_, 0));
}

void Technique::sayMa(std::string_view mnemonic) {
    machine_.say(std::string(mnemonic) + shortNumber(ma_, 1));
}

void Technique::sayMs(std::string_view mnemonic) {
    machine_.say(std::string(mnemonic) + millisecondsText(ms_));
}

void Technique::sayMas(std::string_view mnemonic) {
    machine_.say(std::string(mnemonic) + milliampSecondsText(mas()));
}

void Technique::sayFocus() {
    machine_.say(largeFocus_ ? "FO10" : "FO11");
    machine_.say(largeFocus_ ? "FO21" : "FO20");
}

void Technique::sayMode() {
    if (machine_.options.techniqueMode >= 0) {
        machine_.say("TM" + std::to_string(machine_.options.techniqueMode));
    }
}

void Technique::warn(int code) {
    machine_.say("WN" + std::to_string(code));
}

} // namespace simulator
