#pragma once

#include <algorithm>
#include <cmath>

#include <QColor>

namespace quillon {

/// How much light a colour gives to the eye, 0 to 1.
inline double luminance(const QColor& colour) {
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

/// 1 for a colour on itself, 21 for black on white.
inline double contrast(const QColor& a, const QColor& b) {
    const auto [dark, bright] = std::minmax({luminance(a), luminance(b)});
    return (bright + 0.05) / (dark + 0.05);
}

/// Below this, text is hard to read.
inline constexpr double kReadable = 4.5;

} // namespace quillon
