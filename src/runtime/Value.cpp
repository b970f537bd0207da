#include "runtime/Value.h"

#include <cmath>
#include <limits>

#include "base/Fault.h"
#include "base/Numbers.h"

namespace quillon {

namespace {

double number(const Value& value) {
    if (const auto* flag = std::get_if<bool>(&value)) {
        return *flag ? -1 : 0;
    }
    if (const auto* whole = std::get_if<std::int32_t>(&value)) {
        return *whole;
    }
    if (const auto* real = std::get_if<double>(&value)) {
        return *real;
    }
    return toDouble(std::get<std::string>(value));
}

} // namespace

template <> bool valueTo(const Value& value) {
    return number(value) != 0;
}

template <> std::int16_t valueTo(const Value& value) {
    return toInt16(number(value));
}

template <> std::int32_t valueTo(const Value& value) {
    return toInt32(number(value));
}

template <> std::uint32_t valueTo(const Value& value) {
    const double bits = std::nearbyint(number(value));
    if (bits < 0) {
        return static_cast<std::uint32_t>(toInt32(bits));
    }
    // Written so that a NaN fails as well.
    if (!(bits <= std::numeric_limits<std::uint32_t>::max())) {
        throw Fault(Fault::kOverflow);
    }
    return static_cast<std::uint32_t>(bits);
}

template <> double valueTo(const Value& value) {
    return number(value);
}

template <> std::string valueTo(const Value& value) {
    if (const auto* text = std::get_if<std::string>(&value)) {
        return *text;
    }
    if (const auto* flag = std::get_if<bool>(&value)) {
        return *flag ? "True" : "False";
    }
    return decimalText(number(value));
}

} // namespace quillon
