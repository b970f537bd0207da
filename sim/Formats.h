#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace simulator {

/// The number a whole text is, blanks around it allowed; nothing if it is none or none that can be held.
[[nodiscard]] std::optional<double> numberIn(std::string_view text);

/// At most that many decimals, and no needless zeros: 80, 12.5, 0.04.
[[nodiscard]] std::string shortNumber(double value, int decimals);

/// A time in ms. The display has four places, so ten seconds stand as four zeros.
[[nodiscard]] std::string millisecondsText(double ms);

/// mAs: below 100 always with a point, above never.
[[nodiscard]] std::string milliampSecondsText(double mas);

/// Three digits, a sign and two digits: 34.5 is 345-01.
[[nodiscard]] std::string doseText(double dose);

/// The values measured in an exposure: four places mA, four mAs, five ms.
[[nodiscard]] std::string postDisplayText(double ma, double mas, double ms);

/// A reading of a converter, four digits within its 12 bits.
[[nodiscard]] std::string converterText(int reading);

} // namespace simulator
