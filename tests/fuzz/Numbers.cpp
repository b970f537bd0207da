// Numbers: every conversion of one text, and what must hold between them.

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

#include "base/Fault.h"
#include "base/Numbers.h"

namespace {

using namespace quillon;

void require(bool held) {
    if (!held) {
        std::abort();
    }
}

/// The value; without one, the fault that kept it from being made is the one that the text deserves.
template <typename Work> auto attempt(bool numeric, Work&& work) -> std::optional<decltype(work())> {
    try {
        return work();
    } catch (const Fault& caught) {
        require(caught.number() == (numeric ? Fault::kOverflow : Fault::kTypeMismatch));
        return std::nullopt;
    }
}

void checkNumber(std::string_view text) {
    const bool numeric = isNumeric(text);
    const auto value = attempt(numeric, [&] { return toDouble(text); });
    require(!value || (numeric && std::isfinite(*value)));
    const auto small = attempt(numeric, [&] { return toInt16(text); });
    require(!small || (numeric && std::abs(*value - *small) <= 0.5));
    const auto large = attempt(numeric, [&] { return toInt32(text); });
    require(!large || (numeric && std::abs(*value - *large) <= 0.5));
    require(!small || (large && *small == *large));
    const auto flag = attempt(numeric, [&] { return toBoolean(text); });
    require(!flag || !value || *flag == (*value != 0));
    if (value) {
        // Fifteen digits are shown, which is all that a person could have written.
        const auto again = attempt(true, [&] { return toDouble(decimalText(*value)); });
        require(again ? std::abs(*again - *value) <= std::abs(*value) * 1e-14 : std::abs(*value) > 1e307);
        const std::string sign = signedText(*value);
        require(!sign.empty() && (sign[0] == ' ' || sign[0] == '-'));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kLongest = 512;
    if (size > kLongest) {
        return -1;
    }
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    checkNumber(text);
    const auto leading = attempt(true, [&] { return leadingNumber(text); });
    require(!leading || std::isfinite(*leading));
    const auto digits = attempt(true, [&] { return fixedDigits(text, 3); });
    require(!digits || !isNumeric(text) || digits->size() >= 3);
    const auto decimal = attempt(true, [&] { return oneDecimal(text); });
    require(!decimal || (isNumeric(text) ? decimal->find('.') != std::string::npos : *decimal == text));
    return 0;
}
