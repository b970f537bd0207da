#pragma once

#include <cstdint>
#include <initializer_list>
#include <limits>

#include "base/Fault.h"

namespace quillon {

/// What the generator says that it is doing; the values are the numbers of its reports ("ST"). A number that
/// is not among them is kept as it came.
enum class Phase : std::int32_t {
    Unheard = -1, ///< started over, and nothing said since
    None = 0,     ///< nothing said yet
    Initialization = 1,
    NormalOperation = 2,
    Preparation = 3,
    RadExposure = 4,
    FluoroExposure = 5,
    Calibration = 6,
    Error = 7,
    Configuration = 8,
    Autocalibration = 9,
    TubeTooHot = 10,
    ConfirmDismiss = 11,
    AutocalError = 12,
    AutocalOk = 13,
};

[[nodiscard]] constexpr std::int32_t numberOf(Phase phase) {
    return static_cast<std::int32_t>(phase);
}

/// One of those that the generator reports.
[[nodiscard]] constexpr bool isKnown(Phase phase) {
    return phase >= Phase::Initialization && phase <= Phase::AutocalOk;
}

/// Preparation or an exposure: the generator takes no command of a service mode.
[[nodiscard]] constexpr bool isExposure(Phase phase) {
    return phase >= Phase::Preparation && phase <= Phase::FluoroExposure;
}

/// One of the modes that a service engineer takes the generator into.
[[nodiscard]] constexpr bool isServiceMode(Phase phase) {
    return phase == Phase::Calibration || phase == Phase::Configuration || phase == Phase::Autocalibration;
}

/// How an autocalibration ended.
[[nodiscard]] constexpr bool endsAutocalibration(Phase phase) {
    return phase == Phase::AutocalError || phase == Phase::AutocalOk;
}

/// The bit of a phase in a mask: bit n - 1 for phase n, none below 1. Fault 6 for a number that has no bit.
[[nodiscard]] constexpr std::int32_t maskOf(Phase phase) {
    constexpr std::int32_t kBits = 31;
    if (numberOf(phase) > kBits) {
        throw Fault(Fault::kOverflow);
    }
    return numberOf(phase) < 1 ? 0
                               : static_cast<std::int32_t>(1U << static_cast<unsigned>(numberOf(phase) - 1));
}

/// The phases in which a message may leave, a bit each.
using PhaseMask = std::int16_t;
static_assert(maskOf(Phase::AutocalOk) <= std::numeric_limits<PhaseMask>::max(), "every phase has its bit");

/// A set of phases.
class Phases {
public:
    constexpr Phases() = default;
    /// Fault 9, which in a constant does not compile, for a phase that no generator reports.
    constexpr Phases(std::initializer_list<Phase> phases) {
        for (const Phase phase : phases) {
            if (!isKnown(phase)) {
                throw Fault(Fault::kSubscript);
            }
            mask_ = static_cast<PhaseMask>(mask_ | maskOf(phase));
        }
    }
    [[nodiscard]] constexpr bool has(Phase phase) const {
        return isKnown(phase) && (mask_ & maskOf(phase)) != 0;
    }
    /// As the messages carry it that may leave in these phases.
    [[nodiscard]] constexpr PhaseMask mask() const { return mask_; }

private:
    PhaseMask mask_ = 0;
};

/// The generator asks whether to autocalibrate, or shows what has come of it.
inline constexpr Phases kAsksOrTells{Phase::ConfirmDismiss, Phase::AutocalError, Phase::AutocalOk};

} // namespace quillon
