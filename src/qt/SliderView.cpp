#include "qt/SliderView.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "console/KeyReasons.h"
#include "qt/Look.h"

namespace quillon {

namespace {

constexpr int kKnobWidth = 26;

} // namespace

void SliderView::reconsider() {
    if (std::exchange(shownAlive_, isAlive()) != isAlive()) {
        update();
    }
}

bool SliderView::isAlive() const {
    return isEnabled() && (signs() == nullptr || !signs()->reasons.keepsBack(control())) &&
           !KeyReasons::shutOff(control());
}

bool SliderView::isOnHandle(QPoint place) const {
    constexpr double kReach = 24; // a finger is wider than the handle
    return std::abs(place.x() - across(control().value())) <= kReach;
}

std::int32_t SliderView::dragged(std::int32_t from, int pixels) const {
    constexpr int kFine = 24;   // pixels to each side
    constexpr int kPerStep = 2; // of them
    const int fine = std::clamp(pixels, -kFine, kFine) / kPerStep;
    const double beyond = pixels - std::clamp(pixels, -kFine, kFine);
    const double coarse = beyond * control().maximum() / std::max(1, width() - kKnobWidth);
    return from + fine + static_cast<std::int32_t>(std::lround(coarse));
}

double SliderView::across(std::int32_t value) const {
    const double part = control().maximum() > 0 ? static_cast<double>(value) / control().maximum() : 0;
    return kKnobWidth / 2.0 + part * std::max(1, width() - kKnobWidth);
}

void SliderView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const double middle = height() / 2.0;
    const QColor edge = QColor::fromRgb(isAlive() ? kEdge : kFaintEdge);
    const QRectF groove(kKnobWidth / 2.0 - 4, middle - 4, width() - kKnobWidth + 8, 8);
    paintPlate(painter, groove, isAlive() ? QColor::fromRgb(kField) : groundColour(control()), edge, 1, 4);
    const double from = across(control().selectionStart());
    const double at = across(control().value());
    if (isAlive()) {
        painter.fillRect(QRectF(std::min(from, at), middle - 3, std::abs(at - from), 6),
                         QColor::fromRgb(kStrongEdge));
    }
    if (control().selectionStart() > 0) {
        painter.fillRect(QRectF(from - 1, middle - 10, 2, 20), edge);
    }
    const double half = std::min(middle, 17.0);
    const QRectF knob(at - kKnobWidth / 2.0, middle - half, kKnobWidth, 2 * half);
    const QColor face = QColor::fromRgb(pressed() ? kPressedFace : kFace);
    paintPlate(painter, knob, isAlive() ? face : groundColour(control()),
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
