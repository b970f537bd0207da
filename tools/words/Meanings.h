#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

#include "base/Text.h"
#include "model/Commands.h"
#include "tools/words/Words.h"

namespace quillon {

/// How a value is told to a person.
enum class ValueKind : std::uint8_t {
    Plain,
    Switch,      ///< 0 off, else on; behind a command without a value, the other of the two
    Phase,       ///< number of a phase
    WorkingMode, ///< number of a working mode
    Indexed,     ///< a digit that counts, then 0 or 1
    Tenths,      ///< a whole number of tenths
    Dose,        ///< three digits, then the exponent with its sign
};

/// What a mnemonic stands for.
struct Meaning {
    std::string_view mnemonic;
    Direction direction;
    std::string_view name;
    std::string_view unit = {};
    ValueKind value = ValueKind::Plain;
    /// In: the events that the message may raise. Out: who sends it beside the commands that only send;
    /// operations and properties by name, in brackets those that do so only while Handshaking is off,
    /// everything else behind "the".
    std::string_view related = {};
    /// Out: whether those ask for an acknowledgement.
    AckRule acknowledge = AckRule::Handshaking;

    /// Somebody sends it beside the commands, and by that rule.
    [[nodiscard]] constexpr bool hasOtherSenders() const {
        return direction == Direction::Out && !related.empty() && !related.starts_with('(');
    }
};

namespace meanings {

using enum Direction;
using enum ValueKind;

// clang-format off
inline constexpr std::array kTable{
    // Technique
    Meaning{"KV",    In,  "kVp",                               "kV",  Plain,  "KVPChangeValue"},
    Meaning{"KVS",   In,  "kVp on the display",                "kV",  Plain,  "KVPChangeDisplay"},
    Meaning{"MA",    In,  "mA",                                "mA",  Plain,  "MAChangeValue, CalibrationMA"},
    Meaning{"MAS",   In,  "mA on the display, or the item of the calibration", "", Plain, "MAChangeDisplay, CalibrationParameters"},
    Meaning{"MS",    In,  "exposure time",                     "ms",  Plain,  "MSChangeValue"},
    Meaning{"MSS",   In,  "exposure time on the display",      "ms",  Plain,  "MSChangeDisplay"},
    Meaning{"MX",    In,  "mAs",                               "mAs", Plain,  "MASChangeValue"},
    Meaning{"MXS",   In,  "mAs on the display",                "mAs", Plain,  "MASChangeDisplay"},
    Meaning{"TM",    In,  "technique mode",                    "P",   Plain,  "TMChangeValue"},
    Meaning{"FO1",   In,  "small focal spot",                  "",    Switch, "SmallFocusChange"},
    Meaning{"FO2",   In,  "large focal spot",                  "",    Switch, "LargeFocusChange"},
    Meaning{"PD",    In,  "mA, mAs and ms of the last exposure", "",  Plain,  "PostDisplay"},
    Meaning{"PDK",   In,  "kVp of the last exposure",          "kV"},
    Meaning{"HCF",   In,  "HCF mode",                          "",    Switch, "HCFmodeChange"},
    Meaning{"TA",    In,  "automatic tomography",              "",    Switch, "TomoAutoChange"},
    // Phase, signals, heat
    Meaning{"ST",    In,  "phase",                             "",    Phase,  "GeneratorPhaseChange, AutocalConfirmDismiss, GeneratorERROR"},
    Meaning{"HE",    In,  "tube heat",                         "%",   Plain,  "HUUpdate"},
    Meaning{"PS",    In,  "preparation signal",                "",    Switch, "PrepSignalStatusChange"},
    Meaning{"SF",    In,  "spot film preparation signal",      "",    Switch, "PrepSpotFilmSignalStatusChange"},
    Meaning{"PR",    In,  "ready",                             "",    Switch, "ReadyStatusChange"},
    Meaning{"XS",    In,  "exposure signal",                   "",    Switch, "XRaySignalStatusChange"},
    Meaning{"XR",    In,  "X-rays",                            "",    Switch, "XRayStatusChange"},
    Meaning{"XE",    In,  "exposure ended, with its reason",   "",    Plain,  "ExposureEnd"},
    // Errors and warnings
    Meaning{"ER",    In,  "error, or L and a workstation's interlock", "", Plain, "GeneratorERROR, GeneratorWSInterlockERROR"},
    Meaning{"WN",    In,  "technique warning",                 "",    Plain,  "WarningMessage, WarningMessageReset, NoDigitalWarning"},
    Meaning{"RP",    In,  "rating warning",                    "",    Plain,  "WarningMessageRP"},
    Meaning{"AR",    In,  "exposure control error; 0 acknowledges the reset of errors", "", Plain, "GeneratorAECError, GeneratorERRORResetAck"},
    Meaning{"INF",   In,  "information for the panel"},
    Meaning{"DL",    In,  "warning: door open",                "",    Switch, "WARNINGDoorOpen"},
    Meaning{"GL",    In,  "warning: generator overload",       "",    Switch, "WARNINGGenOverload"},
    Meaning{"TL",    In,  "warning: tube overload",            "",    Switch, "WARNINGTubeOverload"},
    Meaning{"RL",    In,  "warning: rotor",                    "",    Switch, "WARNINGRotor"},
    Meaning{"HL",    In,  "warning: overheat",                 "",    Switch, "WARNINGOverheat"},
    Meaning{"EL",    In,  "warning: technique",                "",    Switch, "WARNINGTechnique"},
    Meaning{"CL",    In,  "warning: collimator",               "",    Switch, "WARNINGCollimator"},
    Meaning{"AK",    In,  "acknowledgement of the last command"},
    // Programs
    Meaning{"SA",    In,  "radiographic program taken",        "",    Plain,  "AcknowledgeAPRRAD"},
    Meaning{"SC",    In,  "digital program taken",             "",    Plain,  "AcknowledgeAPRDigital"},
    Meaning{"SB",    In,  "fluoroscopy program taken",         "",    Plain,  "AcknowledgeAPRFluoro"},
    Meaning{"SD",    In,  "radiographic and fluoroscopy program taken", "", Plain, "AcknowledgeAPRRADFluoro"},
    Meaning{"SE",    In,  "digital and fluoroscopy program taken", "", Plain, "AcknowledgeAPRDigitalFluoro"},
    Meaning{"AT",    In,  "program outside the technique",     "",    Plain,  "APRTechniqueWarning"},
    // Exposure control
    Meaning{"MD",    In,  "largest density step"},
    Meaning{"AEC",   In,  "measuring fields left, center, right", "", Plain,  "AECFieldChange"},
    Meaning{"FI",    In,  "measuring field",                   "",    Indexed, "AECFieldChange"},
    Meaning{"FN",    In,  "density step",                      "",    Indexed, "AECDensityChange"},
    Meaning{"FS",    In,  "film screen",                       "",    Indexed, "AECFilmScreenChange"},
    Meaning{"PH",    In,  "photomultiplier",                   "",    Switch, "Photomultiplier"},
    Meaning{"DA",    In,  "digital exposure control",          "",    Switch, "DigitalAEC"},
    Meaning{"BR",    In,  "brightness",                        "",    Plain,  "Brightness"},
    Meaning{"RM",    In,  "road mapping",                      "",    Switch, "Roadmapping"},
    // Fluoroscopy
    Meaning{"FLK",   In,  "fluoroscopy kVp",                   "kV",  Plain,  "FlKVPChangeValue"},
    Meaning{"FLKS",  In,  "fluoroscopy kVp on the display",    "kV",  Plain,  "FlKVPChangeDisplay"},
    Meaning{"FLT",   In,  "fluoroscopy time",                  "",    Plain,  "FlTimeChangeValue"},
    Meaning{"FLTS",  In,  "fluoroscopy time on the display",   "",    Plain,  "FlTimeChangeDisplay"},
    Meaning{"FLP",   In,  "pulses; 0 is continuous",           "per s", Plain, "FLPPSChangeValue"},
    Meaning{"FLPS",  In,  "pulses on the display",             "per s", Plain, "FlPPSChangeDisplay"},
    Meaning{"FLX",   In,  "fluoroscopy exposure",              "",    Switch, "FlExposureStatusChange"},
    Meaning{"FLA",   In,  "brightness stabilisation",          "",    Switch, "FlABSChange"},
    Meaning{"FLM",   In,  "magnification",                     "",    Indexed, "FlMagChange"},
    Meaning{"FLHD",  In,  "high dose",                         "",    Switch, "FlHighDoseChange"},
    Meaning{"FLAR",  In,  "fluoroscopy alarm",                 "",    Switch, "FlAlarmChange"},
    Meaning{"FLMA",  In,  "fluoroscopy mA",                    "mA",  Tenths, "FlMAChangeValue"},
    Meaning{"FLMAS", In,  "fluoroscopy mA on the display",     "mA",  Plain,  "FlMAChangeDisplay"},
    Meaning{"FLC",   In,  "contrast",                          "",    Indexed, "FlContrastChange"},
    Meaning{"KVT",   In,  "kVp tracking curve; 0 is off",      "",    Plain,  "FlKVPTracking"},
    Meaning{"FLD",   In,  "fluoroscopy present",               "",    Switch, "GeneratorTypeChange"},
    // Configuration and calibration
    Meaning{"WS",    In,  "workstation",                       "",    Plain,  "WorkstationChange"},
    Meaning{"TU",    In,  "tube of the workstation"},
    Meaning{"WM",    In,  "working mode",                      "",    WorkingMode, "WorkingModeChange"},
    Meaning{"IC",    In,  "ionisation chamber of the workstation"},
    Meaning{"WSI",   In,  "interlock of the workstation"},
    Meaning{"WSF",   In,  "fail-safe of the workstation"},
    Meaning{"WSS",   In,  "synchronisation of the detector: 0 by hardware, else by software"},
    Meaning{"CV",    In,  "calibration value"},
    Meaning{"CAU",   In,  "autocalibration",                   "",    Switch, "AutocalibrationACK"},
    Meaning{"CAR",   In,  "repeat of the autocalibration",     "",    Switch, "AutocalRetry"},
    Meaning{"URS",   In,  "positioner: CG calibration data, RQ reading, SG the SID", "", Plain, "URSCalibrationGet, URSRequestADC, URSSidGetResponse"},
    // Dose, counters, versions
    Meaning{"DO",    In,  "dose of the last exposure",         "mGycm2", Dose, "LastExposureDose"},
    Meaning{"DOA",   In,  "accumulated dose",                  "mGycm2", Dose, "AccumulatedDose"},
    Meaning{"DOR",   In,  "dosemeter reset",                   "",    Plain,  "DoseResetAck"},
    Meaning{"TC",    In,  "exposure counter: its number, then the count", "", Plain, "ExposureCounter"},
    Meaning{"VR",    In,  "software version",                  "",    Plain,  "GeneratorSoftwareVersion"},
    Meaning{"RX?",   In,  "asks whether exposures are enabled"},
    Meaning{"RX",    In,  "exposures enabled",                 "",    Switch, "RXEnable"},
    Meaning{"BEEP",  In,  "beep",                              "",    Plain,  "Beep"},

    // Technique
    Meaning{"KV",    Out, "sets the kVp",                      "kV",  Plain,  "KVP"},
    Meaning{"KV?",   Out, "asks for the kVp"},
    Meaning{"KV+",   Out, "kVp up"},
    Meaning{"KV++",  Out, "kVp up, large step"},
    Meaning{"KV-",   Out, "kVp down"},
    Meaning{"KV--",  Out, "kVp down, large step"},
    Meaning{"KVU",   Out, "kVp up by one step"},
    Meaning{"KVD",   Out, "kVp down by one step"},
    Meaning{"MA",    Out, "sets the mA",                       "mA",  Plain,  "mA"},
    Meaning{"MA?",   Out, "asks for the mA"},
    Meaning{"MA+",   Out, "mA up; in calibration, the next item"},
    Meaning{"MA-",   Out, "mA down; in calibration, the item before"},
    Meaning{"MAU",   Out, "mA up by one step"},
    Meaning{"MAD",   Out, "mA down by one step"},
    Meaning{"MS",    Out, "sets the exposure time",            "ms",  Plain,  "ms"},
    Meaning{"MS?",   Out, "asks for the exposure time"},
    Meaning{"MS+",   Out, "exposure time up"},
    Meaning{"MS-",   Out, "exposure time down"},
    Meaning{"MSU",   Out, "exposure time up by one step"},
    Meaning{"MSD",   Out, "exposure time down by one step"},
    Meaning{"MX",    Out, "sets the mAs, in thousandths",      "uAs", Plain,  "MAS"},
    Meaning{"MX?",   Out, "asks for the mAs"},
    Meaning{"MX+",   Out, "mAs up"},
    Meaning{"MX-",   Out, "mAs down"},
    Meaning{"MXU",   Out, "mAs up by one step"},
    Meaning{"MXD",   Out, "mAs down by one step"},
    Meaning{"RF",    Out, "asks for the technique anew"},
    Meaning{"FO",    Out, "the other focal spot",               "",    Plain,  "(Focus)"},
    Meaning{"FOS",   Out, "sets the focal spot: 1 small, 2 large", "", Plain, "Focus", AckRule::Caller},
    Meaning{"FO?",   Out, "asks for the focal spot"},
    Meaning{"TM",    Out, "sets the technique mode",           "P",   Plain,  "TechniqueMode"},
    Meaning{"TM?",   Out, "asks for the technique mode",       "",    Plain,  "TMReq"},
    // Phase, heat, errors
    Meaning{"ST",    Out, "asks for the phase",                "",    Plain,  "GeneratorPhaseRequest, the poll", AckRule::Never},
    Meaning{"HU",    Out, "asks for the tube heat",            "",    Plain,  "HURequest, the poll", AckRule::Never},
    Meaning{"XR",    Out, "exposure by software",              "",    Switch},
    Meaning{"ER?",   Out, "asks for the error",                "",    Plain,  "the report of phase 7", AckRule::Never},
    Meaning{"AR",    Out, "resets the error",                  "",    Plain,  "ResetError", AckRule::Caller},
    Meaning{"RP?",   Out, "asks for the rating"},
    // Programs
    Meaning{"SA",    Out, "radiographic program",              "",    Plain,  "SendAPRRAD, APRRAD"},
    Meaning{"SC",    Out, "digital program",                   "",    Plain,  "SendAPRDigital, APRDigital"},
    Meaning{"SB",    Out, "fluoroscopy program",               "",    Plain,  "SendAPRFluoro, APRFluoro"},
    Meaning{"SD",    Out, "radiographic and fluoroscopy program", "", Plain,  "SendAPRRADFluoro, APRRADFluoro"},
    Meaning{"SE",    Out, "digital and fluoroscopy program",   "",    Plain,  "SendAPRDigitalFluoro, APRRADDigitalFluoro"},
    // Exposure control
    Meaning{"MD?",   Out, "asks for the largest density step"},
    Meaning{"AEC",   Out, "sets the measuring fields, film screen and density", "", Plain, "AECCommand, AECCommandWithDefaults"},
    Meaning{"AF",    Out, "asks for the exposure control anew"},
    Meaning{"FI",    Out, "measuring field: 0 left, 1 center, 2 right", "", Indexed},
    Meaning{"FI?",   Out, "asks for the measuring fields"},
    Meaning{"FN",    Out, "sets the density step",             "",    Plain,  "SetAECDensity, AECDensityUp, AECDensityDown"},
    Meaning{"FN?",   Out, "asks for the density step"},
    Meaning{"FS",    Out, "sets the film screen"},
    Meaning{"FS?",   Out, "asks for the film screen"},
    Meaning{"PH",    Out, "photomultiplier",                   "",    Switch},
    Meaning{"DA",    Out, "digital exposure control",          "",    Switch},
    Meaning{"BR",    Out, "sets the brightness"},
    Meaning{"BR+",   Out, "brightness up"},
    Meaning{"BR++",  Out, "brightness up, large step"},
    Meaning{"BR-",   Out, "brightness down"},
    Meaning{"BR--",  Out, "brightness down, large step"},
    Meaning{"BRU",   Out, "brightness up by one step"},
    Meaning{"BRD",   Out, "brightness down by one step"},
    Meaning{"RM",    Out, "road mapping",                      "",    Switch},
    // Fluoroscopy
    Meaning{"FLK",   Out, "sets the fluoroscopy kVp",          "kV",  Plain,  "FlKVP"},
    Meaning{"FLK?",  Out, "asks for the fluoroscopy kVp"},
    Meaning{"FLK+",  Out, "fluoroscopy kVp up",                "",    Plain,  "(FlKVPOneUp)"},
    Meaning{"FLK++", Out, "fluoroscopy kVp up, large step"},
    Meaning{"FLK-",  Out, "fluoroscopy kVp down",              "",    Plain,  "(FlKVPOneDown)"},
    Meaning{"FLK--", Out, "fluoroscopy kVp down, large step"},
    Meaning{"FLKU",  Out, "fluoroscopy kVp up by one step",    "",    Plain,  "FlKVPOneUp"},
    Meaning{"FLKD",  Out, "fluoroscopy kVp down by one step",  "",    Plain,  "FlKVPOneDown"},
    Meaning{"FLF",   Out, "asks for the fluoroscopy values anew"},
    Meaning{"FLT",   Out, "fluoroscopy time"},
    Meaning{"FLT?",  Out, "asks for the fluoroscopy time"},
    Meaning{"FLR",   Out, "resets the fluoroscopy time"},
    Meaning{"FLP",   Out, "sets the pulses; without a value, the next rate", "per s", Plain, "FlContinuousToggle"},
    Meaning{"FLP?",  Out, "asks for the pulses"},
    Meaning{"FLP+",  Out, "pulses up"},
    Meaning{"FLP-",  Out, "pulses down"},
    Meaning{"FLPU",  Out, "pulses up by one step"},
    Meaning{"FLPD",  Out, "pulses down by one step"},
    Meaning{"FLA",   Out, "brightness stabilisation",          "",    Switch},
    Meaning{"FLA?",  Out, "asks for the brightness stabilisation"},
    Meaning{"ABC",   Out, "brightness stabilisation, inside a program"},
    Meaning{"FLM",   Out, "sets the magnification"},
    Meaning{"FLHD",  Out, "high dose",                         "",    Switch},
    Meaning{"FLAR",  Out, "resets the fluoroscopy alarm"},
    Meaning{"FLMA+", Out, "fluoroscopy mA up"},
    Meaning{"FLMA-", Out, "fluoroscopy mA down"},
    Meaning{"FLMAU", Out, "fluoroscopy mA up by one step"},
    Meaning{"FLMAD", Out, "fluoroscopy mA down by one step"},
    Meaning{"FLC",   Out, "sets the contrast"},
    Meaning{"FLC+",  Out, "contrast up"},
    Meaning{"FLC-",  Out, "contrast down"},
    Meaning{"KVT",   Out, "kVp tracking curve; 0 is off", "", Plain, "FlKVPToggleKVPTracking", AckRule::Caller},
    Meaning{"KVT+",  Out, "next kVp tracking curve", "", Plain, "FlKVPTrackingUp"},
    Meaning{"KVT-",  Out, "kVp tracking curve before", "", Plain, "FlKVPTrackingDown"},
    Meaning{"KVTF",  Out, "defines a kVp tracking curve",      "",    Plain,  "KVPTrackingFormula"},
    // Configuration and calibration
    Meaning{"CF",    Out, "configuration",                     "",    Switch},
    Meaning{"CFD",   Out, "default configuration"},
    Meaning{"TU+",   Out, "next tube"},
    Meaning{"TU-",   Out, "tube before"},
    Meaning{"WM+",   Out, "next working mode"},
    Meaning{"WM-",   Out, "working mode before"},
    Meaning{"IC+",   Out, "next ionisation chamber"},
    Meaning{"IC-",   Out, "ionisation chamber before"},
    Meaning{"WS",    Out, "selects the workstation"},
    Meaning{"WSI",   Out, "steps the interlock of the workstation, + or -", "", Plain, "the panel's keys", AckRule::Never},
    Meaning{"WSF",   Out, "steps the fail-safe of the workstation, + or -", "", Plain, "the panel's keys", AckRule::Never},
    Meaning{"WSS",   Out, "steps the synchronisation of the detector, + or -", "", Plain, "the panel's keys", AckRule::Never},
    Meaning{"CA",    Out, "calibration",                       "",    Switch, "ToggleCalibrationFeature", AckRule::Caller},
    Meaning{"CAU",   Out, "autocalibration",                   "",    Switch, "ToggleAutocalibrationFeature", AckRule::Caller},
    Meaning{"CAR",   Out, "repeat of the autocalibration",     "",    Switch},
    Meaning{"C+",    Out, "calibration value up"},
    Meaning{"C++",   Out, "calibration value up, large step"},
    Meaning{"C-",    Out, "calibration value down"},
    Meaning{"C--",   Out, "calibration value down, large step"},
    Meaning{"CV",    Out, "sets the calibration value",        "",    Plain,  "the panel's slider"},
    Meaning{"CS",    Out, "stores the calibration value"},
    Meaning{"CR",    Out, "reads the calibration value"},
    Meaning{"CO",    Out, "focal spot of the calibration"},
    Meaning{"URS",   Out, "positioner: SO service, CG and CD calibration data, RQ reading, CF and SG the SID", "", Plain, "the console's positioner keys"},
    // Dose, counters, versions
    Meaning{"DOR",   Out, "resets the dosemeter"},
    Meaning{"DO?",   Out, "asks for the dose of the last exposure"},
    Meaning{"DOA?",  Out, "asks for the accumulated dose"},
    Meaning{"TC",    Out, "reads an exposure counter: 0 tube 1, 1 tube 2, 2 fluoroscopy, 3 tube 3"},
    Meaning{"TCR",   Out, "resets an exposure counter, numbered alike"},
    Meaning{"LE",    Out, "asks for the last exposure"},
    Meaning{"VR?",   Out, "asks for the software version"},
    Meaning{"RX",    Out, "enables exposures",                 "",    Switch, "RXEnable, the answer to RX? in every phase"},
};
// clang-format on

[[nodiscard]] constexpr bool isOf(const Meaning& row, Direction direction, std::string_view mnemonic) {
    return row.direction == direction && row.mnemonic.size() == mnemonic.size() &&
           std::ranges::equal(
               row.mnemonic, mnemonic, {}, [](char c) { return lowerCase(c); },
               [](char c) { return lowerCase(c); });
}

[[nodiscard]] constexpr bool knows(Direction direction, std::string_view mnemonic) {
    return std::ranges::any_of(kTable, [&](const Meaning& row) { return isOf(row, direction, mnemonic); });
}

/// What a mnemonic stands for; empty when nothing is known of it.
[[nodiscard]] constexpr const Meaning* find(Direction direction, std::string_view mnemonic) {
    const auto row =
        std::ranges::find_if(kTable, [&](const Meaning& each) { return isOf(each, direction, mnemonic); });
    return row == kTable.end() ? nullptr : &*row;
}

} // namespace meanings

} // namespace quillon
