#include "qt/KeyView.h"

#include <algorithm>

#include "qt/Art.h"
#include "qt/Convert.h"
#include "qt/Look.h"

namespace quillon {

bool KeyView::isLamp() const {
    return control().art() == "preparation" || control().art() == "exposure";
}

void KeyView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    if (isLamp()) {
        paintLamp(painter);
    } else {
        paintKey(painter);
    }
    paintFocusMark(painter);
}

void KeyView::paintKey(QPainter& painter) const {
    const bool on = control().backColour() != kNormalColour;
    const bool alarm = control().backColour() == kErrorFlashColour;
    const QRectF place = QRectF(rect()).adjusted(1, 1, -1, -1);
    if (!isEnabled()) {
        // Flat on the ground: no face and no depth. One that is on keeps its bar.
        const QColor ink = QColor::fromRgb(kMutedInk);
        paintPlate(painter, place,
                   on ? screenColour(control().backColour()).darker(112) : groundColour(control()),
                   QColor::fromRgb(kFaintEdge), 1);
        if (on) {
            painter.fillRect(QRectF(place.left() + 4, place.bottom() - 6, place.width() - 8, 3), ink);
        }
        paintContent(painter, rect().adjusted(5, 4, -5, on ? -8 : -4), ink, false);
        return;
    }
    if (pressed()) {
        paintPlate(painter, place, QColor::fromRgb(on ? kActiveMark : kStrongEdge), Qt::transparent, 0);
        paintPlate(painter, place.adjusted(2, 4, -2, -1),
                   on ? screenColour(control().backColour()).darker(110) : QColor::fromRgb(kPressedFace),
                   Qt::transparent, 0, 3);
    } else {
        // A darker lip at the foot lifts a key off the ground.
        const QColor edge = QColor::fromRgb(alarm ? kInk : on ? kActiveMark : kEdge);
        const double line = alarm ? 3 : on ? 2 : 1;
        paintPlate(painter, place, edge, Qt::transparent, 0);
        paintPlate(painter, place.adjusted(line, line, -line, on ? -line : -3),
                   screenColour(control().backColour()), Qt::transparent, 0, 3);
    }
    const int bar = height() < 36 ? 2 : 4;
    if (on && !alarm) {
        painter.fillRect(QRectF(place.left() + 8, place.bottom() - 4 - bar, place.width() - 16, bar),
                         QColor::fromRgb(kActiveMark));
    }
    const int shift = pressed() ? 2 : 0;
    paintContent(painter, rect().adjusted(6, 4 + shift, -6, (on && !alarm ? -6 - bar : -6) + shift),
                 QColor::fromRgb(kInk), on);
}

void KeyView::paintLamp(QPainter& painter) const {
    // Lamps are told by the generator and never by a finger, so they look alike whether enabled or not.
    const bool lit = control().backColour() != kNormalColour;
    const QRectF place = QRectF(rect()).adjusted(1, 1, -1, -1);
    paintPlate(painter, place, lit ? screenColour(control().backColour()) : groundColour(control()),
               QColor::fromRgb(lit ? kInk : kFaintEdge), lit ? 3 : 1, 6);
    paintContent(painter, rect().adjusted(6, 6, -6, -6), QColor::fromRgb(lit ? kInk : kMutedInk), lit);
}

void KeyView::paintContent(QPainter& painter, const QRect& place, const QColor& ink, bool bold) const {
    if (!control().art().empty()) {
        const int edge =
            std::min({place.width(), place.height(),
                      artPixels(control().artSize()) > 0 ? artPixels(control().artSize()) : place.height()});
        QRectF box(0, 0, edge, edge);
        box.moveCenter(QRectF(place).center());
        paintArt(painter, control().art(), isLamp() ? box : QRectF(place), ink);
        return;
    }
    painter.setPen(ink);
    paintText(painter, place, toQtLines(control().caption()), consoleFont(control().fontSize(), bold),
              Qt::AlignCenter);
}

} // namespace quillon
