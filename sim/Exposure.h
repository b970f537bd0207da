#pragma once

#include "sim/Commands.h"
#include "sim/Machine.h"

#include <functional>
#include <span>
#include <string>

namespace simulator {

/// The values of one exposure.
struct Shot {
    double kvp = 0;
    double ma = 0;
    double ms = 0;
    [[nodiscard]] double mas() const { return ma * ms / 1000; }
};

/// The two-stage hand switch and what it sets going: preparation (phase 3), exposure (phase 4), and back to
/// the phase it began in.
class Exposure {
public:
    /// What an exposure needs to know and whom it tells.
    struct Surroundings {
        std::function<std::string()> hindrance;             ///< why there can be none; empty when there can
        std::function<Shot()> plan;                         ///< what is about to be exposed
        std::function<void(const Shot& measured)> measured; ///< before the phase goes back
        std::function<void(bool complete)> over;            ///< after it has
    };

    Exposure(Machine& machine, Surroundings surroundings)
        : machine_(machine), surroundings_(std::move(surroundings)) {}

    [[nodiscard]] static std::span<const Row<Exposure>> rows();

    // The hand switch; each returns why it had no effect, or nothing.
    std::string prepare();
    std::string expose();
    std::string release();
    /// Moves the switch: 0 let go, 1 half pressed, 2 pressed through. What it set going may be over while it
    /// is still held; then it takes a new press. Returns why the movement had no effect, or nothing.
    std::string hand(int stage);
    [[nodiscard]] int hand() const { return hand_; }

    /// A preparation or an exposure under way ends as if the switch had been let go, and it takes a new press
    /// to begin again: the door was opened, or the console forbade X-rays.
    void interrupt();

    /// Everything stops where it stands, unreported: an error came, or the power went.
    void halt();

    /// The phase an exposure under way began in; else the present phase.
    [[nodiscard]] Phase phaseBehind() const { return underWay() ? back_ : machine_.phase(); }

    /// It began in a service mode, so the values come from there.
    [[nodiscard]] bool inServiceMode() const { return back_ != Phase::NormalOperation; }

    /// The rotor is up.
    [[nodiscard]] bool prepared() const { return ready_; }
    /// What is being exposed, or was last, and when that began.
    [[nodiscard]] const Shot& shot() const { return shot_; }
    [[nodiscard]] std::int64_t startedMs() const { return startedMs_; }

private:
    bool softwareSwitch(const Request& request);
    void ready();
    void start();
    void finish(bool complete);
    void letGo();
    void saySwitch();
    [[nodiscard]] bool underWay() const { return machine_.phaseIs({Phase::Preparation, Phase::RadExposure}); }

    Machine& machine_;
    Surroundings surroundings_;
    Agenda::Ticket next_ = Agenda::kNone;
    Shot shot_;
    std::int64_t startedMs_ = 0;
    Phase back_ = Phase::NormalOperation;
    int hand_ = 0;
    bool ready_ = false;
    bool wanted_ = false;
    bool pressed_ = false; ///< the switch was reported as pressed
};

} // namespace simulator
