#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillon {

/// Texts are one byte a character inside, in Windows-1252, as on the wire; files and the keyboard hold UTF-8.
/// Their character as Unicode has it.
[[nodiscard]] char16_t unicodeOf(char byte);
/// Nothing for a character that the code page lacks.
[[nodiscard]] std::optional<char> codePageByte(char32_t character);
/// Nothing when the text is no UTF-8 or holds a character that the code page lacks.
[[nodiscard]] std::optional<std::string> codePageFromUtf8(std::string_view text);

} // namespace quillon
