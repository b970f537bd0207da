#include "Utf8.h"

#include "base/CodePage.h"

namespace quillon {

namespace {

std::string encoded(char32_t character) {
    constexpr char32_t kOneByte = 0x80;
    constexpr char32_t kTwoBytes = 0x800;
    const auto tail = [character](int shift) {
        return static_cast<char>(0x80U | ((character >> shift) & 0x3FU));
    };
    if (character < kOneByte) {
        return {static_cast<char>(character)};
    }
    if (character < kTwoBytes) {
        return {static_cast<char>(0xC0U | (character >> 6)), tail(0)};
    }
    return {static_cast<char>(0xE0U | (character >> 12)), tail(6), tail(0)};
}

} // namespace

std::string utf8Of(std::string_view bytes) {
    std::string text;
    constexpr char16_t kReplacement = 0xFFFD;
    for (const char byte : bytes) {
        const char16_t character = unicodeOf(byte);
        const bool control = character < 0x20 || (character >= 0x7F && character < 0xA0);
        text += encoded(control ? kReplacement : character);
    }
    return text;
}

} // namespace quillon
