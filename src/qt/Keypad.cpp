#include "qt/Keypad.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include <QCoreApplication>
#include <QKeyEvent>

#include "qt/AccessibleNode.h"
#include "qt/Art.h"
#include "qt/ControlView.h"
#include "qt/Convert.h"
#include "qt/RecordsKey.h"
#include "qt/Screen.h"

namespace quillon {

namespace {

constexpr int kColumns = 4;
constexpr int kRows = 3;
constexpr std::array kCodes{7, 8, 9, PadKey::kErase, 4, 5, 6, 0, 1, 2, 3, PadKey::kDone};

constexpr double kFinger = 9; // mm, the edge of a key at the least

int gapOf(int edge) {
    return std::max(3, edge / 10);
}

QSize sizeOf(int edge) {
    const int gap = gapOf(edge);
    return {kColumns * (edge + gap) + gap, kRows * (edge + gap) + gap};
}

/// A place that the pad had better leave free, and how much so.
struct Obstacle {
    QRect place;
    double weight;
};

constexpr double kTouched = 4;
constexpr double kRead = 1;

/// What is to be seen on the window: keys and boxes, words and values.
void collect(const Screen& screen, const Control& background, std::vector<Obstacle>& found) {
    for (const Control* control : background.stack()) {
        const ControlView* view = screen.view(*control);
        if (view == nullptr || !view->isVisible()) {
            continue;
        }
        const auto addWords = [&](const Words& words) {
            const QRect& place = words.place;
            found.push_back({QRect(view->mapTo(view->window(), place.topLeft()), place.size()), kRead});
        };
        if (const QRect seen = seenPlace(*view); !seen.isEmpty()) {
            const bool holdsOthers = !control->stack().empty();
            const bool touched = control->has(Property::Text) || control->kind() == Kind::Slider ||
                                 control->kind() == Kind::Button;
            if (!holdsOthers && control->kind() != Kind::Picture) {
                found.push_back({seen, touched ? kTouched : kRead});
            } else if (const auto words = view->words()) {
                addWords(*words);
            }
            for (const Words& note : view->notes()) {
                addWords(note);
            }
        }
        collect(screen, *control, found);
    }
}

double covered(const QRect& place, const std::vector<Obstacle>& obstacles) {
    double sum = 0;
    for (const Obstacle& each : obstacles) {
        const QRect common = place & each.place;
        if (!common.isEmpty()) {
            sum += each.weight * common.width() * common.height();
        }
    }
    return sum;
}

} // namespace

PadKey::PadKey(int code, const ConsoleTexts& texts, QWidget* pad)
    : WindowKey(pad), code_(code), texts_(texts) {}

QString PadKey::name() const {
    return code_ == kErase  ? toQt(texts_.sKeypadErase)
           : code_ == kDone ? toQt(texts_.sKeypadDone)
                            : QString::number(code_);
}

Words PadKey::words() const {
    QFont font = consoleFont(1, code_ != kDone);
    font.setPixelSize(std::max(8, height() * (code_ == kDone ? 32 : 52) / 100));
    return {rect().adjusted(2, pressed() ? 4 : 2, -2, pressed() ? -1 : -3),
            code_ == kErase ? QString() : name(), font, QColor::fromRgb(kInk),
            QColor::fromRgb(pressed() ? kPressedFace : kFace)};
}

void PadKey::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const Words label = words();
    paintFace(painter);
    if (code_ == kErase) {
        const int inset = height() / 4;
        paintArt(painter, "erase", label.place.adjusted(0, inset, 0, -inset), label.ink);
    } else {
        paintWords(painter, label);
    }
}

Keypad::Keypad(Screen& screen, const Input& input, const ConsoleTexts& texts)
    : QWidget(&screen.window()), screen_(screen), input_(input) {
    setFocusPolicy(Qt::NoFocus);
    for (std::size_t i = 0; i < keys_.size(); ++i) {
        keys_[i] = new PadKey(kCodes[i], texts, this);
    }
    hide();
}

bool Keypad::openFor(const Control& box) {
    if (box.readOnly() || box.multiLine() || !input_.reachable(box) || std::exchange(box_, &box) == &box) {
        return false;
    }
    within_ = {};
    settle();
    return box_ != nullptr;
}

void Keypad::close() {
    letGoOfAll();
    box_ = nullptr;
    hide();
}

void Keypad::settle() {
    if (box_ == nullptr) {
        return;
    }
    const ControlView* view = screen_.view(*box_);
    if (view == nullptr || box_->readOnly() || !input_.reachable(*box_) || seenPlace(*view).isEmpty()) {
        close();
        return;
    }
    const QRect beside(view->mapTo(view->window(), QPoint()), view->size());
    if (beside != besideOf_ || screen_.window().size() != within_) {
        besideOf_ = beside;
        within_ = screen_.window().size();
        const int finger = static_cast<int>(std::ceil(panelPixels(kFinger, within_)));
        if (place(finger * 6 / 5) > 0) {
            place(finger);
        }
    }
    raise();
    show();
}

double Keypad::place(int edge) {
    hide(); // it stands in its own way otherwise
    std::vector<Obstacle> obstacles;
    collect(screen_, screen_.window().control(), obstacles);
    if (const RecordsKey* records = screen_.recordsKey(); records != nullptr && records->isVisible()) {
        obstacles.push_back({records->geometry(), kTouched});
    }
    const QRect room(QPoint(), QSize(screen_.window().width(), screen_.window().foot().top()));
    const QSize size = sizeOf(edge);
    const int step = std::max(4, room.height() / 120);
    const QRect keptFree = besideOf_.adjusted(-step, -step, step, step);
    QRect best;
    double least = std::numeric_limits<double>::max();
    double leastCovered = least;
    for (int y = step; y + size.height() < room.height(); y += step) {
        for (int x = step; x + size.width() < room.width(); x += step) {
            const QRect place(QPoint(x, y), size);
            if (place.intersects(keptFree)) {
                continue;
            }
            const double hides = covered(place.adjusted(-step, -step, step, step), obstacles);
            // As near as may be, where it covers the same.
            const double cost =
                hides * room.width() + (place.center() - besideOf_.center()).manhattanLength();
            if (cost < least) {
                least = cost;
                leastCovered = hides;
                best = place;
            }
        }
    }
    layOut(best, edge);
    return leastCovered;
}

void Keypad::layOut(const QRect& place, int edge) {
    setGeometry(place);
    const int pitch = edge + gapOf(edge);
    for (int i = 0; i < kColumns * kRows; ++i) {
        keys_[static_cast<std::size_t>(i)]->setGeometry(gapOf(edge) + i % kColumns * pitch,
                                                        gapOf(edge) + i / kColumns * pitch, edge, edge);
    }
}

bool Keypad::covers(QPoint place) const {
    return box_ != nullptr && geometry().contains(place);
}

PadKey* Keypad::keyAt(QPoint place) const {
    const auto key = std::find_if(keys_.begin(), keys_.end(), [at = place - pos()](const PadKey* each) {
        return each->geometry().contains(at);
    });
    return key == keys_.end() ? nullptr : *key;
}

void Keypad::press(int finger, QPoint place) {
    PadKey* key = keyAt(place);
    held_[finger] = key;
    if (key != nullptr) {
        key->setPressed(true);
    }
}

bool Keypad::release(int finger, QPoint place) {
    const auto entry = held_.find(finger);
    if (entry == held_.end()) {
        return false;
    }
    PadKey* key = entry->second;
    held_.erase(entry);
    if (key != nullptr) {
        key->setPressed(false);
        if (keyAt(place) == key) {
            act(*key);
        }
    }
    return true;
}

void Keypad::letGoOfAll() {
    for (const auto& [finger, key] : std::exchange(held_, {})) {
        if (key != nullptr) {
            key->setPressed(false);
        }
    }
}

void Keypad::act(const PadKey& key) {
    const ControlView* view = box_ == nullptr ? nullptr : screen_.view(*box_);
    if (key.code() == PadKey::kDone || view == nullptr) {
        close();
        return;
    }
    const bool digit = key.code() < PadKey::kErase;
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, digit ? Qt::Key_0 + key.code() : int{Qt::Key_Backspace}, Qt::NoModifier,
                        digit ? QString::number(key.code()) : QString());
        QCoreApplication::sendEvent(view->editor(), &event);
    }
}

void Keypad::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), QColor::fromRgb(kSurface));
    paintPlate(painter, QRectF(rect()), QColor::fromRgb(kPressedFace), QColor::fromRgb(kStrongEdge), 2, 5);
}

} // namespace quillon
