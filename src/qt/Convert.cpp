#include "qt/Convert.h"

#include <algorithm>
#include <cmath>

#include "base/CodePage.h"

namespace quillon {

namespace {

int pixel(Twips twips) {
    return static_cast<int>(std::lround(static_cast<double>(twips) / kTwipsPerPixel));
}

} // namespace

QString toQt(std::string_view text) {
    QString result;
    result.reserve(static_cast<qsizetype>(text.size()));
    for (const char byte : text) {
        result.append(QChar(unicodeOf(byte)));
    }
    return result;
}

std::string fromQt(const QString& text) {
    std::string result;
    result.reserve(static_cast<std::size_t>(text.size()));
    for (const QChar c : text) {
        result.push_back(codePageByte(c.unicode()).value_or('?'));
    }
    return result;
}

QString toQtLines(std::string_view text) {
    QString result = toQt(text);
    result.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    result.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return result;
}

std::string fromQtLines(const QString& text) {
    QString lines = text;
    lines.replace(QLatin1Char('\n'), QLatin1String("\r\n"));
    return fromQt(lines);
}

QRect toPixels(const Place& place) {
    const int left = pixel(place.left);
    const int top = pixel(place.top);
    return {left, top, std::max(0, pixel(place.left + place.width) - left),
            std::max(0, pixel(place.top + place.height) - top)};
}

double panelPixels(double millimetres, QSize window) {
    constexpr int kMargin = 12; // what a window fitted to the screen leaves free
    constexpr double kDiagonal = 254;
    return millimetres * std::hypot(window.width() + kMargin, window.height() + kMargin) / kDiagonal;
}

} // namespace quillon
