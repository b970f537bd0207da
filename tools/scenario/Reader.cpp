#include "Reader.h"

#include <charconv>
#include <limits>
#include <utility>

#include "base/CodePage.h"
#include "base/Fault.h"
#include "base/Numbers.h"
#include "base/Text.h"

namespace quillon {

namespace {

constexpr std::string_view kBlanks = " \t";

char hexByte(std::string_view digits) {
    unsigned value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    if (digits.size() != 2 || error != std::errc{} || end != digits.data() + digits.size()) {
        throw BadScript("\\x wants two hexadecimal digits");
    }
    return static_cast<char>(value);
}

/// A colour, say. Fault 13 when it is none of at most eight digits.
double hexNumber(std::string_view digits) {
    std::uint32_t value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    if (digits.empty() || error != std::errc{} || end != digits.data() + digits.size()) {
        throw Fault(Fault::kTypeMismatch);
    }
    return value;
}

/// Takes the escape off that `text` begins with, its backslash included.
char takeEscape(std::string_view& text) {
    const char kind = text.size() > 1 ? text[1] : '\0';
    std::size_t length = 2;
    char byte = kind;
    switch (kind) {
    case 'r':
        byte = '\r';
        break;
    case 'n':
        byte = '\n';
        break;
    case 't':
        byte = '\t';
        break;
    case '\\':
    case '"':
        break;
    case 'x':
        byte = hexByte(text.substr(2, 2));
        length = 4;
        break;
    default:
        throw BadScript("no such escape: " + std::string(text.substr(0, 2)));
    }
    text.remove_prefix(length);
    return byte;
}

} // namespace

std::string bytesOf(std::string_view text) {
    if (quotedLength(text) == text.size() && !text.empty()) {
        text = text.substr(1, text.size() - 2);
    }
    const auto converted = codePageFromUtf8(text);
    if (!converted) {
        throw BadScript("a character that a message can't hold, or no UTF-8: " + inQuotes(text));
    }
    std::string bytes;
    std::string_view rest = *converted;
    while (!rest.empty()) {
        if (rest.front() == '\\') {
            bytes += takeEscape(rest);
        } else {
            bytes += rest.front();
            rest.remove_prefix(1);
        }
    }
    return bytes;
}

std::size_t quotedLength(std::string_view text) {
    if (!text.starts_with('"')) {
        return 0;
    }
    for (std::size_t at = 1; at < text.size(); ++at) {
        if (text[at] == '\\') {
            ++at;
        } else if (text[at] == '"') {
            return at + 1;
        }
    }
    return 0;
}

std::string_view trimBlanks(std::string_view text) {
    const auto first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::int64_t wholeNumber(std::string_view text, std::int64_t least, std::int64_t most) {
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc{} || end != text.data() + text.size() || number < least || number > most) {
        throw BadScript("a whole number from " + std::to_string(least) + " to " + std::to_string(most) +
                        " is wanted, not " + inQuotes(text));
    }
    return number;
}

std::string_view Reader::take(std::size_t length) {
    const std::string_view taken = rest_.substr(0, length);
    rest_ = trimBlanks(rest_.substr(taken.size()));
    return taken;
}

std::string_view Reader::word() {
    if (atEnd()) {
        throw BadScript("something is missing at the end of the line");
    }
    return take(rest_.find_first_of(kBlanks));
}

Value Reader::value() {
    if (const std::size_t length = quotedLength(rest_); length > 0) {
        return bytesOf(take(length));
    }
    const std::string_view plain = word();
    if (equalsNoCase(plain, "True") || equalsNoCase(plain, "False")) {
        return equalsNoCase(plain, "True");
    }
    try {
        const double number = plain.starts_with("0x") ? hexNumber(plain.substr(2)) : toDouble(plain);
        const bool whole = number >= std::numeric_limits<std::int32_t>::min() &&
                           number <= std::numeric_limits<std::int32_t>::max() && toInt32(number) == number;
        return whole ? Value(toInt32(number)) : Value(number);
    } catch (const Fault&) {
        throw BadScript("a number, True, False or a text in double quotes is wanted, not " + inQuotes(plain));
    }
}

std::string_view Reader::rest() {
    return std::exchange(rest_, {});
}

void Reader::finish() const {
    if (!atEnd()) {
        throw BadScript("too much on the line: " + inQuotes(rest_));
    }
}

} // namespace quillon
