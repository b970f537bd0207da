#include "qt/Look.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <QFontMetrics>

namespace quillon {

namespace {

/// Pixels of a font. Text is set smaller only if it does not fit even when narrowed.
constexpr int kReadablePixels = 8;

constexpr Colour kSystemColour = 0x80000000;

/// Text may shrink to this part of its size before words are broken.
constexpr double kSmallest = 0.6;

/// On one line, capitals have this part of the place's height, and letters hang below it by this part of
/// their size.
constexpr double kCapitals = 0.7;
constexpr double kBelowLine = 0.2;
/// Letters may be narrowed to this part of their width before they shrink.
constexpr double kNarrowest = 0.65;

/// In three pieces if it is tall: Qt paints large areas with several threads and waits for them, which takes
/// long beside busy programs.
void fillRounded(QPainter& painter, const QRectF& place, double radius) {
    const double cap = std::ceil(radius);
    const bool whole = QRectF(place.toAlignedRect()) == place;
    if (!whole || place.height() <= 4 * cap || painter.brush().color().alpha() < 255) {
        painter.drawRoundedRect(place, radius, radius);
        return;
    }
    painter.drawRoundedRect(QRectF(place.left(), place.top(), place.width(), 2 * cap), radius, radius);
    painter.drawRoundedRect(QRectF(place.left(), place.bottom() - 2 * cap, place.width(), 2 * cap), radius,
                            radius);
    painter.fillRect(place.adjusted(0, cap, 0, -cap), painter.brush());
}

} // namespace

QPalette consolePalette() {
    QPalette palette(QColor::fromRgb(kFace), QColor::fromRgb(kSurface));
    palette.setColor(QPalette::WindowText, QColor::fromRgb(kInk));
    palette.setColor(QPalette::Text, QColor::fromRgb(kInk));
    palette.setColor(QPalette::ButtonText, QColor::fromRgb(kInk));
    palette.setColor(QPalette::Button, QColor::fromRgb(kFace));
    palette.setColor(QPalette::Base, QColor::fromRgb(kField));
    palette.setColor(QPalette::Highlight, QColor::fromRgb(kStrongEdge));
    palette.setColor(QPalette::HighlightedText, QColor::fromRgb(kField));
    palette.setColor(QPalette::ToolTipBase, QColor::fromRgb(kField));
    palette.setColor(QPalette::ToolTipText, QColor::fromRgb(kInk));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, QColor::fromRgb(kMutedInk));
    }
    palette.setColor(QPalette::Disabled, QPalette::Base, QColor::fromRgb(kSurface));
    return palette;
}

QColor screenColour(Colour colour) {
    if (colour == kSurfaceColour) {
        return QColor::fromRgb(kSurface);
    }
    if ((colour & kSystemColour) != 0) {
        return QColor::fromRgb(colour == kWindowColour ? kField : kFace);
    }
    return {static_cast<int>(colour & 0xFF), static_cast<int>(colour >> 8 & 0xFF),
            static_cast<int>(colour >> 16 & 0xFF)};
}

QColor backgroundColour(const Control& control) {
    for (const Control* at = control.container(); at != nullptr; at = at->container()) {
        if (at->has(Property::BackColour) && at->backColour() != kNormalColour) {
            return screenColour(at->backColour());
        }
    }
    return QColor::fromRgb(kSurface);
}

QFont consoleFont(double points, bool bold) {
    // Where the first is not installed, the system's own choice for text without serifs takes its place: by
    // this name Qt hands the question to fontconfig.
    QFont font(QStringList{QStringLiteral("DejaVu Sans"), QStringLiteral("Sans Serif")});
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(std::max(kReadablePixels, static_cast<int>(std::lround(points * 96 / 72))));
    font.setBold(bold);
    return font;
}

Fit fitText(const QRect& place, const QString& text, QFont font, Qt::Alignment alignment) {
    const int flags = static_cast<int>(alignment) | Qt::TextWordWrap;
    const auto fits = [&](double width) {
        const QRect wide(place.topLeft(), QSize(static_cast<int>(place.width() / width), place.height()));
        const QRect needed = QFontMetrics(font).boundingRect(wide, flags, text);
        return needed.width() <= wide.width() && needed.height() <= wide.height();
    };
    const int smallest =
        std::max(kReadablePixels, static_cast<int>(std::lround(font.pixelSize() * kSmallest)));
    for (int size = font.pixelSize(); !fits(1) && size > smallest;) {
        font.setPixelSize(--size);
    }
    constexpr double kStep = 0.05;
    for (double width = 1; width >= kNarrowest; width -= kStep) {
        if (fits(width)) {
            return {font, true, width};
        }
    }
    font.setPixelSize(std::min(font.pixelSize(), kReadablePixels - 1));
    return {font, fits(kNarrowest), kNarrowest};
}

void paintText(QPainter& painter, const QRect& place, const QString& text, const QFont& font,
               Qt::Alignment alignment) {
    if (text.isEmpty() || place.isEmpty()) {
        return;
    }
    const Fit fit = fitText(place, text, font, alignment);
    painter.setFont(fit.font);
    const int flags = static_cast<int>(alignment) | (fit.whole ? Qt::TextWordWrap : Qt::TextWrapAnywhere);
    if (fit.width == 1) {
        painter.drawText(place, flags, text);
        return;
    }
    painter.save();
    painter.translate(place.left(), 0);
    painter.scale(fit.width, 1);
    painter.drawText(QRectF(0, place.top(), place.width() / fit.width, place.height()), flags, text);
    painter.restore();
}

Fit fitWords(const Words& words) {
    if (!words.oneLine) {
        return fitText(words.place, words.text, words.font, words.alignment);
    }
    // By the height of its capitals, without the room that a font keeps above and below.
    QFont font = words.font;
    int size = 1;
    do {
        font.setPixelSize(++size);
    } while (QFontMetricsF(font).capHeight() < kCapitals * words.place.height());
    for (;; --size) {
        font.setPixelSize(size);
        const double needed = QFontMetricsF(font).horizontalAdvance(words.text);
        const double width = std::min(1.0, words.place.width() / std::max(needed, 1.0));
        if (width >= kNarrowest || size == 1) {
            return {font, width >= kNarrowest, width};
        }
    }
}

void paintWords(QPainter& painter, const Words& words) {
    painter.setPen(words.ink);
    if (words.oneLine) {
        const Fit fit = fitWords(words);
        const QFontMetricsF metrics(fit.font);
        const QRectF place(words.place);
        const double letters = metrics.capHeight() + kBelowLine * fit.font.pixelSize();
        painter.save();
        const double needed = fit.width * metrics.horizontalAdvance(words.text);
        const bool left = words.alignment.testFlag(Qt::AlignLeft);
        painter.translate(left ? place.left() : place.center().x() - needed / 2,
                          place.center().y() - letters / 2 + metrics.capHeight());
        painter.scale(fit.width, 1);
        painter.setFont(fit.font);
        painter.drawText(QPointF(), words.text);
        painter.restore();
        return;
    }
    paintText(painter, words.place, words.text, words.font, words.alignment);
}

void paintPlate(QPainter& painter, const QRectF& place, const QColor& fill, const QColor& edge, double width,
                double radius) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const double half = width / 2;
    if (width > 0 && fill.alpha() == 255) {
        // The plate on a larger one of the outline's colour: filling costs a fraction of stroking.
        painter.setBrush(edge);
        fillRounded(painter, place, radius + half);
        painter.setBrush(fill);
        fillRounded(painter, place.adjusted(width, width, -width, -width), std::max(0.0, radius - half));
        return;
    }
    painter.setBrush(fill);
    if (width <= 0) {
        fillRounded(painter, place, radius);
        return;
    }
    painter.setPen(QPen(edge, width));
    painter.drawRoundedRect(place.adjusted(half, half, -half, -half), radius, radius);
}

const RankLook* rankLook(Role role) {
    // clang-format off
    static constexpr std::pair<Role, RankLook> kRanks[]{
        {Role::Radiation, {kLampFace,  kInk,      kInk,   "radiation"}},
        {Role::Good,      {kGoodFace,  kGoodMark, kInk,   "good"}},
        {Role::Warning,   {kLampFace,  kInk,      kInk,   "warning"}},
        {Role::Interlock, {kAlarmFace, kAlarmInk, kField, "alarm"}},
        {Role::Alarm,     {kAlarmFace, kAlarmInk, kField, "alarm"}},
    };
    // clang-format on
    for (const auto& [ranked, look] : kRanks) {
        if (ranked == role) {
            return &look;
        }
    }
    return nullptr;
}

} // namespace quillon
