#pragma once

#include "sim/Commands.h"
#include "sim/Machine.h"

#include <cstdint>
#include <functional>
#include <span>

namespace simulator {

/// Start of the machine, its phase, and the console's permission to make X-rays.
class Power {
public:
    /// `raysForbidden` is called when the console takes its permission back.
    Power(Machine& machine, std::function<void()> raysForbidden)
        : machine_(machine), raysForbidden_(std::move(raysForbidden)) {}

    [[nodiscard]] static std::span<const Row<Power>> rows();

    /// Comes up as a cold machine does: phase 1 first, then 2.
    void start();

    /// Starts in this phase without reporting it.
    void standIn(Phase phase) { machine_.setPhase(phase); }

    /// Skips the rest of the power-up, as if the machine had been found in the phase that follows it.
    void skip();

    /// Something came from the console: a question that it has not answered is asked again.
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
