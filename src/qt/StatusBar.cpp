#include "qt/StatusBar.h"

#include <algorithm>
#include <array>
#include <string_view>

#include <QAccessible>

#include "qt/Art.h"
#include "qt/Convert.h"

namespace quillon {

namespace {

// The fields from the left, and where each ends, as a part of the whole width.
enum Field : int { kGenerator, kLine, kRays, kNews, kHowFar, kFields };
constexpr std::array<double, kFields> kEnds{0.14, 0.285, 0.455, 0.88, 1};

struct ToneLook {
    QRgb background;
    QRgb ink;
    std::string_view sign; ///< one of Art's
};

ToneLook lookOf(Tone tone) {
    switch (tone) {
    case Tone::Plain:
        break;
    case Tone::Unknown:
        return {kSurface, kMutedInk, "unknown"};
    case Tone::Good:
        return {kQuietFace, kInk, "good"};
    case Tone::Waits:
        return {kQuietFace, kInk, "waits"};
    case Tone::HeldBack:
        return {kQuietFace, kInk, "lock"};
    case Tone::Radiation:
        return {kRadiation, kInk, "radiation"};
    case Tone::Warning:
        return {kLampFace, kInk, "warning"};
    case Tone::Alarm:
        return {kAlarmFace, kField, "alarm"};
    }
    return {kQuietFace, kInk, ""};
}

void paintSign(QPainter& painter, std::string_view sign, const QRect& place, const QColor& ink) {
    if (sign == "unknown") { // a ring that is struck through
        painter.setRenderHint(QPainter::Antialiasing);
        const QRectF ring = QRectF(place).adjusted(1, 1, -1, -1);
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(ink, 2));
        painter.drawEllipse(ring);
        painter.drawLine(ring.bottomLeft(), ring.topRight());
    } else if (sign == "waits") { // three dots, as on a key that waits
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(ink);
        const double dot = place.width() / 4.0;
        for (int i = 0; i < 3; ++i) {
            painter.drawEllipse(QRectF(place.left() + i * dot * 1.5, place.center().y() - dot / 2, dot, dot));
        }
    } else {
        paintArt(painter, sign, place, ink);
    }
}

void quiet(QWidget& widget) {
    widget.setAttribute(Qt::WA_TransparentForMouseEvents);
    widget.setFocusPolicy(Qt::NoFocus);
}

} // namespace

NewsField::NewsField(QWidget* bar) : QWidget(bar) {
    quiet(*this);
}

void NewsField::tell(const StatusField& alarm, const StatusField& doing, const QString& why) {
    if (alarm_ == alarm && doing_ == doing && why_ == why) {
        return;
    }
    const bool heard = (alarm_ != alarm && !alarm.words.empty()) ||
                       (doing_ != doing && !doing.words.empty()) || (why_ != why && !why.isEmpty());
    alarm_ = alarm;
    doing_ = doing;
    why_ = why;
    update();
    if (heard && QAccessible::isActive()) {
        // Which of them reaches a screen reader depends on the system.
        for (const QAccessible::Event what :
             {QAccessible::NameChanged, QAccessible::ObjectShow, QAccessible::Alert}) {
            QAccessibleEvent event(this, what);
            QAccessible::updateAccessibility(&event);
        }
    }
}

Words NewsField::wordsIn(const QRect& place, const QString& text, Size size) const {
    const ToneLook look = lookOf(tone());
    QFont font = consoleFont(10, true);
    font.setPixelSize(std::max(9, height() * (size == Size::Large ? 58 : 44) / 100));
    const Words words{place,
                      text,
                      font,
                      QColor::fromRgb(look.ink),
                      QColor::fromRgb(look.background),
                      Qt::AlignLeft | Qt::AlignVCenter};
    // Narrow letters on one line, where those of two lines would be lower.
    Words row = words;
    row.oneLine = true;
    const int high = std::min(place.height(), QFontMetrics(font).capHeight() * 10 / 7);
    row.place = QRect(place.left(), place.center().y() - high / 2, place.width(), high);
    const bool taller = fitWords(row).font.pixelSize() > fitWords(words).font.pixelSize();
    return size == Size::Row || taller ? row : words;
}

Tone NewsField::tone() const {
    if (alarms()) {
        return Tone::Alarm;
    }
    if (!why_.isEmpty()) {
        return Tone::HeldBack;
    }
    return alarm_.words.empty() ? doing_.tone : alarm_.tone;
}

std::vector<Words> NewsField::words() const {
    const QRect whole = rect().adjusted(height(), 1, -6, -1); // the sign stands before it
    const QString alarm = toQtLines(alarm_.words);
    if (alarms() && !why_.isEmpty()) {
        const QRect upper(whole.left(), whole.top(), whole.width(), whole.height() / 2);
        const QRect lower(whole.left(), upper.bottom() + 1, whole.width(), whole.bottom() - upper.bottom());
        return {wordsIn(upper, alarm, Size::Row), wordsIn(lower, why_, Size::Row)};
    }
    if (!why_.isEmpty()) {
        return {wordsIn(whole, why_, Size::Plain)};
    }
    return {alarm.isEmpty() ? wordsIn(whole, toQtLines(doing_.words), Size::Plain)
                            : wordsIn(whole, alarm, Size::Large)};
}

void NewsField::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const std::vector<Words> all = words();
    painter.fillRect(rect(), all.front().background);
    if (all.front().text.isEmpty()) {
        return;
    }
    const int edge = height() * 6 / 10;
    paintSign(painter, lookOf(tone()).sign, QRect((height() - edge) / 2, (height() - edge) / 2, edge, edge),
              all.front().ink);
    for (const Words& one : all) {
        paintWords(painter, one);
    }
}

StatusBar::StatusBar(const StatusLine& status, QWidget* window)
    : QWidget(window), status_(status), news_(this) {
    quiet(*this);
    second_.setInterval(1000);
    connect(&second_, &QTimer::timeout, this, [this] { onSecond(); });
    whyEnds_.setSingleShot(true);
    connect(&whyEnds_, &QTimer::timeout, this, [this] { tellWhy({}); });
    show();
}

void StatusBar::resizeEvent(QResizeEvent* /*event*/) {
    news_.setGeometry(placeOf(kNews));
}

void StatusBar::tellWhy(const QString& words) {
    why_ = words;
    if (words.isEmpty()) {
        whyEnds_.stop();
    } else {
        whyEnds_.start(kWhyTime);
    }
    sync();
}

void StatusBar::sync() {
    raise();
    Shown now{status_.generator(), status_.line(), status_.rays(), toQt(status_.howFar()),
              status_.progress().count};
    if (now != shown_) {
        shown_ = now;
        update();
    }
    news_.tell(status_.alarm(), status_.doing(), why_);
    if (!status_.counting()) {
        second_.stop();
    } else if (!second_.isActive()) {
        second_.start();
    }
}

QRect StatusBar::placeOf(int field) const {
    const auto edge = [this](int end) {
        return end < 0 ? 0 : static_cast<int>(width() * kEnds[static_cast<std::size_t>(end)]);
    };
    return {edge(field - 1), 2, edge(field) - edge(field - 1), height() - 2};
}

const StatusField* StatusBar::fieldAt(int field) const {
    return field == kGenerator ? &shown_.generator
           : field == kLine    ? &shown_.line
           : field == kRays    ? &shown_.rays
                               : nullptr;
}

QRect StatusBar::signPlace(int field) const {
    const QRect place = placeOf(field);
    const int edge = place.height() / 2;
    return {place.left() + 6, place.top() + (place.height() - edge) / 2, edge, edge};
}

QRect StatusBar::marksPlace() const {
    const QRect place = placeOf(kHowFar);
    const int edge = place.height() / 2;
    const int wide = shown_.count.of * edge;
    // The number tells it, where there is no room for both.
    return wide > place.width() / 2
               ? QRect()
               : QRect(place.left() + 6, place.top() + (place.height() - edge + 4) / 2, wide, edge - 4);
}

std::vector<Words> StatusBar::words() const {
    std::vector<Words> all;
    QFont font = consoleFont(10, true);
    font.setPixelSize(std::max(9, height() * 42 / 100));
    for (int field = kGenerator; field <= kRays; ++field) {
        const StatusField& told = *fieldAt(field);
        const ToneLook look = lookOf(told.tone);
        const int left = look.sign.empty() ? placeOf(field).left() + 8 : signPlace(field).right() + 6;
        QRect place = placeOf(field);
        place.setLeft(left);
        place.setRight(place.right() - 4);
        Words words{place,
                    toQtLines(told.words),
                    font,
                    QColor::fromRgb(look.ink),
                    QColor::fromRgb(look.background),
                    Qt::AlignLeft | Qt::AlignVCenter};
        words.font.setItalic(told.tone == Tone::Unknown);
        all.push_back(words);
    }
    QRect far = placeOf(kHowFar).adjusted(8, 0, -4, 0);
    if (const QRect marks = marksPlace(); !marks.isEmpty()) {
        far.setLeft(marks.right() + 6);
    }
    all.push_back({far, shown_.howFar, font, QColor::fromRgb(kInk), QColor::fromRgb(kQuietFace),
                   Qt::AlignLeft | Qt::AlignVCenter});
    for (Words& one : news_.words()) {
        one.place.translate(news_.pos());
        all.push_back(std::move(one));
    }
    return all;
}

std::string StatusBar::fields() const {
    return shown_.generator.words + ", " + shown_.line.words + ", " + shown_.rays.words;
}

void StatusBar::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), QColor::fromRgb(kQuietFace));
    for (int field = kGenerator; field < kFields; ++field) {
        paintField(painter, field);
    }
    painter.fillRect(QRect(0, 0, width(), 2), QColor::fromRgb(kEdge));
    const std::vector<Words> all = words();
    for (std::size_t i = 0; i < 4; ++i) {
        paintWords(painter, all[i]);
    }
}

void StatusBar::paintField(QPainter& painter, int field) const {
    const QRect place = placeOf(field);
    if (const StatusField* told = fieldAt(field)) {
        const ToneLook look = lookOf(told->tone);
        painter.fillRect(place, QColor::fromRgb(look.background));
        paintSign(painter, look.sign, signPlace(field), QColor::fromRgb(look.ink));
    } else if (field == kHowFar) {
        const QRect marks = marksPlace();
        for (int i = 0; i < shown_.count.of && !marks.isEmpty(); ++i) {
            const int edge = marks.width() / shown_.count.of;
            paintPlate(painter, QRectF(marks.left() + i * edge, marks.top(), edge - 4, marks.height()),
                       QColor::fromRgb(i < shown_.count.done ? kInk : kField), QColor::fromRgb(kInk), 1, 1);
        }
    }
    painter.fillRect(QRect(place.right(), place.top() + 5, 1, place.height() - 10),
                     QColor::fromRgb(kFaintEdge));
}

} // namespace quillon
