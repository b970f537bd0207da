#include "sim/Formats.h"

#include "base/Numbers.h"
#include "base/Text.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace simulator {

namespace {

constexpr double kLongestMs = 10000;

/// At least `width` characters, filled up in front.
std::string places(double value, int decimals, std::size_t width = 0, char fill = ' ') {
    std::string text = quillon::fixedDecimals(value, decimals);
    if (text.size() < width) {
        text.insert(0, width - text.size(), fill);
    }
    return text;
}

} // namespace

std::optional<double> numberIn(std::string_view text) {
    text = quillon::trim(text);
    if (!quillon::isNumeric(text)) {
        return std::nullopt;
    }
    if (text.starts_with('+')) {
        text.remove_prefix(1);
    }
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc{} && end == text.data() + text.size() ? std::optional(value) : std::nullopt;
}

std::string shortNumber(double value, int decimals) {
    const double scale = std::pow(10.0, decimals);
    return quillon::decimalText(std::round(value * scale) / scale);
}

std::string millisecondsText(double ms) {
    return ms >= kLongestMs ? "0000" : shortNumber(ms, 1);
}

std::string milliampSecondsText(double mas) {
    if (mas >= 99.95) {
        return places(mas, 0);
    }
    return places(mas, mas < 1 ? 2 : 1);
}

std::string doseText(double dose) {
    int exponent = 0;
    double mantissa = dose;
    if (dose <= 0) {
        mantissa = 0;
    } else {
        exponent = static_cast<int>(std::floor(std::log10(dose))) - 2;
        mantissa = std::round(dose / std::pow(10.0, exponent));
        if (mantissa >= 1000) {
            mantissa /= 10;
            ++exponent;
        }
    }
    return quillon::fixedDigits(mantissa, 3) + (exponent < 0 ? "-" : "+") +
           quillon::fixedDigits(std::abs(exponent), 2);
}

std::string postDisplayText(double ma, double mas, double ms) {
    std::string text = quillon::fixedDigits(std::floor(ma), 4);
    if (mas < 0.9995) {
        text += places(mas, 3).substr(1);
    } else if (mas < 9.995) {
        text += places(mas, 2);
    } else {
        text += places(mas, mas < 99.95 ? 1 : 0, 4);
    }
    return text + places(ms, ms < 999.95 ? 1 : 0, 5, '0');
}

std::string converterText(int reading) {
    return quillon::fixedDigits(std::clamp(reading, 0, 4095), 4);
}

} // namespace simulator
