#include "sim/Tube.h"

#include <algorithm>
#include <cmath>

namespace simulator {

namespace {

constexpr double kCoolingPerMs = 1.0 / 10'000; // percent: a tenth of a percent each second
constexpr double kUnitsPerPercent = 3000;      // a tube of 300 kHU
constexpr double kUnitsPerKvpMas = 1.35;       // of a high-frequency generator
constexpr double kTooHot = 90;
constexpr double kCoolEnough = 75;

} // namespace

std::span<const Row<Tube>> Tube::rows() {
    static constexpr Row<Tube> rows[] = {
        {"HU", kEveryPhase, Takes::Nothing, &Tube::tellHeat},
        {"RP?", kEveryPhase, Takes::Nothing, &Tube::tellRating},
    };
    return rows;
}

void Tube::setPercent(double percent) {
    percent_ = std::clamp(percent, 0.0, 100.0);
    sinceMs_ = machine_.now();
}

double Tube::percent() const {
    return std::max(0.0, percent_ - static_cast<double>(machine_.now() - sinceMs_) * kCoolingPerMs);
}

void Tube::warm(double kvp, double mas) {
    setPercent(percent() + kvp * mas * kUnitsPerKvpMas / kUnitsPerPercent);
}

bool Tube::tooHot() const {
    return percent() >= kTooHot;
}

void Tube::check() {
    machine_.agenda.cancel(wake_);
    if (machine_.phase() == Phase::NormalOperation && tooHot()) {
        machine_.go(Phase::TubeTooHot);
        machine_.say("HL1");
    }
    if (machine_.phase() == Phase::TubeTooHot) {
        const double tooMuch = percent() - kCoolEnough;
        wake_ = machine_.after(std::max<std::int64_t>(0, std::llround(tooMuch / kCoolingPerMs)),
                               [this] { wake(); });
    }
}

void Tube::wake() {
    if (machine_.phase() == Phase::TubeTooHot) {
        machine_.say("HL0");
        machine_.enter(Phase::NormalOperation);
    }
}

bool Tube::tellHeat(const Request&) {
    machine_.say("HE" + std::to_string(std::lround(percent())));
    return true;
}

bool Tube::tellRating(const Request&) {
    machine_.say("RP" + std::to_string(std::min(9L, std::lround(percent() / 10))));
    return true;
}

} // namespace simulator
