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

/// The value, or the number of the fault that kept it from being made.
template <typename Work> auto attempt(Work&& work, int& fault) -> std::optional<decltype(work())> {
    fault = 0;
    try {
        return work();
    } catch (const Fault& caught) {
        fault = caught.number();
        return std::nullopt;
    }
}

void checkNumber(std::string_view text) {
    int fault = 0;
    const bool numeric = isNumeric(text);
    const auto value = attempt([&] { return toDouble(text); }, fault);
    require(value ? numeric && std::isfinite(*value)
                  : fault == (numeric ? Fault::kOverflow : Fault::kTypeMismatch));
    const auto small = attempt([&] { return toInt16(text); }, fault);
    require(small ? numeric && std::abs(*value - *small) <= 0.5
                  : fault == (numeric ? Fault::kOverflow : Fault::kTypeMismatch));
    const auto large = attempt([&] { return toInt32(text); }, fault);
    require(large ? numeric && std::abs(*value - *large) <= 0.5
                  : fault == (numeric ? Fault::kOverflow : Fault::kTypeMismatch));
    require(!small || (large && *small == *large));
    const auto flag = attempt([&] { return toBoolean(text); }, fault);
    require(!flag || !value || *flag == (*value != 0));
    if (value) {
        // Fifteen digits are shown, which is all that a person could have written.
        const auto again = attempt([&] { return toDouble(decimalText(*value)); }, fault);
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
    int fault = 0;
    const auto leading = attempt([&] { return leadingNumber(text); }, fault);
    require(leading ? std::isfinite(*leading) : fault == Fault::kOverflow);
    const auto digits = attempt([&] { return fixedDigits(text, 3); }, fault);
    require(digits ? !isNumeric(text) || digits->size() >= 3 : fault == Fault::kOverflow);
    const auto decimal = attempt([&] { return oneDecimal(text); }, fault);
    require(decimal ? (isNumeric(text) ? decimal->find('.') != std::string::npos : *decimal == text)
                    : fault == Fault::kOverflow);
    return 0;
}
