#include "sim/Tube.h"

#include <algorithm>
#include <cmath>

namespace simulator {

namespace {

constexpr double kUnitsPerKvpMas = 1.35; // of a high-frequency generator
constexpr double kUnitsPerPercentOfKhu = 10;

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
    const double seconds = static_cast<double>(machine_.now() - sinceMs_) / 1000;
    return std::max(0.0, percent_ - seconds * machine_.options.coolingPerSecond);
}

void Tube::warm(double kvp, double mas) {
    setPercent(percent() + kvp * mas * kUnitsPerKvpMas / (machine_.options.tubeKhu * kUnitsPerPercentOfKhu));
}

bool Tube::tooHot() const {
    return percent() >= machine_.options.tooHotPercent;
}

std::int64_t Tube::restMs() const {
    if (machine_.phase() != Phase::TubeTooHot) {
        return 0;
    }
    const double tooMuch = percent() - machine_.options.coolEnoughPercent;
    return std::max<std::int64_t>(0, std::llround(tooMuch / machine_.options.coolingPerSecond * 1000));
}

void Tube::check() {
    machine_.agenda.cancel(wake_);
    if (machine_.phase() == Phase::NormalOperation && tooHot()) {
        machine_.go(Phase::TubeTooHot);
        machine_.say("HL1");
    }
    if (machine_.phase() == Phase::TubeTooHot) {
        wake_ = machine_.after(restMs(), [this] { wake(); });
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
