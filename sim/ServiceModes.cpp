#include "sim/ServiceModes.h"

namespace simulator {

std::span<const Row<ServiceModes>> ServiceModes::rows() {
    static constexpr Row<ServiceModes> rows[] = {
        {"CF", in(2, 8), Takes::Number, &ServiceModes::configure},
        {"CA", in(2, 6, 9), Takes::Number, &ServiceModes::calibrate},
    };
    return rows;
}

bool ServiceModes::configure(const Request& request) {
    change(*request.number != 0 ? 8 : 2);
    return true;
}

bool ServiceModes::calibrate(const Request& request) {
    const bool on = *request.number != 0;
    if (machine_.phase() == 9) {
        if (on) {
            return true;
        }
        leaveAutocalibration_();
    }
    change(on ? 6 : 2);
    return true;
}

void ServiceModes::change(int phase) {
    machine_.agenda.cancel(pending_);
    const bool locked = phase != 2 && !machine_.options.dipSwitch;
    const int from = machine_.phase();
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
