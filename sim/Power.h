#pragma once

#include "sim/Commands.h"
#include "sim/Machine.h"

#include <cstdint>
#include <functional>
#include <span>

namespace simulator {

/// Start of the machine, its phase, and the console's leave to make X-rays.
class Power {
public:
    /// `raysForbidden` is told when the console takes its leave back.
    Power(Machine& machine, std::function<void()> raysForbidden)
        : machine_(machine), raysForbidden_(std::move(raysForbidden)) {}

    [[nodiscard]] static std::span<const Row<Power>> rows();

    /// Comes up as a cold machine does: phase 1 first, then 2.
    void start();

    /// Starts in this phase without reporting it.
    void standIn(Phase phase) { machine_.setPhase(phase); }

    /// The rest of the power-up is skipped: all is as if it had been found in the phase it goes on in.
    void skip();

    /// Something came from the console: a question it has left unanswered is asked again.
    void heard();

    /// No X-rays after power-up before the console has allowed them.
    [[nodiscard]] bool raysAllowed() const { return raysAllowed_; }

private:
    bool tellPhase(const Request& request);
    bool tellVersion(const Request& request);
    bool allowRays(const Request& request);

    void askForRays();

    Machine& machine_;
    std::function<void()> raysForbidden_;
    bool raysAllowed_ = true;
    bool asking_ = false;
    std::int64_t askAgainMs_ = 0;
};

} // namespace simulator
