#include "qt/Convert.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace quillon {

namespace {

// What Windows-1252 has in the place of the second block of control characters. The five holes keep their
// code.
constexpr std::array<char16_t, 32> kUpperBlock{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

int pixel(Twips twips) {
    return static_cast<int>(std::lround(static_cast<double>(twips) / kTwipsPerPixel));
}

} // namespace

QString toQt(std::string_view text) {
    QString result = QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
    for (QChar& c : result) {
        if (c.unicode() >= 0x80 && c.unicode() < 0xA0) {
            c = QChar(kUpperBlock[c.unicode() - 0x80U]);
        }
    }
    return result;
}

std::string fromQt(const QString& text) {
    std::string result;
    result.reserve(static_cast<std::size_t>(text.size()));
    for (const QChar c : text) {
        const char16_t code = c.unicode();
        if (code < 0x80 || (code >= 0xA0 && code < 0x100)) {
            result.push_back(static_cast<char>(code));
            continue;
        }
        const auto* const found = std::find(kUpperBlock.begin(), kUpperBlock.end(), code);
        result.push_back(found == kUpperBlock.end()
                             ? '?'
                             : static_cast<char>(0x80 + static_cast<int>(found - kUpperBlock.begin())));
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

} // namespace quillon
