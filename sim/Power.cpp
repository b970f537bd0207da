#include "sim/Power.h"

#include <utility>

namespace simulator {

namespace {

constexpr std::int64_t kPatienceMs = 5000; // well above the time that the console's tries take

} // namespace

std::span<const Row<Power>> Power::rows() {
    static constexpr Phases kAtRest{Phase::NormalOperation, Phase::Calibration, Phase::Configuration};
    // clang-format off
    static constexpr Row<Power> rows[] = {
        {"ST",  kEveryPhase,  Takes::Nothing, &Power::tellPhase},
        {"VR?", kAtRest,      Takes::Nothing, &Power::tellVersion},
        {"RX",  kOnceStarted, Takes::Number, &Power::allowRays},
    };
    // clang-format on
    return rows;
}

void Power::start() {
    raysAllowed_ = false;
    asking_ = true;
    askAgainMs_ = machine_.now() + machine_.options.powerUpMs + kPatienceMs;
    machine_.go(Phase::Initialization);
    machine_.after(machine_.options.powerUpMs, [this] {
        if (machine_.phase() != Phase::Initialization) {
            return;
        }
        machine_.enter(Phase::NormalOperation);
        // The console keeps the enable state over a restart of the machine.
        if (asking_) {
            askForRays();
        }
    });
}

void Power::skip() {
    raysAllowed_ = true;
    asking_ = false;
}

void Power::askForRays() {
    askAgainMs_ = machine_.now() + kPatienceMs;
    machine_.say("RX?");
}

void Power::heard() {
    if (asking_ && machine_.phase() > Phase::Initialization && machine_.now() >= askAgainMs_) {
        askForRays();
    }
}

bool Power::tellPhase(const Request&) {
    machine_.say("ST" + std::to_string(quillon::numberOf(machine_.phase())));
    return true;
}

bool Power::tellVersion(const Request&) {
    machine_.say("VR" + machine_.options.version);
    return true;
}

bool Power::allowRays(const Request& request) {
    asking_ = false;
    raysAllowed_ = *request.number != 0;
    if (!raysAllowed_) {
        raysForbidden_();
    }
    return true;
}

} // namespace simulator
