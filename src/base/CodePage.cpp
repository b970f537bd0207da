#include "base/CodePage.h"

#include <algorithm>
#include <array>

namespace quillon {

namespace {

constexpr char32_t kBroken = 0xFFFFFFFF;
constexpr unsigned kUpperBlockStart = 0x80;
constexpr unsigned kUpperBlockEnd = 0xA0;

// What the code page has where Unicode has its second block of control characters. Five codes are unused and
// stand for themselves.
// clang-format off
constexpr std::array<char16_t, 32> kUpperBlock{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};
// clang-format on

/// Takes one character off the text. Everything that the code page holds has three bytes at most.
char32_t takeCharacter(std::string_view& text) {
    const auto byte = [&text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char first = byte(0);
    const std::size_t length = first < 0x80 ? 1 : first < 0xE0 ? 2 : 3;
    if ((first >= 0x80 && first < 0xC2) || first >= 0xF0 || text.size() < length) {
        return kBroken;
    }
    char32_t code = length == 1 ? first : first & (length == 2 ? 0x1FU : 0x0FU);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0U) != 0x80U) {
            return kBroken;
        }
        code = code << 6U | (byte(i) & 0x3FU);
    }
    text.remove_prefix(length);
    return length == 3 && code < 0x800 ? kBroken : code;
}

} // namespace

char16_t unicodeOf(char byte) {
    const auto code = static_cast<unsigned char>(byte);
    return code >= kUpperBlockStart && code < kUpperBlockEnd ? kUpperBlock[code - kUpperBlockStart] : code;
}

std::optional<char> codePageByte(char32_t character) {
    if (character < kUpperBlockStart || (character >= kUpperBlockEnd && character <= 0xFF)) {
        return static_cast<char>(character);
    }
    const auto* const place = std::find(kUpperBlock.begin(), kUpperBlock.end(), character);
    if (place == kUpperBlock.end()) {
        return std::nullopt;
    }
    return static_cast<char>(kUpperBlockStart + static_cast<unsigned>(place - kUpperBlock.begin()));
}

std::optional<std::string> codePageFromUtf8(std::string_view text) {
    std::string bytes;
    while (!text.empty()) {
        const std::optional<char> byte = codePageByte(takeCharacter(text));
        if (!byte) {
            return std::nullopt;
        }
        bytes += *byte;
    }
    return bytes;
}

} // namespace quillon
