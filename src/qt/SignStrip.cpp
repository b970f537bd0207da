#include "qt/SignStrip.h"

#include <algorithm>
#include <utility>

#include "console/layout/ConsoleControls.h"
#include "qt/Convert.h"

namespace quillon {

namespace {

// In the console's design.
constexpr Twips kLeft = 180;
constexpr Twips kRightOfWork = 9180;
constexpr Twips kPrompt = 9240;
constexpr Twips kRight = 12120;

int scaled(int pixels, Twips part, Twips whole) {
    return static_cast<int>(static_cast<std::int64_t>(pixels) * part / whole);
}

} // namespace

DoingSign::DoingSign(QWidget* window) : QWidget(window) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
}

void DoingSign::tell(const QRect& place, const QString& text) {
    setGeometry(place);
    if (text_ != text) {
        text_ = text;
        update();
    }
    setVisible(!text_.isEmpty());
    raise();
}

Words DoingSign::words() const {
    QFont font = consoleFont(10, true);
    font.setPixelSize(std::max(10, height() * 4 / 10));
    return {rect(), text_, font, QColor::fromRgb(kInk), QColor::fromRgb(kSurface)};
}

void DoingSign::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    paintWords(painter, words());
}

SignStrip::SignStrip(const Control& form, const StatusLine& status, QWidget* window)
    : QWidget(window), form_(form), status_(status), doing_(window) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    second_.setInterval(1000);
    connect(&second_, &QTimer::timeout, this, [this] { onSecond(); });
    show();
}

void SignStrip::sync(bool workIsEmpty) {
    const QRect form = toPixels(form_.place());
    const QRect console = toPixels(form_.stack().front()->place());
    const int top = scaled(console.height(), kConsoleFoot, kConsoleDesignHeight);
    setGeometry(0, top, form.width(), std::max(0, form.height() - top));
    raise();

    const std::string silence = status_.silence();
    const QString doing = toQt(status_.doing());
    const bool fills = workIsEmpty && !doing.isEmpty();
    doing_.tell(placeOf(kLeft, kRightOfWork).translated(0, top / 2).adjusted(0, -height(), 0, height()),
                fills ? doing : QString());
    Shown now{toQt(silence), toQt(status_.howFar()), !silence.empty(), status_.progress().count};
    if (now.left.isEmpty() && !fills) {
        now.left = doing;
    }
    if (now != shown_) {
        shown_ = now;
        update();
    }
    if (status_.counting() != second_.isActive()) {
        second_.isActive() ? second_.stop() : second_.start();
    }
}

QRect SignStrip::placeOf(Twips left, Twips right) const {
    const int from = scaled(width(), left, kConsoleDesignWidth);
    return {from, 0, scaled(width(), right, kConsoleDesignWidth) - from, height()};
}

int SignStrip::marksWidth() const {
    return shown_.count.of > 0 ? shown_.count.of * height() / 2 + 4 : 0;
}

std::vector<Words> SignStrip::words() const {
    QFont font = consoleFont(10, true);
    font.setPixelSize(std::clamp(height() * 6 / 10, 10, 22));
    const auto line = [&](const QRect& place, const QString& text) {
        return Words{place,
                     text,
                     font,
                     QColor::fromRgb(kInk),
                     QColor::fromRgb(kSurface),
                     Qt::AlignLeft | Qt::AlignVCenter};
    };
    const int sign = shown_.silent ? height() + 2 : 0;
    return {line(placeOf(kLeft, kRightOfWork).adjusted(sign, 0, 0, 0), shown_.left),
            line(placeOf(kPrompt, kRight).adjusted(marksWidth(), 0, 0, 0), shown_.right), doing_.words()};
}

void SignStrip::paintEvent(QPaintEvent* /*event*/) {
    if (shown_.left.isEmpty() && shown_.right.isEmpty()) {
        return;
    }
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (shown_.silent) {
        paintSilence(painter);
    }
    paintMarks(painter);
    for (const Words& one : words()) {
        paintWords(painter, one);
    }
}

/// A ring that is struck through.
void SignStrip::paintSilence(QPainter& painter) const {
    const double edge = height() * 0.6;
    QRectF ring(placeOf(kLeft, kRightOfWork).left() + 2, (height() - edge) / 2, edge, edge);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor::fromRgb(kInk), 2));
    painter.drawEllipse(ring);
    painter.drawLine(ring.bottomLeft(), ring.topRight());
}

/// One for each of what is counted, filled where it is done.
void SignStrip::paintMarks(QPainter& painter) const {
    const int edge = height() / 2;
    const int left = placeOf(kPrompt, kRight).left();
    for (int i = 0; i < shown_.count.of; ++i) {
        paintPlate(painter, QRectF(left + i * edge, (height() - edge + 4) / 2.0, edge - 4, edge - 4),
                   QColor::fromRgb(i < shown_.count.done ? kInk : kField), QColor::fromRgb(kInk), 1, 1);
    }
}

} // namespace quillon
