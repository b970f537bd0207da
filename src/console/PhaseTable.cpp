#include "console/PhaseTable.h"

#include <algorithm>
#include <array>

namespace quillon {

namespace {

using S = Stimulus;
using T = ConsoleTexts;

// clang-format off
constexpr std::array kRows{
    PhaseMeaning{Phase::Initialization,  S::Restart},
    PhaseMeaning{Phase::NormalOperation, S::Ready,           Tone::Plain,     &T::sStateReady},
    PhaseMeaning{Phase::Preparation,     S::Exposure,        Tone::Plain,     &T::sStatePreparation, &T::sWhyExposure},
    PhaseMeaning{Phase::RadExposure,     S::Exposure,        Tone::Radiation, &T::sStateExposure,    &T::sWhyExposure},
    PhaseMeaning{Phase::FluoroExposure,  S::Exposure,        Tone::Radiation, &T::sStateExposure,    &T::sWhyExposure},
    PhaseMeaning{Phase::Calibration,     S::Calibration},
    PhaseMeaning{Phase::Error,           {},                 Tone::Alarm,     &T::sStateError,       &T::sWhyError},
    PhaseMeaning{Phase::Configuration,   S::Configuration},
    PhaseMeaning{Phase::Autocalibration, S::Autocalibration},
    PhaseMeaning{Phase::TubeTooHot,      {},                 Tone::Warning,   &T::sStateTubeTooHot,  &T::sStateTubeTooHot},
    PhaseMeaning{Phase::ConfirmDismiss,  {},                 Tone::Plain,     nullptr,               &T::sWhyQuestion},
    PhaseMeaning{Phase::AutocalError,    S::Autocalibration, Tone::Alarm},
    PhaseMeaning{Phase::AutocalOk,       S::Autocalibration},
};
// clang-format on
static_assert(std::ranges::equal(kRows, kPhaseRows, {}, &PhaseMeaning::phase, &PhaseRow::phase),
              "each phase has its row");

} // namespace

PhaseMeaning meaningOf(Phase phase) {
    const auto row = std::ranges::find(kRows, phase, &PhaseMeaning::phase);
    return row == kRows.end() ? PhaseMeaning{phase, {}} : *row;
}

} // namespace quillon
