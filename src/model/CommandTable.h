#pragma once

#include <algorithm>
#include <array>
#include <concepts>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

#include "link/OutboundTable.h"

namespace quillon {

/// When a command asks for an acknowledgement.
enum class AckRule : std::uint8_t {
    Never,
    Handshaking, ///< when Handshaking is on
    Caller,      ///< when Handshaking is on, or else as its last argument says, which may be left out
};

/// What stands behind the mnemonic: the command's first argument in the form that the generator wants.
enum class ValueForm : std::uint8_t {
    None,
    Plain,   ///< a whole number as plain decimal text
    Next,    ///< the number plus one
    Digits2, ///< exactly so many digits
    Digits3,
    Digits4,
    Signed, ///< blank or minus first
    Switch, ///< "1" or "0"
    Text,   ///< as given
};

/// How long it waits for its acknowledgement, and whether it throws away what waits before it.
enum class Urgency : std::uint8_t {
    Normal,
    ModeChange,      ///< twice the retries interval
    Autocalibration, ///< 1000 ms, and at once
};

/// A command that only sends.
struct CommandRow {
    std::string_view name;
    std::string_view mnemonic; ///< as its mask is looked up
    std::string_view plain;    ///< mnemonic while Handshaking is off; empty for the same one
    std::string_view suffix;   ///< what always stands behind the mnemonic, in front of the value
    ValueForm value;
    AckRule acknowledge;
    Urgency urgency = Urgency::Normal;
};

namespace commands {

using enum AckRule;
using enum ValueForm;
using enum Urgency;

// clang-format off
inline constexpr std::array kCommands{
    // name                        mnemonic plain   suffix value     acknowledge  urgency
    // Technique
    CommandRow{"KVPUp",                   "KV+",   "",     "",  None,    Never},
    CommandRow{"KVPUpUp",                 "KV++",  "",     "",  None,    Never},
    CommandRow{"KVPDown",                 "KV-",   "",     "",  None,    Never},
    CommandRow{"KVPDownDown",             "KV--",  "",     "",  None,    Never},
    CommandRow{"MAUp",                    "MA+",   "",     "",  None,    Never},
    CommandRow{"MADown",                  "MA-",   "",     "",  None,    Never},
    CommandRow{"MSUp",                    "MS+",   "",     "",  None,    Never},
    CommandRow{"MSDown",                  "MS-",   "",     "",  None,    Never},
    CommandRow{"MASUp",                   "MX+",   "",     "",  None,    Never},
    CommandRow{"MASDown",                 "MX-",   "",     "",  None,    Never},
    CommandRow{"KVPRequest",              "KV?",   "",     "",  None,    Handshaking},
    CommandRow{"MARequest",               "MA?",   "",     "",  None,    Handshaking},
    CommandRow{"MSRequest",               "MS?",   "",     "",  None,    Handshaking},
    CommandRow{"MASRequest",              "MX?",   "",     "",  None,    Handshaking},
    CommandRow{"KVPOneUp",                "KVU",   "KV+",  "",  None,    Handshaking},
    CommandRow{"KVPOneDown",              "KVD",   "KV-",  "",  None,    Handshaking},
    CommandRow{"MAOneUp",                 "MAU",   "MA+",  "",  None,    Handshaking},
    CommandRow{"MAOneDown",               "MAD",   "MA-",  "",  None,    Handshaking},
    CommandRow{"MASOneUp",                "MXU",   "MX+",  "",  None,    Handshaking},
    CommandRow{"MASOneDown",              "MXD",   "MX-",  "",  None,    Handshaking},
    CommandRow{"MSOneUp",                 "MSU",   "",     "",  None,    Handshaking},
    CommandRow{"MSOneDown",               "MSD",   "",     "",  None,    Handshaking},
    CommandRow{"RADRefresh",              "RF",    "",     "",  None,    Handshaking},
    CommandRow{"FocusRequest",            "FO?",   "",     "",  None,    Handshaking},
    CommandRow{"ToggleFocus",             "FO",    "",     "",  None,    Never},
    CommandRow{"SetFocalSpot",            "FOS",   "",     "",  Next,    Caller},
    // Exposure control
    CommandRow{"MaxDensityRequest",       "MD?",   "",     "",  None,    Handshaking},
    CommandRow{"AECFieldRequest",         "FI?",   "",     "",  None,    Handshaking},
    CommandRow{"AECRefresh",              "AF",    "",     "",  None,    Caller},
    CommandRow{"ToggleAECFieldLeft",      "FI",    "",     "0", None,    Never},
    CommandRow{"ToggleAECFieldCenter",    "FI",    "",     "1", None,    Never},
    CommandRow{"ToggleAECFieldRight",     "FI",    "",     "2", None,    Never},
    CommandRow{"SetAECFieldLeft",         "FI",    "",     "0", Switch,  Handshaking},
    CommandRow{"SetAECFieldCenter",       "FI",    "",     "1", Switch,  Handshaking},
    CommandRow{"SetAECFieldRight",        "FI",    "",     "2", Switch,  Handshaking},
    CommandRow{"SetAECFilmScreen",        "FS",    "",     "",  Plain,   Caller},
    CommandRow{"ToggleDAEC",              "DA",    "",     "",  None,    Never},
    CommandRow{"SetDAEC",                 "DA",    "",     "",  Switch,  Caller},
    CommandRow{"TogglePhotomultiplier",   "PH",    "",     "",  None,    Never},
    CommandRow{"SetPhotomultiplier",      "PH",    "",     "",  Switch,  Caller},
    CommandRow{"SetRoadMapping",          "RM",    "",     "",  Switch,  Caller},
    CommandRow{"BrightnessUp",            "BR+",   "",     "",  None,    Never},
    CommandRow{"BrightnessUpUp",          "BR++",  "",     "",  None,    Never},
    CommandRow{"BrightnessDown",          "BR-",   "",     "",  None,    Never},
    CommandRow{"BrightnessDownDown",      "BR--",  "",     "",  None,    Never},
    CommandRow{"BrightnessOneUp",         "BRU",   "BR+",  "",  None,    Handshaking},
    CommandRow{"BrightnessOneDown",       "BRD",   "BR-",  "",  None,    Handshaking},
    CommandRow{"SetBrightness",           "BR",    "",     "",  Digits3, Handshaking},
    // Fluoroscopy
    CommandRow{"FlKVPUp",                 "FLK+",  "",     "",  None,    Never},
    CommandRow{"FlKVPUpUp",               "FLK++", "",     "",  None,    Never},
    CommandRow{"FlKVPDown",               "FLK-",  "",     "",  None,    Never},
    CommandRow{"FlKVPDownDown",           "FLK--", "",     "",  None,    Never},
    CommandRow{"FlKVPRequest",            "FLK?",  "",     "",  None,    Handshaking},
    CommandRow{"FlRefresh",               "FLF",   "",     "",  None,    Caller},
    CommandRow{"FlTimeRequest",           "FLT?",  "",     "",  None,    Handshaking},
    CommandRow{"FlTimeReset",             "FLR",   "",     "",  None,    Caller},
    CommandRow{"FlPPSNext",               "FLP",   "",     "",  None,    Handshaking},
    CommandRow{"FlPPSUp",                 "FLP+",  "",     "",  None,    Handshaking},
    CommandRow{"FlPPSDown",               "FLP-",  "",     "",  None,    Handshaking},
    CommandRow{"FlPPSOneUp",              "FLPU",  "FLP+", "",  None,    Handshaking},
    CommandRow{"FlPPSOneDown",            "FLPD",  "FLP-", "",  None,    Handshaking},
    CommandRow{"FlPPSReq",                "FLP?",  "",     "",  None,    Handshaking},
    CommandRow{"SetFlPPS",                "FLP",   "",     "",  Digits2, Handshaking},
    CommandRow{"FlABSToggle",             "FLA",   "",     "",  None,    Never},
    CommandRow{"SetFlABS",                "FLA",   "",     "",  Switch,  Caller},
    CommandRow{"FlABSReq",                "FLA?",  "",     "",  None,    Handshaking},
    CommandRow{"FlMagnification",         "FLM",   "",     "",  Plain,   Caller},
    CommandRow{"FlMAUp",                  "FLMA+", "",     "",  None,    Never},
    CommandRow{"FlMADown",                "FLMA-", "",     "",  None,    Never},
    CommandRow{"FlMAOneUp",               "FLMAU", "FLMA+","",  None,    Handshaking},
    CommandRow{"FlMAOneDown",             "FLMAD", "FLMA-","",  None,    Handshaking},
    CommandRow{"FlHighDose",              "FLHD",  "",     "",  None,    Caller},
    CommandRow{"SetFlHighDose",           "FLHD",  "",     "",  Switch,  Caller},
    CommandRow{"FlAlarmReset",            "FLAR",  "",     "",  None,    Caller},
    CommandRow{"FlContrastUp",            "FLC+",  "",     "",  None,    Handshaking},
    CommandRow{"FlContrastDown",          "FLC-",  "",     "",  None,    Handshaking},
    CommandRow{"FlContrast",              "FLC",   "",     "",  Signed,  Caller},
    CommandRow{"FlKVPTracking",           "KVT",   "",     "",  Plain,   Caller},
    // Configuration and calibration
    CommandRow{"Configuration",           "CF",    "",     "",  Switch,  Caller},
    CommandRow{"DefaultConfiguration",    "CFD",   "",     "",  None,    Caller},
    CommandRow{"ConfTubeUp",              "TU+",   "",     "",  None,    Handshaking},
    CommandRow{"ConfTubeDown",            "TU-",   "",     "",  None,    Handshaking},
    CommandRow{"ConfWorkingModeUp",       "WM+",   "",     "",  None,    Handshaking},
    CommandRow{"ConfWorkingModeDown",     "WM-",   "",     "",  None,    Handshaking},
    CommandRow{"ConfICUp",                "IC+",   "",     "",  None,    Handshaking},
    CommandRow{"ConfICDown",              "IC-",   "",     "",  None,    Handshaking},
    CommandRow{"ConfKVTrackingUp",        "KVT+",  "",     "",  None,    Handshaking},
    CommandRow{"ConfKVTrackingDown",      "KVT-",  "",     "",  None,    Handshaking},
    CommandRow{"Workstation",             "WS",    "",     "",  Plain,   Caller},
    CommandRow{"calibration",             "CA",    "",     "",  Switch,  Caller, ModeChange},
    CommandRow{"Autocalibration",         "CAU",   "",     "",  Switch,  Caller, Urgency::Autocalibration},
    CommandRow{"AutocalRetry",            "CAR",   "",     "",  Switch,  Handshaking},
    CommandRow{"CalibrationValueUp",      "C+",    "",     "",  None,    Never},
    CommandRow{"CalibrationValueUpUp",    "C++",   "",     "",  None,    Never},
    CommandRow{"CalibrationValueDown",    "C-",    "",     "",  None,    Never},
    CommandRow{"CalibrationValueDownDown","C--",   "",     "",  None,    Never},
    CommandRow{"CalibrationValueStore",   "CS",    "",     "",  None,    Caller},
    CommandRow{"CalibrationValueRead",    "CR",    "",     "",  None,    Handshaking},
    CommandRow{"CalibrationSetFocus",     "CO",    "",     "",  None,    Caller},
    // Positioner
    CommandRow{"URSEnterServiceMode",     "URS",   "",    "SO", Plain,   Never},
    CommandRow{"URSCalibrationGet",       "URS",   "",    "CG", None,    Never},
    CommandRow{"URSADCRequest",           "URS",   "",    "RQ", None,    Never},
    CommandRow{"URSCalibrationSet",       "URS",   "",    "CD", Text,    Never},
    CommandRow{"URSSetNewRemoteSID",      "URS",   "",    "CF", Digits4, Never},
    CommandRow{"URSGetStoredSID",         "URS",   "",    "SG", None,    Never},
    // Phase, errors, dose, counters, versions
    CommandRow{"SoftwareExposure",        "XR",    "",     "",  Switch,  Never},
    CommandRow{"RatingPercentage",        "RP?",   "",     "",  None,    Handshaking},
    CommandRow{"DosemeterReset",          "DOR",   "",     "",  None,    Caller},
    CommandRow{"LastExposureDose",        "DO?",   "",     "",  None,    Handshaking},
    CommandRow{"AccumulatedDose",         "DOA?",  "",     "",  None,    Handshaking},
    CommandRow{"ReadExposureCounter",     "TC",    "",     "",  Plain,   Caller},
    CommandRow{"ResetExposureCounter",    "TCR",   "",     "",  Plain,   Caller},
    CommandRow{"GeneratorSoftwareVersionRequest", "VR?", "", "", None,   Handshaking},
    CommandRow{"GetLastExposureParameters", "LE",  "",     "",  None,    Caller},
};
// clang-format on

} // namespace commands

using commands::kCommands;

static_assert(std::ranges::all_of(kCommands, [](const CommandRow& row) {
    return isMnemonic(row.mnemonic) && (row.plain.empty() || isMnemonic(row.plain));
}));

/// A row of the table. command() names it.
struct CommandId {
    std::uint8_t index;
    [[nodiscard]] constexpr const CommandRow& row() const { return kCommands[index]; }
};

/// The command of that name. A name that is not in the table does not compile.
consteval CommandId command(std::string_view name) {
    const auto row = std::ranges::find(kCommands, name, &CommandRow::name);
    return {static_cast<std::uint8_t>(row == kCommands.end() ? throw "no such command"
                                                             : row - kCommands.begin())};
}

/// A command that takes arguments of these types. Another command does not compile.
template <typename... Arguments> class CommandFor {
public:
    consteval CommandFor(CommandId id)
        : id_(takes(id.row()) ? id : throw "the command takes other arguments") {}
    /// The same for a template's parameter, with which clang 14 cannot do the above.
    template <CommandId kId> [[nodiscard]] static constexpr CommandFor of() {
        static_assert(takes(kId.row()), "the command takes other arguments");
        return CommandFor(kId, Checked{});
    }
    [[nodiscard]] constexpr const CommandRow& row() const { return id_.row(); }

private:
    struct Checked {};
    constexpr CommandFor(CommandId id, Checked /*checked*/) : id_(id) {}

    enum class Sort : std::uint8_t { Flag, Number, Text };
    template <typename T> static constexpr Sort sortOf() {
        static_assert(std::integral<T> || std::same_as<T, std::string>);
        return std::same_as<T, bool> ? Sort::Flag : std::integral<T> ? Sort::Number : Sort::Text;
    }
    /// The value, if the form has one, then whether to ask for an acknowledgement, where the caller may.
    static constexpr bool takes(const CommandRow& row) {
        constexpr std::array<Sort, sizeof...(Arguments)> kGiven{sortOf<Arguments>()...};
        const std::size_t values = row.value == ValueForm::None ? 0 : 1;
        const Sort value = row.value == ValueForm::Switch ? Sort::Flag
                           : row.value == ValueForm::Text ? Sort::Text
                                                          : Sort::Number;
        const std::size_t most = values + (row.acknowledge == AckRule::Caller ? 1 : 0);
        return kGiven.size() >= values && kGiven.size() <= most && (values == 0 || kGiven.front() == value) &&
               (kGiven.size() == values || kGiven.back() == Sort::Flag);
    }

    CommandId id_;
};

} // namespace quillon
