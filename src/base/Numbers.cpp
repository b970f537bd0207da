#include "base/Numbers.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "base/Fault.h"
#include "base/Text.h"

namespace quillon {

namespace {

constexpr int kDigits = 15; // all that a person could have written

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Length of the decimal number that `text` begins with, sign included; 0 when it begins with none.
std::size_t numberLength(std::string_view text) {
    std::size_t at = 0;
    const auto digits = [&] {
        const std::size_t first = at;
        while (at < text.size() && isDigit(text[at])) {
            ++at;
        }
        return at - first;
    };
    if (at < text.size() && (text[at] == '+' || text[at] == '-')) {
        ++at;
    }
    std::size_t mantissa = digits();
    if (at < text.size() && text[at] == '.') {
        ++at;
        mantissa += digits();
    }
    if (mantissa == 0) {
        return 0;
    }
    const std::size_t end = at;
    if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
        ++at;
        if (at < text.size() && (text[at] == '+' || text[at] == '-')) {
            ++at;
        }
        if (digits() > 0) {
            return at;
        }
    }
    return end;
}

double parse(std::string_view number) {
    if (number.starts_with('+')) {
        number.remove_prefix(1);
    }
    double value = 0;
    const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
    if (result.ec == std::errc::result_out_of_range) {
        // Both ends of the range land here; a number too small to tell from nothing is 0.
        const auto exponent = number.find_first_of("eE");
        if (exponent != std::string_view::npos && number.substr(exponent + 1).starts_with('-')) {
            return 0;
        }
        throw Fault(Fault::kOverflow);
    }
    return value;
}

template <typename Integer> Integer toInteger(double value) {
    const double nearest = std::nearbyint(value);
    // Written so that a NaN fails as well.
    if (!(nearest >= static_cast<double>(std::numeric_limits<Integer>::min()) &&
          nearest <= static_cast<double>(std::numeric_limits<Integer>::max()))) {
        throw Fault(Fault::kOverflow);
    }
    return static_cast<Integer>(nearest);
}

/// The C library would print with the decimal sign of the user's country, which no generator understands.
std::string printed(double value, std::chars_format format, int precision) {
    char buffer[400];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value, format, precision);
    std::string text(buffer, result.ptr);
    for (char& c : text) {
        if (c >= 'a' && c <= 'z') {
            c = static_cast<char>(c - 'a' + 'A');
        }
    }
    return text;
}

} // namespace

bool isNumeric(std::string_view text) {
    const std::string_view number = trim(text);
    return !number.empty() && numberLength(number) == number.size();
}

double toDouble(std::string_view text) {
    if (!isNumeric(text)) {
        throw Fault(Fault::kTypeMismatch);
    }
    return parse(trim(text));
}

std::int16_t toInt16(double value) {
    return toInteger<std::int16_t>(value);
}

std::int16_t toInt16(std::string_view text) {
    return toInt16(toDouble(text));
}

std::int32_t toInt32(double value) {
    return toInteger<std::int32_t>(value);
}

std::int32_t toInt32(std::string_view text) {
    return toInt32(toDouble(text));
}

bool toBoolean(std::string_view text) {
    return toDouble(text) != 0;
}

double leadingNumber(std::string_view text) {
    const std::string_view start = trimLeft(text);
    const std::size_t length = numberLength(start);
    return length == 0 ? 0 : parse(start.substr(0, length));
}

std::string decimalText(double value) {
    return printed(value == 0 ? 0.0 : value, std::chars_format::general, kDigits);
}

std::string decimalText(std::int32_t value) {
    return std::to_string(value);
}

std::string signedText(double value) {
    std::string digits = decimalText(std::fabs(value));
    if (digits.starts_with("0.")) {
        digits.erase(0, 1);
    }
    return (value < 0 ? '-' : ' ') + digits;
}

std::string fixedDecimals(double value, int decimals) {
    return printed(value, std::chars_format::fixed, decimals);
}

std::string fixedDigits(double value, int width) {
    const double nearest = std::nearbyint(value);
    std::string digits = fixedDecimals(std::fabs(nearest), 0);
    if (const auto wanted = static_cast<std::size_t>(width); digits.size() < wanted) {
        digits.insert(0, wanted - digits.size(), '0');
    }
    return nearest < 0 ? '-' + digits : digits;
}

std::string fixedDigits(std::string_view text, int width) {
    return isNumeric(text) ? fixedDigits(toDouble(text), width) : std::string(text);
}

std::string oneDecimal(std::string_view text) {
    if (!isNumeric(text)) {
        return std::string(text);
    }
    const double value = toDouble(text);
    // Ties are told on the decimal digits that were written, not on their nearest binary fraction.
    const double tenths = std::fabs(value) < 1e14 ? std::nearbyint(value * 10) / 10 : value;
    return fixedDecimals(tenths == 0 ? 0.0 : tenths, 1);
}

} // namespace quillon
