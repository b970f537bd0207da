#include "console/ServiceModes.h"

#include <algorithm>
#include <array>

#include "model/Commands.h"
#include "model/Service.h"

namespace quillon {

namespace {

void leaveConfiguration(TorvaneSerialV3_07_QLC1& link) {
    link.commands().send(command("Configuration"), false);
}
void leaveCalibration(TorvaneSerialV3_07_QLC1& link) {
    link.service().calibration(false);
}
void leaveAutocalibration(TorvaneSerialV3_07_QLC1& link) {
    link.commands().send(command("Autocalibration"), false);
}

// clang-format off
constexpr auto kModes = std::to_array<ServiceMode>({
    // mode                   key                     entering                      leaving                      stands at               in    out    leads on
    {Phase::Configuration,   Key::Configuration,     Run::EnteringConfiguration,   Run::LeavingConfiguration,   Stand::Configuration,   "CF", "CF",  false, &leaveConfiguration},
    {Phase::Calibration,     Key::ManualCalibration, Run::EnteringCalibration,     Run::LeavingCalibration,     Stand::Calibration,     "CA", "CA",  true,  &leaveCalibration},
    {Phase::Autocalibration, Key::Autocalibration,   Run::EnteringAutocalibration, Run::LeavingAutocalibration, Stand::Autocalibration, "CA", "CAU", false, &leaveAutocalibration},
});
// clang-format on
static_assert(std::ranges::all_of(kPhaseRows,
                                  [](const PhaseRow& row) {
                                      return std::ranges::count(kModes, row.phase, &ServiceMode::phase) ==
                                             (isServiceMode(row.phase) ? 1 : 0);
                                  }),
              "each service mode has its row");

} // namespace

std::span<const ServiceMode> serviceModes() {
    return kModes;
}

const ServiceMode* serviceModeOf(Phase phase) {
    const auto row = std::ranges::find(kModes, phase, &ServiceMode::phase);
    return row == kModes.end() ? nullptr : &*row;
}

void sendExitFrom(Phase phase, TorvaneSerialV3_07_QLC1& link) {
    const Phase mode = kAsksOrTells.has(phase) ? Phase::Autocalibration : phase;
    if (const ServiceMode* row = serviceModeOf(mode)) {
        row->sendExit(link);
    }
}

} // namespace quillon
