#pragma once

#include "sim/Commands.h"
#include "sim/Machine.h"

#include <functional>
#include <span>

namespace simulator {

/// The ways into configuration and calibration and out of them.
class ServiceModes {
public:
    /// `leaveAutocalibration` ends an autocalibration that runs when the console leaves calibration.
    ServiceModes(Machine& machine, std::function<void()> leaveAutocalibration)
        : machine_(machine), leaveAutocalibration_(std::move(leaveAutocalibration)) {}

    [[nodiscard]] static std::span<const Row<ServiceModes>> rows();
    void halt() { machine_.agenda.cancel(pending_); }

private:
    bool configure(const Request& request);
    bool calibrate(const Request& request);
    void change(Phase phase);

    Machine& machine_;
    std::function<void()> leaveAutocalibration_;
    Agenda::Ticket pending_ = Agenda::kNone;
};

} // namespace simulator
