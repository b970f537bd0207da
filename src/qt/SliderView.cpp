#include "qt/SliderView.h"

#include <algorithm>
#include <cmath>

#include "qt/Look.h"

namespace quillon {

namespace {

constexpr int kKnobWidth = 26;

} // namespace

std::int32_t SliderView::valueAt(QPoint place) const {
    const double room = std::max(1, width() - kKnobWidth);
    const double part = std::clamp((place.x() - kKnobWidth / 2.0) / room, 0.0, 1.0);
    return static_cast<std::int32_t>(std::lround(part * control().maximum()));
}

double SliderView::across(std::int32_t value) const {
    const double part = control().maximum() > 0 ? static_cast<double>(value) / control().maximum() : 0;
    return kKnobWidth / 2.0 + part * std::max(1, width() - kKnobWidth);
}

void SliderView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const double middle = height() / 2.0;
    const QColor edge = QColor::fromRgb(isEnabled() ? kEdge : kFaintEdge);
    const QRectF groove(kKnobWidth / 2.0 - 4, middle - 4, width() - kKnobWidth + 8, 8);
    paintPlate(painter, groove, isEnabled() ? QColor::fromRgb(kField) : groundColour(control()), edge, 1, 4);
    const double from = across(control().selectionStart());
    const double at = across(control().value());
    if (isEnabled()) {
        painter.fillRect(QRectF(std::min(from, at), middle - 3, std::abs(at - from), 6),
                         QColor::fromRgb(kStrongEdge));
    }
    if (control().selectionStart() > 0) {
        painter.fillRect(QRectF(from - 1, middle - 10, 2, 20), edge);
    }
    const double half = std::min(middle, 17.0);
    const QRectF knob(at - kKnobWidth / 2.0, middle - half, kKnobWidth, 2 * half);
    const QColor face = QColor::fromRgb(pressed() ? kPressedFace : kFace);
    paintPlate(painter, knob, isEnabled() ? face : groundColour(control()),
               pressed() ? QColor::fromRgb(kStrongEdge) : edge, pressed() ? 2 : 1);
    for (const int offset : {-4, 0, 4}) {
        painter.fillRect(QRectF(at + offset - 0.5, middle - half / 2, 1, half), edge);
    }
    if (pressed()) {
        // Beside the knob, on the side with more room.
        const double gap = kKnobWidth / 2.0 + 3;
        const bool right = at < width() / 2.0;
        const double room = std::min(48.0, (right ? width() - at : at) - gap);
        const QRectF bubble(right ? at + gap : at - gap - room, middle - 11, room, 22);
        paintPlate(painter, bubble, QColor::fromRgb(kInk), Qt::transparent, 0, 3);
        painter.setPen(QColor::fromRgb(kField));
        paintText(painter, bubble.toRect(), QString::number(control().value()), consoleFont(10, true),
                  Qt::AlignCenter);
    }
    paintFocusMark(painter);
}

} // namespace quillon
