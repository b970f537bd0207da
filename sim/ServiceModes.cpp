#include "sim/ServiceModes.h"

namespace simulator {

std::span<const Row<ServiceModes>> ServiceModes::rows() {
    static constexpr Row<ServiceModes> rows[] = {
        {"CF", Phases{Phase::NormalOperation, Phase::Configuration}, Takes::Number, &ServiceModes::configure},
        {"CA", Phases{Phase::NormalOperation, Phase::Calibration, Phase::Autocalibration}, Takes::Number,
         &ServiceModes::calibrate},
    };
    return rows;
}

bool ServiceModes::configure(const Request& request) {
    change(*request.number != 0 ? Phase::Configuration : Phase::NormalOperation);
    return true;
}

bool ServiceModes::calibrate(const Request& request) {
    const bool on = *request.number != 0;
    if (machine_.phase() == Phase::Autocalibration) {
        if (on) {
            return true;
        }
        leaveAutocalibration_();
    }
    change(on ? Phase::Calibration : Phase::NormalOperation);
    return true;
}

void ServiceModes::change(Phase phase) {
    machine_.agenda.cancel(pending_);
    const bool locked = phase != Phase::NormalOperation && !machine_.serviceAllowed();
    const Phase from = machine_.phase();
    if (from == phase || locked) {
        return;
    }
    pending_ = machine_.after(machine_.options.modeMs, [this, from, phase] {
        if (machine_.phase() == from) {
            machine_.enter(phase);
        }
    });
}

} // namespace simulator
