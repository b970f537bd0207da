#pragma once

#include "sim/Gauges.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace simulator {

/// What a lesson can ask about the machine, by name; every value is a number.
using Facts = std::map<std::string, double, std::less<>>;

[[nodiscard]] Facts factsOf(const Gauges& gauges);

/// A number, or the number that a word such as "calibration", "on" or "small" stands for.
[[nodiscard]] std::optional<double> valueNamed(std::string_view word);

} // namespace simulator
