#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "base/Phase.h"

namespace quillon {

/// A value as it is handed over by name: an argument, a property, an event's parameter.
using Value = std::variant<bool, std::int32_t, double, std::string>;

// Conversions follow the rules of the numbers module: Fault 13 for a text that is no number, 6 for a number
// that does not fit. A boolean counts as -1 and 0 where a number is wanted.

template <typename T> [[nodiscard]] T valueTo(const Value& value);
template <> [[nodiscard]] bool valueTo(const Value& value);
template <> [[nodiscard]] std::int16_t valueTo(const Value& value);
template <> [[nodiscard]] std::int32_t valueTo(const Value& value);
/// For colours: 32 bits, written without a sign or, as toValue() does, with one.
template <> [[nodiscard]] std::uint32_t valueTo(const Value& value);
template <> [[nodiscard]] double valueTo(const Value& value);
template <> [[nodiscard]] std::string valueTo(const Value& value);

[[nodiscard]] inline Value toValue(bool value) {
    return value;
}
[[nodiscard]] inline Value toValue(std::int16_t value) {
    return std::int32_t{value};
}
[[nodiscard]] inline Value toValue(std::int32_t value) {
    return value;
}
[[nodiscard]] inline Value toValue(std::uint32_t value) {
    return static_cast<std::int32_t>(value);
}
[[nodiscard]] inline Value toValue(Phase value) {
    return numberOf(value);
}
[[nodiscard]] inline Value toValue(double value) {
    return value;
}
[[nodiscard]] inline Value toValue(std::string value) {
    return value;
}

} // namespace quillon
