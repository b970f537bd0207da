#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quillon {

// Numbers and text, as they cross the wire, the files and the screen. Every wire format is built from these.
// The decimal sign is a point, whatever the user's country writes.

/// True when the whole text reads as a decimal number: blanks around it, a sign, a decimal point and an
/// exponent allowed. Empty text is no number.
[[nodiscard]] bool isNumeric(std::string_view text);

/// The decimal value of a numeric text. Fault 13 when it is none, 6 when it exceeds a double.
[[nodiscard]] double toDouble(std::string_view text);

/// Nearest integer, ties to even. Fault 6 when it does not fit, 13 when the text is no number.
[[nodiscard]] std::int16_t toInt16(double value);
[[nodiscard]] std::int16_t toInt16(std::string_view text);
[[nodiscard]] std::int32_t toInt32(double value);
[[nodiscard]] std::int32_t toInt32(std::string_view text);

/// 0 is False, any other number True. Fault 13 when the text is no number.
[[nodiscard]] bool toBoolean(std::string_view text);

/// The number a text begins with, blanks before it skipped; 0 when it begins with none.
[[nodiscard]] double leadingNumber(std::string_view text);

/// Plain decimal text, as a person would write it: 80, -3, 12.5, never 80.000000.
[[nodiscard]] std::string decimalText(double value);
[[nodiscard]] std::string decimalText(std::int32_t value);

/// A blank or a minus, then the digits, with no zero before the point: " 80", " .5", "-.5".
[[nodiscard]] std::string signedText(double value);

/// That many decimals, rounded: (2.5, 2) is "2.50".
[[nodiscard]] std::string fixedDecimals(double value, int decimals);

/// Whole digits, at least `width` of them, zero-padded, rounded with ties to even: (5, 3) is "005".
/// The text form passes a text that is no number on unchanged.
[[nodiscard]] std::string fixedDigits(double value, int width);
[[nodiscard]] std::string fixedDigits(std::string_view text, int width);

/// One decimal: "1.23" gives "1.2". A text that is no number passes unchanged.
[[nodiscard]] std::string oneDecimal(std::string_view text);

} // namespace quillon
