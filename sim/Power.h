#pragma once

#include "sim/Commands.h"
#include "sim/Machine.h"

#include <span>

namespace simulator {

/// Start of the machine, its phase, and the console's leave to make X-rays.
class Power {
public:
    explicit Power(Machine& machine) : machine_(machine) {}

    [[nodiscard]] static std::span<const Row<Power>> rows();

    /// Comes up as a cold machine does: phase 1 first, then 2.
    void start();

    /// Is there already, in this phase, and has told it long ago.
    void standIn(int phase) { machine_.setPhase(phase); }

    [[nodiscard]] bool raysAllowed() const { return raysAllowed_; }

private:
    bool tellPhase(const Request& request);
    bool tellVersion(const Request& request);
    bool allowRays(const Request& request);

    Machine& machine_;
    bool raysAllowed_ = true;
};

} // namespace simulator
