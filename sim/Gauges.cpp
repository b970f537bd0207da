#include "sim/Gauges.h"

#include "base/Text.h"
#include "sim/Assembly.h"

#include <algorithm>

namespace simulator {

Gauges readGauges(const Assembly& g) {
    Gauges gauges;
    gauges.now = g.machine.now();
    gauges.phase = g.machine.phase();
    gauges.error = g.faults.code();
    gauges.raysAllowed = g.power.raysAllowed();
    gauges.hindrance = g.hindrance();
    gauges.heatPercent = g.tube.percent();
    gauges.restMs = g.tube.restMs();
    const Phase behind = g.exposure.phaseBehind();
    const bool service = kCalibratingEither.has(behind) || quillon::kAsksOrTells.has(behind);
    gauges.technique =
        service ? g.calibration.shot() : Shot{g.technique.kvp(), g.technique.ma(), g.technique.ms()};
    gauges.largeFocus = g.technique.largeFocus();
    gauges.hand = g.exposure.hand();
    gauges.prepared = g.exposure.prepared();
    gauges.running = g.exposure.shot();
    gauges.runningMs = gauges.phase == Phase::RadExposure ? gauges.now - g.exposure.startedMs() : 0;
    gauges.workstation = g.configuration.workstation();
    gauges.tube = g.configuration.tube();
    for (std::size_t station = 0; station < gauges.stations.size(); ++station) {
        std::ranges::copy(g.configuration.valuesOf(station), gauges.stations.at(station).begin());
    }
    for (int number = 0; number < 4; ++number) {
        gauges.counters.at(static_cast<std::size_t>(number)) = g.records.counter(number);
    }
    gauges.calibration = g.calibration.storedValues();
    gauges.dipSwitchCounts = g.machine.serviceAllowed() == g.machine.options.dipSwitch;
    gauges.acknowledges = g.machine.options.acknowledges;
    gauges.plug = g.plug.state();
    gauges.autocalExposures = g.autocalibration.exposures();
    gauges.silent = g.machine.options.silent;
    gauges.dipSwitch = g.machine.options.dipSwitch;
    const std::string names = Faults::lampNames();
    for (const std::string_view name : quillon::split(names, " ")) {
        if (g.faults.lampOn(name)) {
            gauges.lamps.emplace_back(name);
        }
    }
    gauges.reading = g.positioner.reading();
    gauges.fixedValues = g.machine.outbox.fixedValues();
    return gauges;
}

} // namespace simulator
