#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <string_view>

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

/// What a phase means to whatever does not treat it by itself.
enum class PhaseKind : std::uint8_t {
    Starting,
    Ready,
    Exposure,    ///< preparation or an exposure: the generator takes no command of a service mode
    ServiceMode, ///< one of the modes that a service engineer takes the generator into
    Halted,      ///< it goes on where it came from
    Question,    ///< the generator asks whether to autocalibrate
    Result,      ///< how an autocalibration ended
};

/// What the keyboard calls a phase, and its kind.
struct PhaseRow {
    Phase phase;
    std::string_view caption;
    PhaseKind kind;
};

// clang-format off
inline constexpr std::array kPhaseRows{
    PhaseRow{Phase::Initialization,  "Initialization",   PhaseKind::Starting},
    PhaseRow{Phase::NormalOperation, "Normal Operation", PhaseKind::Ready},
    PhaseRow{Phase::Preparation,     "Preparation",      PhaseKind::Exposure},
    PhaseRow{Phase::RadExposure,     "RAD Exposure",     PhaseKind::Exposure},
    PhaseRow{Phase::FluoroExposure,  "FL Exposure",      PhaseKind::Exposure},
    PhaseRow{Phase::Calibration,     "Calibration",      PhaseKind::ServiceMode},
    PhaseRow{Phase::Error,           "ERROR",            PhaseKind::Halted},
    PhaseRow{Phase::Configuration,   "Configuration",    PhaseKind::ServiceMode},
    PhaseRow{Phase::Autocalibration, "Autocalibration",  PhaseKind::ServiceMode},
    PhaseRow{Phase::TubeTooHot,      "Tube Too Hot",     PhaseKind::Halted},
    PhaseRow{Phase::ConfirmDismiss,  "Confirm/Dismiss",  PhaseKind::Question},
    PhaseRow{Phase::AutocalError,    "Autocal error",    PhaseKind::Result},
    PhaseRow{Phase::AutocalOk,       "Autocal OK",       PhaseKind::Result},
};
// clang-format on

/// As many as the generator has: their numbers begin with 1.
inline constexpr std::int32_t kPhaseCount = kPhaseRows.size();

static_assert(
    [] {
        for (std::int32_t i = 0; i < kPhaseCount; ++i) {
            if (numberOf(kPhaseRows[static_cast<std::size_t>(i)].phase) != i + 1) {
                return false;
            }
        }
        return true;
    }(),
    "the rows stand in the order of the numbers, and none is left out");

/// One of those that the generator reports.
[[nodiscard]] constexpr bool isKnown(Phase phase) {
    return phase >= Phase::Initialization && numberOf(phase) <= kPhaseCount;
}

/// Fault 9 for a phase that no generator reports.
[[nodiscard]] constexpr const PhaseRow& rowOf(Phase phase) {
    return isKnown(phase) ? kPhaseRows[static_cast<std::size_t>(numberOf(phase) - 1)]
                          : throw Fault(Fault::kSubscript);
}

[[nodiscard]] constexpr bool isOf(PhaseKind kind, Phase phase) {
    return isKnown(phase) && rowOf(phase).kind == kind;
}
[[nodiscard]] constexpr bool isExposure(Phase phase) {
    return isOf(PhaseKind::Exposure, phase);
}
[[nodiscard]] constexpr bool isServiceMode(Phase phase) {
    return isOf(PhaseKind::ServiceMode, phase);
}
[[nodiscard]] constexpr bool endsAutocalibration(Phase phase) {
    return isOf(PhaseKind::Result, phase);
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
static_assert(maskOf(kPhaseRows.back().phase) <= std::numeric_limits<PhaseMask>::max(),
              "every phase has its bit");

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
    [[nodiscard]] static constexpr Phases of(PhaseKind kind) {
        Phases all;
        for (const PhaseRow& row : kPhaseRows) {
            all = row.kind == kind ? all | Phases{row.phase} : all;
        }
        return all;
    }
    [[nodiscard]] constexpr Phases operator|(Phases other) const {
        Phases both;
        both.mask_ = static_cast<PhaseMask>(mask_ | other.mask_);
        return both;
    }
    [[nodiscard]] constexpr bool has(Phase phase) const {
        return isKnown(phase) && (mask_ & maskOf(phase)) != 0;
    }
    /// As the messages carry it that may leave in these phases.
    [[nodiscard]] constexpr PhaseMask mask() const { return mask_; }

private:
    PhaseMask mask_ = 0;
};

inline constexpr Phases kServiceModes = Phases::of(PhaseKind::ServiceMode);
/// The generator asks whether to autocalibrate, or shows what has come of it.
inline constexpr Phases kAsksOrTells = Phases::of(PhaseKind::Question) | Phases::of(PhaseKind::Result);

} // namespace quillon
