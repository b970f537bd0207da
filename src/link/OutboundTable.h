#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

#include "base/Fault.h"
#include "base/Phase.h"

namespace quillon {

/// One function of the generator: its mnemonic and the mask of the phases that allow it.
struct OutboundRow {
    std::string_view mnemonic;
    PhaseMask phases;
};

/// A bit that is no phase's, and stands in two masks all the same.
inline constexpr PhaseMask kSpareBit = 8192;
/// Every phase, and that bit.
inline constexpr PhaseMask kAllPhases = 16383;
static_assert(kAllPhases == ((maskOf(kPhaseRows.back().phase) * 2 - 1) | kSpareBit) &&
                  maskOf(kPhaseRows.back().phase) < kSpareBit,
              "every phase is in it, and the spare bit is none of theirs");

/// Sets of phases, named by what they allow.
namespace allowed {
using enum Phase;
inline constexpr PhaseMask kReady = Phases{NormalOperation}.mask();
inline constexpr PhaseMask kReleased = Phases{Preparation, RadExposure}.mask();
inline constexpr PhaseMask kReadyFluoro = Phases{NormalOperation, FluoroExposure}.mask();
inline constexpr PhaseMask kReadyCalibration = Phases{NormalOperation, Calibration}.mask();
inline constexpr PhaseMask kReadyFluoroCalibration =
    Phases{NormalOperation, FluoroExposure, Calibration}.mask();
inline constexpr PhaseMask kConfiguration = Phases{Configuration}.mask();
inline constexpr PhaseMask kReadyConfiguration = Phases{NormalOperation, Configuration}.mask();
inline constexpr PhaseMask kReadyFluoroConfiguration =
    Phases{NormalOperation, FluoroExposure, Configuration}.mask();
inline constexpr PhaseMask kReadyCalibrationConfiguration =
    Phases{NormalOperation, Calibration, Configuration}.mask();
inline constexpr PhaseMask kReadyFluoroAutocalibration =
    Phases{NormalOperation, FluoroExposure, Autocalibration}.mask();
inline constexpr PhaseMask kCalibrations = Phases{Calibration, Autocalibration}.mask();
inline constexpr PhaseMask kReadyCalibrations = Phases{NormalOperation, Calibration, Autocalibration}.mask();
inline constexpr PhaseMask kReadyFluoroCalibrations =
    Phases{NormalOperation, FluoroExposure, Calibration, Autocalibration}.mask();
inline constexpr PhaseMask kCalibrationsAnswers =
    Phases{Calibration, Autocalibration, ConfirmDismiss, AutocalError, AutocalOk}.mask();
inline constexpr PhaseMask kRays =
    Phases{NormalOperation, Preparation, Calibration, Error, Configuration, Autocalibration, TubeTooHot}
        .mask() |
    kSpareBit;
} // namespace allowed

// clang-format off
inline constexpr std::array kOutboundTable{
    OutboundRow{"RF",     allowed::kReady},
    OutboundRow{"TM",     allowed::kReady},
    OutboundRow{"TM?",    allowed::kReady},
    OutboundRow{"SA",     allowed::kReady},
    OutboundRow{"SB",     allowed::kReady},
    OutboundRow{"SC",     allowed::kReady},
    OutboundRow{"SD",     allowed::kReady},
    OutboundRow{"SE",     allowed::kReady},
    OutboundRow{"AEC",    allowed::kReady},
    OutboundRow{"FN",     allowed::kReady},
    OutboundRow{"FS",     allowed::kReady},
    OutboundRow{"PH",     allowed::kReady},
    OutboundRow{"DA",     allowed::kReady},
    OutboundRow{"BR",     allowed::kReady},
    OutboundRow{"BR+",    allowed::kReady},
    OutboundRow{"BR++",   allowed::kReady},
    OutboundRow{"BR-",    allowed::kReady},
    OutboundRow{"BR--",   allowed::kReady},
    OutboundRow{"BRU",    allowed::kReady},
    OutboundRow{"BRD",    allowed::kReady},
    OutboundRow{"FI?",    allowed::kReady},
    OutboundRow{"FN?",    allowed::kReady},
    OutboundRow{"FS?",    allowed::kReady},
    OutboundRow{"AF",     allowed::kReady},
    OutboundRow{"FLK++",  allowed::kReady},
    OutboundRow{"FLK--",  allowed::kReady},
    OutboundRow{"TC",     allowed::kReady},
    OutboundRow{"TCR",    allowed::kReady},
    OutboundRow{"LE",     allowed::kReady},
    OutboundRow{"XR",     allowed::kReleased},
    OutboundRow{"KV",     allowed::kReadyFluoro},
    OutboundRow{"MS",     allowed::kReadyFluoro},
    OutboundRow{"MS+",    allowed::kReadyFluoro},
    OutboundRow{"MS-",    allowed::kReadyFluoro},
    OutboundRow{"MSU",    allowed::kReadyFluoro},
    OutboundRow{"MSD",    allowed::kReadyFluoro},
    OutboundRow{"MX",     allowed::kReadyFluoro},
    OutboundRow{"FLK",    allowed::kReadyFluoro},
    OutboundRow{"FLK?",   allowed::kReadyFluoro},
    OutboundRow{"FLK+",   allowed::kReadyFluoro},
    OutboundRow{"FLK-",   allowed::kReadyFluoro},
    OutboundRow{"FLKU",   allowed::kReadyFluoro},
    OutboundRow{"FLKD",   allowed::kReadyFluoro},
    OutboundRow{"FLT",    allowed::kReadyFluoro},
    OutboundRow{"FLT?",   allowed::kReadyFluoro},
    OutboundRow{"FLP",    allowed::kReadyFluoro},
    OutboundRow{"FLP+",   allowed::kReadyFluoro},
    OutboundRow{"FLP-",   allowed::kReadyFluoro},
    OutboundRow{"FLPU",   allowed::kReadyFluoro},
    OutboundRow{"FLPD",   allowed::kReadyFluoro},
    OutboundRow{"FLP?",   allowed::kReadyFluoro},
    OutboundRow{"FLA",    allowed::kReadyFluoro},
    OutboundRow{"ABC",    allowed::kReadyFluoro},
    OutboundRow{"FLA?",   allowed::kReadyFluoro},
    OutboundRow{"FLM",    allowed::kReadyFluoro},
    OutboundRow{"FLHD",   allowed::kReadyFluoro},
    OutboundRow{"FLR",    allowed::kReadyFluoro},
    OutboundRow{"FLAR",   allowed::kReadyFluoro},
    OutboundRow{"FLF",    allowed::kReadyFluoro},
    OutboundRow{"FLMA+",  allowed::kReadyFluoro},
    OutboundRow{"FLMA-",  allowed::kReadyFluoro},
    OutboundRow{"FLMAU",  allowed::kReadyFluoro},
    OutboundRow{"FLMAD",  allowed::kReadyFluoro},
    OutboundRow{"KVTF",   allowed::kReadyFluoro},
    OutboundRow{"KVT",    allowed::kReadyFluoro},
    OutboundRow{"FLC",    allowed::kReadyFluoro},
    OutboundRow{"FLC+",   allowed::kReadyFluoro},
    OutboundRow{"FLC-",   allowed::kReadyFluoro},
    OutboundRow{"MD?",    allowed::kReadyCalibration},
    OutboundRow{"MS?",    allowed::kReadyCalibration},
    OutboundRow{"FO",     allowed::kReadyCalibration},
    OutboundRow{"FOS",    allowed::kReadyCalibration},
    OutboundRow{"FO?",    allowed::kReadyCalibration},
    OutboundRow{"KV?",    allowed::kReadyFluoroCalibration},
    OutboundRow{"KV++",   allowed::kReadyFluoroCalibration},
    OutboundRow{"KV--",   allowed::kReadyFluoroCalibration},
    OutboundRow{"MA",     allowed::kReadyFluoroCalibration},
    OutboundRow{"MA?",    allowed::kReadyFluoroCalibration},
    OutboundRow{"MA+",    allowed::kReadyFluoroCalibration},
    OutboundRow{"MA-",    allowed::kReadyFluoroCalibration},
    OutboundRow{"MAU",    allowed::kReadyFluoroCalibration},
    OutboundRow{"MAD",    allowed::kReadyFluoroCalibration},
    OutboundRow{"MX?",    allowed::kReadyFluoroCalibration},
    OutboundRow{"CFD",    allowed::kConfiguration},
    OutboundRow{"TU+",    allowed::kConfiguration},
    OutboundRow{"TU-",    allowed::kConfiguration},
    OutboundRow{"WM+",    allowed::kConfiguration},
    OutboundRow{"WM-",    allowed::kConfiguration},
    OutboundRow{"IC+",    allowed::kConfiguration},
    OutboundRow{"IC-",    allowed::kConfiguration},
    OutboundRow{"WSI",    allowed::kConfiguration},
    OutboundRow{"WSF",    allowed::kConfiguration},
    OutboundRow{"WSS",    allowed::kConfiguration},
    OutboundRow{"FI",     allowed::kReadyConfiguration},
    OutboundRow{"CF",     allowed::kReadyConfiguration},
    OutboundRow{"WS",     allowed::kReadyConfiguration},
    OutboundRow{"KVT+",   allowed::kReadyFluoroConfiguration},
    OutboundRow{"KVT-",   allowed::kReadyFluoroConfiguration},
    OutboundRow{"VR?",    allowed::kReadyCalibrationConfiguration},
    OutboundRow{"MX+",    allowed::kReadyFluoroAutocalibration},
    OutboundRow{"MX-",    allowed::kReadyFluoroAutocalibration},
    OutboundRow{"MXU",    allowed::kReadyFluoroAutocalibration},
    OutboundRow{"MXD",    allowed::kReadyFluoroAutocalibration},
    OutboundRow{"C+",     allowed::kCalibrations},
    OutboundRow{"C++",    allowed::kCalibrations},
    OutboundRow{"C-",     allowed::kCalibrations},
    OutboundRow{"C--",    allowed::kCalibrations},
    OutboundRow{"CS",     allowed::kCalibrations},
    OutboundRow{"CR",     allowed::kCalibrations},
    OutboundRow{"CO",     allowed::kCalibrations},
    OutboundRow{"CAR",    allowed::kCalibrations},
    OutboundRow{"CV",     allowed::kCalibrations},
    OutboundRow{"CA",     allowed::kReadyCalibrations},
    OutboundRow{"KV+",    allowed::kReadyFluoroCalibrations},
    OutboundRow{"KV-",    allowed::kReadyFluoroCalibrations},
    OutboundRow{"KVU",    allowed::kReadyFluoroCalibrations},
    OutboundRow{"KVD",    allowed::kReadyFluoroCalibrations},
    OutboundRow{"CAU",    allowed::kCalibrationsAnswers},
    OutboundRow{"RX",     allowed::kRays},
    OutboundRow{"ST",     kAllPhases},
    OutboundRow{"HU",     kAllPhases},
    OutboundRow{"RM",     kAllPhases},
    OutboundRow{"AR",     kAllPhases},
    OutboundRow{"DOR",    kAllPhases},
    OutboundRow{"DO?",    kAllPhases},
    OutboundRow{"DOA?",   kAllPhases},
    OutboundRow{"RP?",    kAllPhases},
    OutboundRow{"URS",    kAllPhases},
};
// clang-format on

[[nodiscard]] constexpr bool isMnemonic(std::string_view text) {
    return std::ranges::find(kOutboundTable, text, &OutboundRow::mnemonic) != kOutboundTable.end();
}

/// The mask of a mnemonic. One that the table does not hold is a mistake in this program.
[[nodiscard]] constexpr PhaseMask phasesOf(std::string_view mnemonic) {
    const auto row = std::ranges::find(kOutboundTable, mnemonic, &OutboundRow::mnemonic);
    return row == kOutboundTable.end() ? throw Fault(Fault::kNoSuchName) : row->phases;
}

} // namespace quillon
