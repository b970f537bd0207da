#include "qt/KeyView.h"

#include <algorithm>

#include "console/PendingKeys.h"
#include "qt/Art.h"
#include "qt/Convert.h"
#include "qt/Look.h"

namespace quillon {

void KeyView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    if (control().lamp()) {
        paintLamp(painter);
    } else {
        paintKey(painter);
    }
    if (signs() != nullptr && signs()->pending.waits(control())) {
        paintPending(painter);
    }
    paintFocusMark(painter);
}

bool KeyView::isOn() const {
    return control().backColour() != kNormalColour && control().role() != Role::Decline;
}

bool KeyView::isAlive() const {
    return isEnabled() && !control().keptBack();
}

std::string_view KeyView::sign() const {
    if (control().keptBack()) {
        return "lock";
    }
    return control().role() == Role::Radiation ? "radiation" : "";
}

QRect KeyView::signPlace() const {
    const int edge = std::min(width() / 4, height() * (control().keptBack() ? 2 : 3) / 5);
    return {8, (height() - edge) / 2 + (pressed() ? 1 : -1), edge, edge};
}

bool KeyView::isAlarm() const {
    return control().backColour() == kErrorFlashColour;
}

QColor KeyView::face() const {
    const QColor own =
        control().role() == Role::Decline ? groundColour(control()) : screenColour(control().backColour());
    if (control().lamp()) {
        return isOn() ? own : groundColour(control());
    }
    if (!isAlive()) {
        return isOn() ? own.darker(112) : groundColour(control());
    }
    if (pressed()) {
        return isOn() ? own.darker(110) : QColor::fromRgb(kPressedFace);
    }
    return own;
}

QColor KeyView::ink() const {
    const bool strong = control().lamp() ? isOn() : isAlive();
    return QColor::fromRgb(strong ? kInk : kMutedInk);
}

int KeyView::barHeight() const {
    return height() < 36 ? 2 : 4;
}

QRect KeyView::contentPlace() const {
    if (control().lamp()) {
        return rect().adjusted(6, 6, -6, -6);
    }
    const int shift = pressed() ? 2 : 0;
    const int left = sign().empty() ? 6 : signPlace().right() + 4;
    return rect().adjusted(left, 2 + barHeight() + shift, -6, -4 - barHeight() + shift);
}

std::optional<Words> KeyView::words() const {
    if (!control().art().empty()) {
        return std::nullopt;
    }
    return Words{contentPlace(), toQtLines(control().onScreen(control().caption())),
                 consoleFont(control().fontSize()), ink(), face()};
}

void KeyView::paintKey(QPainter& painter) const {
    const QRectF place = facePlace();
    if (!isAlive()) {
        // Flat on the ground: no face and no depth. One that is on keeps its bar.
        paintPlate(painter, place, face(), QColor::fromRgb(kFaintEdge), 1);
        if (isOn()) {
            paintBar(painter, ink());
        }
    } else if (pressed()) {
        paintPlate(painter, place, QColor::fromRgb(isOn() ? kActiveMark : kStrongEdge), Qt::transparent, 0);
        paintPlate(painter, place.adjusted(2, 4, -2, -1), face(), Qt::transparent, 0, 3);
    } else {
        // Darker bottom edge.
        const QColor edge = QColor::fromRgb(isAlarm() ? kInk : isOn() ? kActiveMark : kEdge);
        const double line = isAlarm() ? 3 : isOn() ? 2 : 1;
        paintPlate(painter, place, edge, Qt::transparent, 0);
        paintPlate(painter, place.adjusted(line, line, -line, isOn() ? -line : -3), face(), Qt::transparent,
                   0, 3);
        if (isOn() && !isAlarm()) {
            paintBar(painter, edge);
        }
    }
    if (!sign().empty()) {
        paintArt(painter, sign(), signPlace(), ink());
    }
    paintContent(painter);
}

void KeyView::paintBar(QPainter& painter, const QColor& colour) const {
    painter.fillRect(QRectF(9, height() - 5 - barHeight(), width() - 18, barHeight()), colour);
}

void KeyView::paintLamp(QPainter& painter) const {
    const QRectF place = facePlace();
    paintPlate(painter, place, face(), QColor::fromRgb(isOn() ? kInk : kFaintEdge), isOn() ? 3 : 1, 6);
    paintContent(painter);
}

/// Sent, not confirmed: a dashed edge, and three dots in the corner beside the content.
void KeyView::paintPending(QPainter& painter) const {
    const QColor mark = QColor::fromRgb(kStrongEdge);
    painter.setBrush(Qt::NoBrush);
    QPen dashes(mark, 2);
    dashes.setDashPattern({3, 3});
    dashes.setCapStyle(Qt::FlatCap);
    painter.setPen(dashes);
    painter.drawRoundedRect(facePlace().adjusted(2, 2, -2, -3), 2, 2);
    const bool small = height() < 48;
    const int dot = small ? 3 : 5;
    const QRect dots(width() - 6 - 3 * (dot + 2), small ? 3 : 7, 3 * (dot + 2), dot);
    painter.fillRect(dots.adjusted(-5, small ? -1 : 0, 0, 1), face());
    painter.setPen(Qt::NoPen);
    painter.setBrush(mark);
    for (int i = 0; i < 3; ++i) {
        painter.drawEllipse(QRectF(dots.left() + i * (dot + 2), dots.top(), dot, dot));
    }
}

void KeyView::paintContent(QPainter& painter) const {
    if (const auto text = words()) {
        paintWords(painter, *text);
        return;
    }
    const QRect place = contentPlace();
    const int wanted = artPixels(control().artSize());
    const int edge = std::min({place.width(), place.height(), wanted > 0 ? wanted : place.height()});
    QRectF box(0, 0, edge, edge);
    box.moveCenter(QRectF(place).center());
    paintArt(painter, control().art(), control().lamp() ? box : QRectF(place), ink());
}

} // namespace quillon
