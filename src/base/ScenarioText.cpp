#include "base/ScenarioText.h"

#include <array>
#include <cstdio>

namespace quillon {

std::string scenarioText(std::string_view bytes) {
    constexpr std::string_view kPlain = "\r\n\t\\\"";
    constexpr std::string_view kLetters = "rnt\\\"";
    std::string text = "\"";
    for (const char c : bytes) {
        if (const auto escape = kPlain.find(c); escape != std::string_view::npos) {
            text += {'\\', kLetters[escape]};
        } else if (c >= 0x20 && c <= 0x7E) {
            text += c;
        } else {
            std::array<char, 5> hex{};
            std::snprintf(hex.data(), hex.size(), "\\x%02X", static_cast<unsigned>(c) & 0xFFU);
            text += hex.data();
        }
    }
    return text + '"';
}

} // namespace quillon
