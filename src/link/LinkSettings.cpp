#include "link/LinkSettings.h"

#include <array>
#include <type_traits>
#include <utility>

#include "base/Fault.h"
#include "base/Numbers.h"
#include "base/Text.h"
#include "runtime/ProfileFile.h"

namespace quillon {

namespace {

constexpr std::string_view kSection = "TorvaneSerial";
constexpr std::string_view kParityLetters = "noe";
constexpr std::size_t kProfileBuffer = 255;

/// The number, or the default when it is none or does not fit.
template <typename Integer> Integer numberOr(std::string_view text, Integer otherwise) {
    try {
        if constexpr (sizeof(Integer) == sizeof(std::int16_t)) {
            return toInt16(text);
        } else {
            return toInt32(text);
        }
    } catch (const Fault&) {
        return otherwise;
    }
}

bool booleanOr(std::string_view text, bool otherwise) {
    if (equalsNoCase(trim(text), "True") || equalsNoCase(trim(text), "False")) {
        return equalsNoCase(trim(text), "True");
    }
    try {
        return toBoolean(text);
    } catch (const Fault&) {
        return otherwise;
    }
}

/// A setting: its key in the user store, its default there and its list on the Comm page, if it has one.
struct SettingRow {
    std::string_view key;
    std::string_view otherwise;
    PanelControl list;
    std::string (*text)(const LinkSettings& settings);
    /// A number keeps its value when the text is none.
    void (*take)(LinkSettings& settings, std::string_view text);
};

template <auto kMember>
constexpr SettingRow setting(std::string_view key, std::string_view otherwise, PanelControl list = {}) {
    using Type = std::remove_reference_t<decltype(std::declval<LinkSettings&>().*kMember)>;
    if constexpr (std::is_same_v<Type, std::string>) {
        return {key, otherwise, list, [](const LinkSettings& settings) { return settings.*kMember; },
                [](LinkSettings& settings, std::string_view text) { settings.*kMember = text; }};
    } else {
        return {key, otherwise, list,
                [](const LinkSettings& settings) { return decimalText(settings.*kMember); },
                [](LinkSettings& settings, std::string_view text) {
                    settings.*kMember = numberOr(text, settings.*kMember);
                }};
    }
}

using S = LinkSettings;

// clang-format off
constexpr std::array kSettings{
    setting<&S::baudrate>     ("Baudrate", "19200", "cmbCommBaudRate"),
    setting<&S::parity>       ("Parity",   "n",     "cmbCommParity"),
    setting<&S::StopBits>     ("StopBits", "1",     "cmbCommStopBits"),
    setting<&S::DataBits>     ("DataBits", "8",     "cmbCommDataBits"),
    setting<&S::port>         ("Port",     "1",     "cmbCommPort"),
    setting<&S::GeneratorType>("RadRF",    "0"),
};
// clang-format on

} // namespace

LinkSettings::LinkSettings(PanelHost& panel, UserStore& store) : panel_(panel), store_(store) {
    for (const SettingRow& row : kSettings) {
        if (!row.list.empty()) {
            // A click writes its own setting alone: the other lists may show what was set before.
            Control& list = panel_[row.list];
            list.on.click = [this, &list, &row] { row.take(*this, list.text()); };
        }
    }
}

std::int16_t LinkSettings::Parity() const {
    const auto at = parity.size() == 1 ? kParityLetters.find(parity.front()) : std::string_view::npos;
    return at == std::string_view::npos ? std::int16_t{0} : static_cast<std::int16_t>(at);
}

void LinkSettings::setParity(std::int16_t number) {
    if (number >= 0 && number <= 2) {
        parity.assign(1, kParityLetters[static_cast<std::size_t>(number)]);
    }
}

std::string LinkSettings::portSettings() const {
    return decimalText(baudrate) + "," + parity + "," + decimalText(DataBits) + "," + decimalText(StopBits);
}

void LinkSettings::ReadConfiguration() {
    for (const SettingRow& row : kSettings) {
        row.take(*this, row.otherwise);
        if (const auto stored = store_.read(RegistryKey, kSection, row.key)) {
            row.take(*this, *stored);
        }
    }
    show();
}

void LinkSettings::SaveConfiguration() const {
    for (const SettingRow& row : kSettings) {
        store_.write(RegistryKey, kSection, row.key, row.text(*this));
    }
}

void LinkSettings::SaveDefaultConfiguration() {
    store_.removeSection(RegistryKey, kSection);
    ReadConfiguration();
    SaveConfiguration();
}

void LinkSettings::show() {
    for (const SettingRow& row : kSettings) {
        if (!row.list.empty()) {
            panel_[row.list].setText(row.text(*this));
        }
    }
}

void LinkSettings::setListsEnabled(bool enabled) {
    for (const SettingRow& row : kSettings) {
        if (!row.list.empty()) {
            panel_[row.list].setEnabled(enabled);
        }
    }
}

InstallationFacts InstallationFacts::read(const Folder& folder) {
    const ProfileFile file(folder.read("temp.ini", kProfileFileLimit).value_or(std::string{}));
    const auto value = [&file](std::string_view section, std::string_view key, std::string_view otherwise) {
        return file.read(section, key, otherwise, kProfileBuffer);
    };
    InstallationFacts facts;
    facts.techniqueMode = numberOr(value("TM", "TM", "4"), facts.techniqueMode);
    facts.ThirdTube = booleanOr(value("ThirdTube", "ThirdTube", "0"), false);
    facts.SolapeFocos = booleanOr(value("SolapeFocos", "SolapeFocos", "0"), false);
    facts.AutocalibrationRetry = booleanOr(value("AutocalRetry", "AutocalRetry", "0"), false);
    for (std::size_t i = 0; i < kExtendedPositions; ++i) {
        const std::string key = "E" + fixedDigits(static_cast<double>(i + 1), 2);
        facts.extended[i] = value("Extended", key, "0");
    }
    return facts;
}

} // namespace quillon
