#include "sim/Power.h"

namespace simulator {

std::span<const Row<Power>> Power::rows() {
    // clang-format off
    static constexpr Row<Power> rows[] = {
        {"ST",  kEveryPhase,               Takes::Nothing, &Power::tellPhase},
        {"VR?", in(2, 6, 8),               Takes::Nothing, &Power::tellVersion},
        {"RX",  in(2, 3, 6, 7, 8, 9, 10),  Takes::Number,  &Power::allowRays},
    };
    // clang-format on
    return rows;
}

void Power::start() {
    raysAllowed_ = true;
    machine_.go(1);
    machine_.after(machine_.options.powerUpMs, [this] {
        if (machine_.phase() != 1) {
            return;
        }
        machine_.enter(2);
        // The console keeps the enable state over a restart of the machine.
        machine_.say("RX?");
    });
}

bool Power::tellPhase(const Request&) {
    machine_.say("ST" + std::to_string(machine_.phase()));
    return true;
}

bool Power::tellVersion(const Request&) {
    machine_.say("VR" + machine_.options.version);
    return true;
}

bool Power::allowRays(const Request& request) {
    raysAllowed_ = *request.number != 0;
    return true;
}

} // namespace simulator
