#include "sim/Exposure.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace simulator {

namespace {

// Values of "XE".
constexpr std::string_view kEndedByItself = "XE0";
constexpr std::string_view kCutShort = "XE1";

} // namespace

std::span<const Row<Exposure>> Exposure::rows() {
    static constexpr Row<Exposure> rows[] = {
        {"XR", Phases{Phase::Preparation, Phase::RadExposure}, Takes::Number, &Exposure::softwareSwitch},
    };
    return rows;
}

std::string Exposure::prepare() {
    if (!machine_.phaseIs({Phase::NormalOperation, Phase::Calibration, Phase::Autocalibration})) {
        return "no preparation in phase " + std::to_string(quillon::numberOf(machine_.phase()));
    }
    if (std::string why = surroundings_.hindrance(); !why.empty()) {
        return why;
    }
    back_ = machine_.phase();
    ready_ = wanted_ = false;
    pressed_ = true;
    machine_.say("PS1");
    machine_.go(Phase::Preparation);
    next_ = machine_.after(machine_.options.rotorMs, [this] { ready(); });
    return {};
}

std::string Exposure::expose() {
    if (machine_.phase() != Phase::Preparation) {
        if (std::string why = prepare(); !why.empty()) {
            return why;
        }
    }
    if (!wanted_) {
        wanted_ = true;
        machine_.say("XS1");
        if (ready_) {
            start();
        }
    }
    return {};
}

std::string Exposure::release() {
    if (!underWay()) {
        return "nothing is pressed";
    }
    machine_.agenda.cancel(next_);
    if (machine_.phase() == Phase::RadExposure) {
        finish(false);
    } else {
        letGo();
    }
    return {};
}

std::string Exposure::hand(int stage) {
    const int before = std::exchange(hand_, stage);
    if (stage == before) {
        return {};
    }
    if (stage == 0) {
        if (underWay()) {
            return release();
        }
        saySwitch();
        return {};
    }
    if (before != 0 && !underWay()) {
        return "it takes a new press: let the switch go first";
    }
    if (stage == 2) {
        return expose();
    }
    if (before == 0) {
        return prepare();
    }
    if (machine_.phase() == Phase::RadExposure) {
        return release();
    }
    wanted_ = false;
    machine_.say("XS0");
    return {};
}

void Exposure::interrupt() {
    const bool preparing = machine_.phase() == Phase::Preparation;
    if (release().empty() && preparing) {
        surroundings_.over(false);
    }
}

void Exposure::halt() {
    machine_.agenda.cancel(next_);
    ready_ = wanted_ = pressed_ = false;
    shot_ = {};
}

bool Exposure::softwareSwitch(const Request& request) {
    if (*request.number != 0) {
        return machine_.phase() == Phase::RadExposure || expose().empty();
    }
    if (machine_.phase() == Phase::RadExposure) {
        machine_.agenda.cancel(next_);
        finish(false);
    } else {
        wanted_ = false;
    }
    return true;
}

void Exposure::ready() {
    ready_ = true;
    machine_.say("PR1");
    if (wanted_) {
        start();
    }
}

void Exposure::start() {
    shot_ = surroundings_.plan();
    startedMs_ = machine_.now();
    machine_.go(Phase::RadExposure);
    machine_.say("XR1");
    next_ = machine_.after(std::max<std::int64_t>(1, std::llround(shot_.ms)), [this] { finish(true); });
}

void Exposure::finish(bool complete) {
    if (!complete) {
        shot_.ms = static_cast<double>(machine_.now() - startedMs_);
    }
    machine_.say("XR0");
    machine_.say(complete ? kEndedByItself : kCutShort);
    surroundings_.measured(shot_);
    letGo();
    surroundings_.over(complete);
}

void Exposure::letGo() {
    const bool stays = machine_.options.handStaysPressed && hand_ != 0;
    if (!stays && wanted_) {
        machine_.say("XS0");
    }
    if (ready_) {
        machine_.say("PR0");
    }
    if (!stays) {
        wanted_ = false;
        saySwitch();
    }
    ready_ = false;
    machine_.go(back_);
}

// The stages that are still told as pressed.
void Exposure::saySwitch() {
    if (std::exchange(wanted_, false)) {
        machine_.say("XS0");
    }
    if (std::exchange(pressed_, false)) {
        machine_.say("PS0");
    }
}

} // namespace simulator
