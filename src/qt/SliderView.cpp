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

/// The value under the finger, large and above it.
class SliderView::Bubble final : public QWidget {
public:
    explicit Bubble(SliderView& slider) : QWidget(slider.window()), slider_(slider) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
    }

    void settle() {
        const int size = std::max(20, slider_.height() * 2 / 3);
        const int wide = 3 * size;
        const QPoint handle(static_cast<int>(slider_.across(slider_.control().value())), 0);
        const QPoint at = slider_.mapTo(window(), handle);
        constexpr int kFinger = 24; // pixels that it hides above the handle
        const int left = std::clamp(at.x() - wide / 2, 0, std::max(0, window()->width() - wide));
        setGeometry(left, std::max(0, at.y() - kFinger - size), wide, size);
        raise();
        show();
        update();
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        paintPlate(painter, rect(), QColor::fromRgb(kInk), Qt::transparent, 0, 4);
        painter.setPen(QColor::fromRgb(kField));
        QFont font = consoleFont(1, true);
        font.setPixelSize(std::max(1, height() * 4 / 5));
        paintText(painter, rect(), QString::number(slider_.control().value()), font, Qt::AlignCenter);
    }

private:
    SliderView& slider_;
};

SliderView::~SliderView() {
    delete bubble_;
}

void SliderView::sync() {
    ControlView::sync();
    showBubble();
}

void SliderView::setPressed(bool pressed) {
    ControlView::setPressed(pressed);
    showBubble();
}

void SliderView::showBubble() {
    if (pressed() && bubble_ == nullptr) {
        bubble_ = new Bubble(*this);
    }
    if (pressed()) {
        bubble_->settle();
    } else if (bubble_ != nullptr) {
        bubble_->hide();
    }
}

void SliderView::reconsider() {
    if (std::exchange(shownAlive_, isAlive()) != isAlive()) {
        update();
    }
}

bool SliderView::isAlive() const {
    return isEnabled() && (indicators() == nullptr || !indicators()->reasons.blocks(control())) &&
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
    paintPlate(painter, groove, isAlive() ? QColor::fromRgb(kField) : backgroundColour(control()), edge, 1,
               4);
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
    paintPlate(painter, knob, isAlive() ? face : backgroundColour(control()),
               pressed() ? QColor::fromRgb(kStrongEdge) : edge, pressed() ? 2 : 1);
    for (const int offset : {-4, 0, 4}) {
        painter.fillRect(QRectF(at + offset - 0.5, middle - half / 2, 1, half), edge);
    }
    paintFocusMark(painter);
}

} // namespace quillon
