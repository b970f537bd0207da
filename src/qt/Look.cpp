#include "qt/Look.h"

#include <algorithm>
#include <cmath>

#include <QFontMetrics>

namespace quillon {

namespace {

constexpr Colour kSystemColour = 0x80000000;

/// Text may shrink to this part of its size before words are broken.
constexpr double kSmallest = 0.6;

/// In three pieces where it is tall: what Qt paints of many rows at once it shares out to threads, and waits
/// for them; beside busy programs they are long in coming.
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

QColor groundColour(const Control& control) {
    for (const Control* at = control.container(); at != nullptr; at = at->container()) {
        if (at->has(Property::BackColour) && at->backColour() != kNormalColour) {
            return screenColour(at->backColour());
        }
    }
    return QColor::fromRgb(kSurface);
}

QFont consoleFont(double points, bool bold) {
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(points * 96 / 72))));
    font.setBold(bold);
    return font;
}

Fit fitText(const QRect& place, const QString& text, QFont font, Qt::Alignment alignment) {
    const int flags = static_cast<int>(alignment) | Qt::TextWordWrap;
    const int smallest = std::max(7, static_cast<int>(std::lround(font.pixelSize() * kSmallest)));
    for (int size = font.pixelSize();; --size) {
        font.setPixelSize(size);
        const QRect needed = QFontMetrics(font).boundingRect(place, flags, text);
        const bool whole = needed.width() <= place.width() && needed.height() <= place.height();
        if (whole || size <= smallest) {
            return {font, whole};
        }
    }
}

void paintText(QPainter& painter, const QRect& place, const QString& text, const QFont& font,
               Qt::Alignment alignment) {
    if (text.isEmpty() || place.isEmpty()) {
        return;
    }
    const auto [fitting, whole] = fitText(place, text, font, alignment);
    painter.setFont(fitting);
    painter.drawText(place, static_cast<int>(alignment) | (whole ? Qt::TextWordWrap : Qt::TextWrapAnywhere),
                     text);
}

void paintWords(QPainter& painter, const Words& words) {
    painter.setPen(words.ink);
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

} // namespace quillon
