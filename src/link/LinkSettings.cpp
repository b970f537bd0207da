#include "link/LinkSettings.h"

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

} // namespace

LinkSettings::LinkSettings(PanelHost& panel, UserStore& store)
    : store_(store), lists_{panel["cmbCommPort"], panel["cmbCommBaudRate"], panel["cmbCommParity"],
                            panel["cmbCommDataBits"], panel["cmbCommStopBits"]} {
    // A click writes its own setting alone: the other lists may show what was set before.
    const auto writes = [](Control& list, std::int16_t& setting) {
        list.on.click = [&list, &setting] { setting = numberOr(list.text(), setting); };
    };
    writes(lists_.port, port);
    writes(lists_.baudRate, baudrate);
    writes(lists_.dataBits, DataBits);
    writes(lists_.stopBits, StopBits);
    lists_.parity.on.click = [this] { parity = lists_.parity.text(); };
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
    const auto stored = [this](std::string_view key, std::string_view otherwise) {
        return store_.read(RegistryKey, kSection, key).value_or(std::string(otherwise));
    };
    baudrate = numberOr<std::int16_t>(stored("Baudrate", "19200"), 19200);
    parity = stored("Parity", "n");
    StopBits = numberOr<std::int16_t>(stored("StopBits", "1"), 1);
    DataBits = numberOr<std::int16_t>(stored("DataBits", "8"), 8);
    port = numberOr<std::int16_t>(stored("Port", "1"), 1);
    GeneratorType = numberOr<std::int32_t>(stored("RadRF", "0"), 0);
    show();
}

void LinkSettings::SaveConfiguration() const {
    const auto keep = [this](std::string_view key, std::string_view value) {
        store_.write(RegistryKey, kSection, key, value);
    };
    keep("Baudrate", decimalText(baudrate));
    keep("Parity", parity);
    keep("StopBits", decimalText(StopBits));
    keep("DataBits", decimalText(DataBits));
    keep("Port", decimalText(port));
    keep("RadRF", decimalText(GeneratorType));
}

void LinkSettings::SaveDefaultConfiguration() {
    store_.removeSection(RegistryKey, kSection);
    ReadConfiguration();
    SaveConfiguration();
}

void LinkSettings::show() {
    lists_.port.setText(decimalText(port));
    lists_.baudRate.setText(decimalText(baudrate));
    lists_.parity.setText(parity);
    lists_.dataBits.setText(decimalText(DataBits));
    lists_.stopBits.setText(decimalText(StopBits));
}

void LinkSettings::setListsEnabled(bool enabled) {
    for (Control* list : lists_.all()) {
        list->setEnabled(enabled);
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
