#include "sim/Records.h"

#include "sim/Formats.h"

namespace simulator {

namespace {

constexpr double kDosePerKvpSquareMas = 5e-5; // mGycm2, at the field size of a chest

/// Which counter belongs to tube 1, 2 and 3.
constexpr int kCounterOfTube[] = {0, 1, 3};

} // namespace

std::span<const Row<Records>> Records::rows() {
    // clang-format off
    static constexpr Row<Records> rows[] = {
        {"TC",   kReady,      Takes::Number,  &Records::tellCounter},
        {"TCR",  kReady,      Takes::Number,  &Records::resetCounter},
        {"DO?",  kEveryPhase, Takes::Nothing, &Records::tellLastDose},
        {"DOA?", kEveryPhase, Takes::Nothing, &Records::tellDose},
        {"DOR",  kEveryPhase, Takes::Nothing, &Records::resetDose},
        {"LE",   kReady,      Takes::Nothing, &Records::tellLast},
    };
    // clang-format on
    return rows;
}

void Records::record(int tube, const Shot& shot) {
    ++counters_.at(static_cast<std::size_t>(kCounterOfTube[tube - 1]));
    lastDose_ = shot.kvp * shot.kvp * shot.mas() * kDosePerKvpSquareMas;
    dose_ += lastDose_;
    last_ = shot;
    sayLast();
}

void Records::addFluoroSecond(double kvp, double ma) {
    ++counters_.at(kFluoroCounter);
    dose_ += kvp * kvp * ma * kDosePerKvpSquareMas;
}

std::optional<int> Records::counterOf(const Request& request) const {
    const double number = *request.number;
    for (const int counter : {0, 1, 2, 3}) {
        const bool present = counter != 3 || machine_.options.thirdTube == ThirdTube::OwnCounter;
        if (number == counter && present) {
            return counter;
        }
    }
    return std::nullopt;
}

bool Records::tellCounter(const Request& request) {
    const std::optional<int> number = counterOf(request);
    if (!number) {
        return false;
    }
    std::string text = "TC" + std::to_string(*number) + std::to_string(counter(*number));
    if (*number == 1 && machine_.options.thirdTube == ThirdTube::BehindDash) {
        text += " - " + std::to_string(counter(3));
    }
    machine_.say(text);
    return true;
}

bool Records::resetCounter(const Request& request) {
    const std::optional<int> number = counterOf(request);
    if (number) {
        setCounter(*number, 0);
    }
    return number.has_value();
}

bool Records::tellLastDose(const Request&) {
    machine_.say("DO" + doseText(lastDose_));
    return true;
}

bool Records::tellDose(const Request&) {
    machine_.say("DOA" + doseText(dose_));
    return true;
}

bool Records::resetDose(const Request&) {
    lastDose_ = dose_ = 0;
    machine_.say("DOR");
    return true;
}

bool Records::tellLast(const Request&) {
    sayLast();
    return true;
}

void Records::sayLast() {
    if (last_) {
        machine_.say("PD" + postDisplayText(last_->ma, last_->mas(), last_->ms));
    }
}

} // namespace simulator
