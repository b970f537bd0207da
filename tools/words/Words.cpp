#include "tools/words/Words.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/Numbers.h"
#include "base/Phase.h"
#include "tools/words/Meanings.h"

namespace quillon {

namespace {

constexpr std::array<std::string_view, 13> kPhases{
    "initialization",  "normal operation", "preparation",     "exposure",     "fluoroscopy", "calibration",
    "error",           "configuration",    "autocalibration", "tube too hot", "confirm?",    "autocal error",
    "autocal finished"};
static_assert(kPhases.size() == kPhaseCount, "every phase has its words");
constexpr std::array<std::string_view, 8> kWorkingModes{"direct", "bucky 1", "bucky 2", "tomography",
                                                        "RF",     "DSI",     "CINE",    "DSA"};

template <std::size_t N>
std::string numbered(std::string_view value, const std::array<std::string_view, N>& names,
                     std::size_t first) {
    const double number = isNumeric(value) ? std::floor(toDouble(value)) : -1;
    const bool known = number >= static_cast<double>(first) && number < static_cast<double>(first + N);
    return std::string(value) +
           (known ? ", " + std::string(names.at(static_cast<std::size_t>(number) - first)) : std::string());
}

/// Three digits and an exponent, without the letter between them.
std::string doseText(std::string_view value) {
    const std::string number =
        std::string(value.substr(0, 3)) + "E" +
        std::string(value.substr(value.size() - std::min<std::size_t>(3, value.size())));
    return isNumeric(number) ? decimalText(toDouble(number)) : std::string(value);
}

std::string valueText(const Meaning& meaning, std::string_view value) {
    switch (meaning.value) {
    case ValueKind::Switch:
        return !isNumeric(value) ? std::string(value) : toDouble(value) == 0 ? "off" : "on";
    case ValueKind::Phase:
        return numbered(value, kPhases, 1);
    case ValueKind::WorkingMode:
        return numbered(value, kWorkingModes, 0);
    case ValueKind::Indexed:
        if (value.size() < 2) {
            return std::string(value);
        }
        return std::string(value.substr(0, 1)) + (value.substr(1) == "0" ? " off" : " on");
    case ValueKind::Tenths:
        return isNumeric(value) ? decimalText(toDouble(value) / 10) : std::string(value);
    case ValueKind::Dose:
        return doseText(value);
    case ValueKind::Plain:
        break;
    }
    return std::string(value);
}

} // namespace

const Meaning* meaningOf(Direction direction, std::string_view message) {
    for (std::size_t length = message.size(); length > 0; --length) {
        if (const Meaning* found = meanings::find(direction, message.substr(0, length))) {
            return found;
        }
    }
    return nullptr;
}

std::string explained(Direction direction, std::string_view message) {
    if (message.empty()) {
        return "empty message";
    }
    const Meaning* meaning = meaningOf(direction, message);
    if (meaning == nullptr) {
        return "unknown";
    }
    const std::string value = valueText(*meaning, message.substr(meaning->mnemonic.size()));
    std::string text(meaning->name);
    if (!value.empty()) {
        text += ": " + value;
        text += meaning->unit.empty() ? "" : " " + std::string(meaning->unit);
    }
    return text;
}

} // namespace quillon
