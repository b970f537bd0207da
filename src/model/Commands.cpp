#include "model/Commands.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string>

#include "base/Fault.h"
#include "base/Numbers.h"
#include "base/Text.h"
#include "link/OutboundTable.h"

namespace quillon {

namespace {

using enum AckRule;
using enum ValueForm;
using enum Urgency;

constexpr std::int16_t kAutocalibrationTimeout = 1000;

// clang-format off
constexpr std::array kCommands{
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

std::string inForm(ValueForm form, const Value& value) {
    switch (form) {
    case None:
        return {};
    case Plain:
        return decimalText(valueTo<std::int32_t>(value));
    case Next:
        return decimalText(valueTo<std::int16_t>(value) + 1);
    case Digits2:
        return fixedDigits(valueTo<std::int16_t>(value), 2);
    case Digits3:
        return fixedDigits(valueTo<std::int16_t>(value), 3);
    case Digits4:
        return fixedDigits(valueTo<std::int16_t>(value), 4);
    case Signed:
        return signedText(valueTo<std::int32_t>(value));
    case Switch:
        return valueTo<bool>(value) ? "1" : "0";
    case Text:
        return valueTo<std::string>(value);
    }
    return {};
}

/// As far as a time-out goes.
std::int16_t twice(std::int16_t interval) {
    using Limits = std::numeric_limits<std::int16_t>;
    return static_cast<std::int16_t>(std::clamp<int>(interval * 2, Limits::min(), Limits::max()));
}

/// A value that can't be converted as it has to be is the caller's fault.
template <typename Conversion> auto accepted(Conversion convert) {
    try {
        return convert();
    } catch (const Fault&) {
        throw Fault(Fault::kArgumentsRefused);
    }
}

} // namespace

Commands::Commands(const LinkState& state, SendPath& send, Operations& operations)
    : state_(state), send_(send) {
    for (const CommandRow& row : kCommands) {
        operations.addAny(row.name, [this, &row](std::span<const Value> arguments) -> std::optional<Value> {
            this->send(row, arguments);
            return std::nullopt;
        });
    }
}

std::span<const CommandRow> Commands::table() {
    return kCommands;
}

void Commands::send(std::string_view name, std::initializer_list<Value> arguments) const {
    const auto row = std::find_if(kCommands.begin(), kCommands.end(),
                                  [&](const CommandRow& each) { return equalsNoCase(each.name, name); });
    if (row == kCommands.end()) {
        throw Fault(Fault::kNotFound);
    }
    send(*row, std::span(arguments.begin(), arguments.size()));
}

void Commands::send(const CommandRow& row, std::span<const Value> arguments) const {
    const std::size_t values = row.value == None ? 0 : 1;
    const std::size_t most = values + (row.acknowledge == Caller ? 1 : 0);
    if (arguments.size() < values || arguments.size() > most) {
        throw Fault(Fault::kArgumentsRefused);
    }
    const bool asked =
        arguments.size() > values && accepted([&] { return valueTo<bool>(arguments[values]); });
    const bool acknowledge = row.acknowledge != Never && (state_.Handshaking || asked);
    const std::string_view mnemonic = state_.Handshaking || row.plain.empty() ? row.mnemonic : row.plain;

    std::string message(mnemonic);
    message.append(row.suffix);
    if (values > 0) {
        message.append(accepted([&] { return inForm(row.value, arguments[0]); }));
    }
    const std::int16_t phases = phasesOf(mnemonic);
    switch (row.urgency) {
    case Normal:
        send_.SendMessage(message, phases, acknowledge);
        break;
    case ModeChange:
        send_.SendMessage(message, phases, acknowledge, twice(state_.RetriesInterval));
        break;
    case Urgency::Autocalibration:
        send_.SendMessage(message, phases, acknowledge, kAutocalibrationTimeout, true);
        break;
    }
}

} // namespace quillon
