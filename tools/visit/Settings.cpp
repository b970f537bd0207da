#include "Settings.h"

#include <algorithm>
#include <array>
#include <optional>

#include "base/Numbers.h"
#include "base/Text.h"

namespace quillon {

namespace {

using State = GeneratorState;
using enum SettingKind;

// clang-format off
constexpr std::array kConfiguration{
    SettingRow{"TU"},
    SettingRow{"WM",  WorkingMode},
    SettingRow{"IC"},
    SettingRow{"WSI"},
    SettingRow{"WSF"},
    SettingRow{"WSS", Synchronisation},
    SettingRow{"KVT"},
    SettingRow{"FI0", Switch},
    SettingRow{"FI1", Switch},
    SettingRow{"FI2", Switch},
};

constexpr std::array kReady{
    SettingRow{"KV",   Number, "kV"},
    SettingRow{"MA",   Number, "mA"},
    SettingRow{"MS",   Number, "ms"},
    SettingRow{"MX",   Number, "mAs"},
    SettingRow{"TM"},
    SettingRow{"FO",   FocalSpot},
    SettingRow{"HCF",  Switch},
    SettingRow{"TA",   Switch},
    SettingRow{"FI0",  Switch},
    SettingRow{"FI1",  Switch},
    SettingRow{"FI2",  Switch},
    SettingRow{"FN"},
    SettingRow{"MD"},
    SettingRow{"FS"},
    SettingRow{"PH",   Switch},
    SettingRow{"DA",   Switch},
    SettingRow{"BR"},
    SettingRow{"RM",   Switch},
    SettingRow{"FLK",  Number, "kV"},
    SettingRow{"FLMA", Number, "mA"},
    SettingRow{"FLP",  Number, "/s"},
    SettingRow{"FLA",  Switch},
    SettingRow{"FLM"},
    SettingRow{"FLHD", Switch},
    SettingRow{"FLC"},
    SettingRow{"KVT"},
};
// clang-format on

using Text = std::optional<std::string>;

std::string flag(bool on) {
    return on ? "1" : "0";
}

/// One way to write a number; nothing where it is none.
Text number(std::string_view value) {
    return isNumeric(value) ? Text(decimalText(toDouble(value))) : Text();
}

/// What is told of one element of a choice: its number, when it is the one that is on.
Text chosen(std::string_view value) {
    const bool on = value.size() == 2 && value[0] >= '0' && value[0] <= '9' && value[1] == '1';
    return on ? Text(std::string(value.substr(0, 1))) : Text();
}

/// A message of normal operation, and what the mirror holds of it.
struct Source {
    std::string_view key;
    std::string_view name;
    Text (*read)(std::string_view value, const State& mirror);
};

Text focalSpot(std::string_view, const State& mirror) {
    if (mirror.m_SmallFocus == 1) {
        return "small";
    }
    return mirror.m_LargeFocus == 1 ? Text("large") : Text();
}

constexpr auto kKvp = [](std::string_view, const State& mirror) { return number(mirror.m_KVPDisplay); };
constexpr auto kMa = [](std::string_view, const State& mirror) { return number(mirror.m_MADisplay); };
constexpr auto kMs = [](std::string_view, const State& mirror) { return number(mirror.m_MSDisplay); };
constexpr auto kMas = [](std::string_view, const State& mirror) { return number(mirror.m_MASDisplay); };
constexpr auto kFluoroKvp = [](std::string_view, const State& mirror) {
    return number(mirror.m_FlKVPDisplay);
};
constexpr auto kPulses = [](std::string_view, const State& mirror) { return number(mirror.m_FlPPSDisplay); };

// clang-format off
constexpr std::array kSources{
    Source{"KV",    "KV",   kKvp},
    Source{"KVS",   "KV",   kKvp},
    Source{"MA",    "MA",   kMa},
    Source{"MAS",   "MA",   kMa},
    Source{"MS",    "MS",   kMs},
    Source{"MSS",   "MS",   kMs},
    Source{"MX",    "MX",   kMas},
    Source{"MXS",   "MX",   kMas},
    Source{"FO1",   "FO",   focalSpot},
    Source{"FO2",   "FO",   focalSpot},
    Source{"FLK",   "FLK",  kFluoroKvp},
    Source{"FLKS",  "FLK",  kFluoroKvp},
    Source{"FLP",   "FLP",  kPulses},
    Source{"FLPS",  "FLP",  kPulses},
    Source{"TM",    "TM",   [](std::string_view value, const State&) { return number(value); }},
    Source{"MD",    "MD",   [](std::string_view value, const State&) { return number(value); }},
    Source{"BR",    "BR",   [](std::string_view value, const State&) { return number(value); }},
    Source{"KVT",   "KVT",  [](std::string_view value, const State&) { return number(value); }},
    Source{"FN",    "FN",   [](std::string_view value, const State&) { return chosen(value); }},
    Source{"FS",    "FS",   [](std::string_view value, const State&) { return chosen(value); }},
    Source{"FLM",   "FLM",  [](std::string_view value, const State&) { return chosen(value); }},
    Source{"FLC",   "FLC",  [](std::string_view value, const State&) { return chosen(value); }},
    Source{"FLMA",  "FLMA", [](std::string_view, const State& mirror) { return Text(decimalText(mirror.m_FlMA)); }},
    Source{"FLMAS", "FLMA", [](std::string_view, const State& mirror) { return Text(decimalText(mirror.m_FlMA)); }},
    Source{"HCF",   "HCF",  [](std::string_view, const State& mirror) { return Text(flag(mirror.m_HCFmode)); }},
    Source{"TA",    "TA",   [](std::string_view, const State& mirror) { return Text(flag(mirror.m_TomoAuto)); }},
    Source{"PH",    "PH",   [](std::string_view, const State& mirror) { return Text(flag(mirror.m_Photomultiplier)); }},
    Source{"DA",    "DA",   [](std::string_view, const State& mirror) { return Text(flag(mirror.m_DigitalAEC)); }},
    Source{"RM",    "RM",   [](std::string_view, const State& mirror) { return Text(flag(mirror.m_Roadmapping)); }},
    Source{"FLA",   "FLA",  [](std::string_view, const State& mirror) { return Text(flag(mirror.m_FlABS)); }},
    Source{"FLHD",  "FLHD", [](std::string_view, const State& mirror) { return Text(flag(mirror.m_FlHighDose)); }},
};
// clang-format on

/// The measuring fields that a message has reported.
NamedValues fields(std::string_view key, std::string_view value, const State& mirror) {
    constexpr std::size_t kFields = 3;
    NamedValues found;
    for (std::size_t field = 0; field < kFields; ++field) {
        const bool one = equalsNoCase(key, "FI") && isNumeric(value) &&
                         value.substr(0, 1) == std::to_string(field) && value.size() > 1;
        const bool all = equalsNoCase(key, "AEC") && value.size() >= kFields;
        if (one || all) {
            found.emplace_back("FI" + std::to_string(field), flag(mirror.m_AECFields.at(field)));
        }
    }
    return found;
}

} // namespace

std::span<const SettingRow> configurationRows() {
    return kConfiguration;
}

std::span<const SettingRow> readyRows() {
    return kReady;
}

NamedValues configured(std::string_view key, std::string_view value, const GeneratorState& mirror) {
    const auto* const row = std::ranges::find_if(
        kConfiguration, [key](const SettingRow& each) { return equalsNoCase(each.name, key); });
    if (row == kConfiguration.end()) {
        return fields(key, value, mirror);
    }
    const Text told = number(value);
    return told ? NamedValues{{std::string(row->name), *told}} : NamedValues{};
}

NamedValues readySettings(std::string_view key, std::string_view value, const GeneratorState& mirror) {
    const auto* const source =
        std::ranges::find_if(kSources, [key](const Source& each) { return equalsNoCase(each.key, key); });
    if (source == kSources.end()) {
        return fields(key, value, mirror);
    }
    // What is no number was not taken.
    const Text told = isNumeric(value) ? source->read(value, mirror) : Text();
    return told ? NamedValues{{std::string(source->name), *told}} : NamedValues{};
}

} // namespace quillon
