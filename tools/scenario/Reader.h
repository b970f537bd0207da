#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

#include "runtime/Value.h"

namespace quillon {

/// A scenario file can't be carried out as it stands.
class BadScript : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The bytes that a text of the file means: escapes resolved, quotes around it taken off, one byte a
/// character.
[[nodiscard]] std::string bytesOf(std::string_view text);

/// Length of the quoted text that `text` begins with, quotes included; 0 when it begins with none.
[[nodiscard]] std::size_t quotedLength(std::string_view text);

/// Blanks and tabs.
[[nodiscard]] std::string_view trimBlanks(std::string_view text);

/// A whole decimal number within the limits.
[[nodiscard]] std::int64_t wholeNumber(std::string_view text, std::int64_t least, std::int64_t most);

/// Takes one command line apart, word by word.
class Reader {
public:
    explicit Reader(std::string_view line) : rest_(trimBlanks(line)) {}

    [[nodiscard]] bool atEnd() const { return rest_.empty(); }
    /// The next word; a line without one is wrong.
    [[nodiscard]] std::string_view word();
    [[nodiscard]] std::int64_t whole(std::int64_t least, std::int64_t most) {
        return wholeNumber(word(), least, most);
    }
    /// The next argument: a number (0x and hexadecimal digits too), True, False, or a text in double quotes.
    [[nodiscard]] Value value();
    /// Everything that is left, as it stands.
    [[nodiscard]] std::string_view rest();
    /// Everything that is left, as the bytes it means.
    [[nodiscard]] std::string text() { return bytesOf(rest()); }
    /// Nothing may be left.
    void finish() const;

private:
    std::string_view take(std::size_t length);

    std::string_view rest_;
};

} // namespace quillon
