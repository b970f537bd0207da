#include "qt/KeyView.h"

#include <algorithm>
#include <utility>

#include <QTimer>

#include "console/KeyReasons.h"
#include "console/PendingKeys.h"
#include "console/StatusLine.h"
#include "qt/Art.h"
#include "qt/Convert.h"
#include "qt/Look.h"
#include "ui/ControlHost.h"

namespace quillon {

namespace {

constexpr int kLitTime = 500; // ms that a lamp of radiation is lit at least

} // namespace

KeyView::KeyView(Control& control, QWidget* parent, const Indicators* indicators)
    : ControlView(control, parent, indicators) {
    holdShown_.callOnTimeout(this, [this] { update(); });
}

void KeyView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    if (control().lamp()) {
        paintLamp(painter);
    } else {
        paintKey(painter);
    }
    if (indicators() != nullptr && indicators()->pending.waits(control())) {
        paintPending(painter);
    }
    if (control().holdTime() > 0 && pressed()) {
        paintHold(painter);
    }
    if (isEnabled() && !KeyReasons::shutOff(control())) {
        paintFocusMark(painter);
    }
}

bool KeyView::isOn() const {
    return isHeldLit() || isWayBack() ||
           (control().backColour() != kNormalColour && control().role() != Role::Decline);
}

bool KeyView::isWayBack() const {
    return indicators() != nullptr && indicators()->status.wayBack() == &control();
}

bool KeyView::isUnknown() const {
    return indicators() != nullptr && PendingKeys::isUnknown(control());
}

bool KeyView::isThere() const {
    const Control* at = &control();
    while (at != nullptr && (!at->has(Property::Enabled) || at->offered())) {
        at = at->container();
    }
    return control().visible() && (control().look() != Look::WhileOffered || at == nullptr);
}

bool KeyView::isAlive() const {
    return isEnabled() && !isKeptBack() && !KeyReasons::shutOff(control());
}

bool KeyView::isKeptBack() const {
    return indicators() != nullptr ? indicators()->reasons.blocks(control()) : control().blocked();
}

void KeyView::sync() {
    ControlView::sync();
    setVisible(isThere());
}

void KeyView::reconsider() {
    setVisible(isThere());
    const std::tuple now(isKeptBack(), KeyReasons::shutOff(control()), isWayBack(), isUnknown());
    if (std::exchange(lookedAt_, now) != now) {
        update();
    }
}

void KeyView::setPressed(bool pressed) {
    constexpr int kStep = 40; // ms
    ControlView::setPressed(pressed);
    if (control().holdTime() > 0 && pressed) {
        held_.start();
        holdShown_.start(kStep);
    } else {
        holdShown_.stop();
    }
}

void KeyView::keepLit() {
    if (control().backColour() != kNormalColour && control().art() == "exposure") {
        lit_ = screenColour(control().backColour());
        litAt_ = control().host()->schedule().now();
        QTimer::singleShot(kLitTime + 1, this, [this] { update(); });
    }
}

bool KeyView::isHeldLit() const {
    return lit_.isValid() && control().host()->schedule().now() - litAt_ < kLitTime;
}

std::string_view KeyView::sign() const {
    if (isEnabled() && isKeptBack()) {
        return "lock";
    }
    return isWayBack() ? "back" : control().role() == Role::Radiation ? "radiation" : "";
}

bool KeyView::hasCornerLock() const {
    return width() < 3 * height() && sign() == "lock";
}

QRect KeyView::signPlace() const {
    if (hasCornerLock()) {
        const int edge = std::max(9, height() * 3 / 10);
        return {5, 4, edge, edge};
    }
    const int edge = std::min(width() / 4, height() * (sign() == "lock" ? 2 : 3) / 5);
    return {8, (height() - edge) / 2 + (pressed() ? 1 : -1), edge, edge};
}

bool KeyView::isAlarm() const {
    return control().backColour() == kErrorFlashColour;
}

QColor KeyView::face() const {
    const QColor own = isWayBack()                         ? screenColour(kActiveColour)
                       : control().role() == Role::Decline ? backgroundColour(control())
                                                           : screenColour(control().backColour());
    if (control().lamp()) {
        return isHeldLit() ? lit_ : isOn() ? own : backgroundColour(control());
    }
    if (!isAlive()) {
        return isOn() ? own.darker(112) : backgroundColour(control());
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
    const int aside = hasCornerLock() ? 4 : 0; // the lock is not to touch the words
    const int left = sign().empty() || hasCornerLock() ? 6 + aside : signPlace().right() + 4;
    return rect().adjusted(left, 2 + barHeight() + shift, aside - 6, -4 - barHeight() + shift);
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
        // Flat on the background: no face and no depth. One that is on keeps its bar.
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
    if (isOn() && PendingKeys::isReported(control()) && holdsOld()) {
        paintOld(painter, place.adjusted(4, 4, -4, -4));
    }
    if (isUnknown()) {
        paintUnknown(painter);
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

/// Neither on nor off: a dotted edge, and a question mark in the corner.
void KeyView::paintUnknown(QPainter& painter) const {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor::fromRgb(kMutedInk), 2, Qt::DotLine, Qt::FlatCap));
    painter.drawRoundedRect(facePlace().adjusted(3, 3, -3, -4), 2, 2);
    QFont font = consoleFont(1, true);
    font.setPixelSize(std::clamp(height() / 3, 9, 18));
    const int edge = font.pixelSize() + 2;
    painter.setPen(QColor::fromRgb(kMutedInk));
    painter.setFont(font);
    painter.drawText(QRect(width() - edge - 3, 3, edge, edge), Qt::AlignCenter, QStringLiteral("?"));
}

void KeyView::paintHold(QPainter& painter) const {
    const double part = std::min(1.0, static_cast<double>(held_.elapsed()) / control().holdTime());
    QRectF bar = facePlace().adjusted(4, 0, -4, -4);
    bar.setTop(bar.bottom() - std::max(6.0, height() / 6.0));
    painter.fillRect(bar, QColor::fromRgb(kField));
    bar.setWidth(bar.width() * part);
    painter.fillRect(bar, QColor::fromRgb(kStrongEdge));
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
