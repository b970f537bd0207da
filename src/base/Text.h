#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillon {

/// Blanks are spaces: a message's other white space is text.
[[nodiscard]] std::string_view trimLeft(std::string_view text);
[[nodiscard]] std::string_view trimRight(std::string_view text);
[[nodiscard]] std::string_view trim(std::string_view text);

/// Pieces between the marks; always at least one piece, which may be empty.
[[nodiscard]] std::vector<std::string_view> split(std::string_view text, std::string_view mark);

/// The text behind the mark that editors put in front of UTF-8.
[[nodiscard]] std::string_view withoutByteOrderMark(std::string_view text);

/// The text between two quotation marks; none inside it is marked.
[[nodiscard]] std::string inQuotes(std::string_view text);

/// The text with all of a character taken out.
[[nodiscard]] std::string without(std::string_view text, char taken);

// Names and mnemonics are compared without regard to case. Only ASCII letters have case here, so a byte of
// the code page never changes its meaning with the machine's language.

[[nodiscard]] constexpr char lowerCase(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}
[[nodiscard]] std::string lowerCase(std::string_view text);
[[nodiscard]] bool equalsNoCase(std::string_view a, std::string_view b);
[[nodiscard]] bool containsNoCase(std::string_view text, std::string_view part);

/// Order and hash for maps whose keys have no case; both take string_view without a copy.
struct NoCaseLess {
    using is_transparent = void;
    [[nodiscard]] bool operator()(std::string_view a, std::string_view b) const;
};
struct NoCaseHash {
    using is_transparent = void;
    [[nodiscard]] std::size_t operator()(std::string_view text) const;
};
struct NoCaseEqual {
    using is_transparent = void;
    [[nodiscard]] bool operator()(std::string_view a, std::string_view b) const { return equalsNoCase(a, b); }
};

} // namespace quillon
