#pragma once

#include "base/Phase.h"
#include "sim/Agenda.h"
#include "sim/Commands.h"
#include "sim/Options.h"
#include "sim/Outbox.h"
#include "sim/Random.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>

namespace simulator {

/// What all subjects of the generator share: its phase, its time, its agenda and its way out to the line.
class Machine {
public:
    explicit Machine(Options startOptions)
        : options(std::move(startOptions)), outbox(options), random(options.seed) {}
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;

    Options options;
    Agenda agenda;
    Outbox outbox;
    Random random;

    /// What it is doing; kOff while it is switched off.
    [[nodiscard]] Phase phase() const { return phase_; }
    [[nodiscard]] bool phaseIs(std::initializer_list<Phase> phases) const {
        return std::find(phases.begin(), phases.end(), phase_) != phases.end();
    }
    /// Takes a phase without telling anybody.
    void setPhase(Phase phase) { phase_ = phase; }
    /// Takes a phase and reports it.
    void go(Phase phase) {
        phase_ = phase;
        say("ST" + std::to_string(quillon::numberOf(phase)));
    }
    /// As `go`, and then what belongs to entering that phase, such as the values of a service mode.
    void enter(Phase phase) {
        const Phase from = phase_;
        go(phase);
        if (const auto& report = onEnter_.at(static_cast<std::size_t>(quillon::numberOf(phase)))) {
            report(from);
        }
    }
    void onEnter(Phase phase, std::function<void(Phase from)> report) {
        onEnter_.at(static_cast<std::size_t>(quillon::numberOf(phase))) = std::move(report);
    }

    /// The dip switch as the machine knows it.
    [[nodiscard]] bool serviceAllowed() const {
        return options.dipReadAtStart ? dipSwitchRead_ : options.dipSwitch;
    }
    void readDipSwitch() { dipSwitchRead_ = options.dipSwitch; }

    [[nodiscard]] std::int64_t now() const { return now_; }
    void setNow(std::int64_t nowMs) { now_ = nowMs; }

    void say(std::string_view text) { outbox.say(text); }
    Agenda::Ticket after(std::int64_t ms, std::function<void()> action) {
        return agenda.enter(now_ + ms, std::move(action));
    }

private:
    Phase phase_ = kOff;
    std::int64_t now_ = 0;
    bool dipSwitchRead_ = true;
    std::array<std::function<void(Phase from)>, 14> onEnter_;
};

} // namespace simulator
