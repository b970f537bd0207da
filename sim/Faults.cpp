#include "sim/Faults.h"

#include "base/Numbers.h"
#include "base/Text.h"

#include <algorithm>
#include <utility>

namespace simulator {

namespace {

struct Lamp {
    std::string_view name;
    std::string_view mnemonic;
    std::string_view words;
};

constexpr Lamp kLamps[] = {{"door", "DL", "the door is open"},
                           {"generator", "GL", "the generator is overloaded"},
                           {"tube", "TL", "the tube is overloaded"},
                           {"rotor", "RL", "the rotor does not turn"},
                           {"overheat", "HL", "the housing is too hot"},
                           {"technique", "EL", "the technique is not possible"},
                           {"collimator", "CL", "the collimator is open"}};

} // namespace

std::span<const Row<Faults>> Faults::rows() {
    static constexpr Row<Faults> rows[] = {
        {"ER?", kEveryPhase, Takes::Nothing, &Faults::tell},
        {"AR", kEveryPhase, Takes::Nothing, &Faults::reset},
    };
    return rows;
}

void Faults::powerUp() {
    code_ = interlock_ = 0;
    resume_ = Phase::NormalOperation;
}

void Faults::sayLamps() {
    for (const Lamp& lamp : kLamps) {
        if (lamps_.contains(lamp.name)) {
            machine_.say(std::string(lamp.mnemonic) + "1");
        }
    }
}

void Faults::raise(int code) {
    if (code == 0) {
        machine_.say("ER0");
        return;
    }
    if (machine_.phase() != Phase::Error) {
        resume_ = stop_();
    }
    code_ = code;
    machine_.go(Phase::Error);
    machine_.say("ER" + std::to_string(code));
}

void Faults::raiseInterlock(int number) {
    interlock_ = number;
    machine_.say("ERL" + quillon::fixedDigits(number, 2));
}

void Faults::setLamp(std::string_view name, bool on) {
    const auto lamp = std::ranges::find(kLamps, name, &Lamp::name);
    if (on) {
        lamps_.emplace(name);
    } else {
        lamps_.erase(std::string(name));
    }
    if (machine_.phase() == kOff) {
        return;
    }
    machine_.say(std::string(lamp->mnemonic) + (on ? "1" : "0"));
    if (on && hinders(name)) {
        hindered_();
    }
}

bool Faults::hinders(std::string_view lamp) const {
    const auto names = quillon::split(machine_.options.stops, ",");
    return std::ranges::find(names, lamp) != names.end();
}

std::string_view Faults::hindrance() const {
    const auto* const found = std::ranges::find_if(
        kLamps, [this](const Lamp& lamp) { return lampOn(lamp.name) && hinders(lamp.name); });
    return found == std::end(kLamps) ? std::string_view() : found->words;
}

bool Faults::hasLamp(std::string_view name) {
    return std::ranges::find(kLamps, name, &Lamp::name) != std::end(kLamps);
}

std::string Faults::lampNames() {
    std::string names;
    for (const Lamp& lamp : kLamps) {
        if (!names.empty()) {
            names += ' ';
        }
        names += lamp.name;
    }
    return names;
}

bool Faults::tell(const Request&) {
    if (interlock_ != 0 && code_ == 0) {
        raiseInterlock(interlock_);
    } else {
        machine_.say("ER" + std::to_string(code_));
    }
    return true;
}

bool Faults::reset(const Request&) {
    code_ = interlock_ = 0;
    machine_.say("AR0");
    if (machine_.phase() == Phase::Error) {
        machine_.enter(std::exchange(resume_, Phase::NormalOperation));
    }
    return true;
}

} // namespace simulator
