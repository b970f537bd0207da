#include "qt/RecordsKey.h"

#include <algorithm>
#include <array>
#include <utility>

#include <QPainter>

#include "console/RecordsTextTable.h"
#include "qt/Art.h"
#include "qt/ControlView.h"
#include "qt/Convert.h"
#include "qt/Screen.h"
#include "qt/StatusBar.h"

namespace quillon {

namespace {

enum class Sign : std::uint8_t { Dot, Ring, Warning };

struct SignLook {
    RecordingState::Kind kind;
    RecordsTextName words;
    Sign sign;
};

// clang-format off
constexpr std::array kLooks{
    SignLook{RecordingState::Kind::Starting,  "sRecordsStarting", Sign::Ring},
    SignLook{RecordingState::Kind::Recording, "sRecordsOn",       Sign::Dot},
    SignLook{RecordingState::Kind::InMemory,  "sRecordsInMemory", Sign::Warning},
    SignLook{RecordingState::Kind::Full,      "sRecordsFull",     Sign::Warning},
    SignLook{RecordingState::Kind::Off,       "sRecordsOff",      Sign::Ring},
    SignLook{RecordingState::Kind::None,      "sRecordsNone",     Sign::Warning},
};
// clang-format on

const SignLook& lookOf(const RecordingState& state) {
    return *std::ranges::find(kLooks, state.kind, &SignLook::kind);
}

} // namespace

RecordsKey::RecordsKey(Screen& screen, const RecordsTexts& texts)
    : WindowKey(&screen.window()), screen_(screen), texts_(texts) {
    hide();
}

QString RecordsKey::name() const {
    QStringList parts{toQt(texts_["sRecords"]), toQt(texts_[lookOf(state_).words])};
    if (!onPress) {
        parts << toQt(texts_["sRecordsMissing"]);
    }
    return parts.join(QStringLiteral(", "));
}

void RecordsKey::setState(RecordingState state) {
    state_ = std::move(state);
    update();
    screen_.lookAgain();
}

QRect RecordsKey::freePlace() const {
    const auto* console = dynamic_cast<const ControlHost*>(screen_.form().find("Quillon"));
    const Control* parameters = console == nullptr ? nullptr : console->find("fraActualExposureParameters");
    const ControlView* background = console == nullptr ? nullptr : screen_.view(*console);
    if (parameters == nullptr || background == nullptr || !background->isVisible()) {
        return {};
    }
    QRect place = toPixels(parameters->place());
    constexpr double kShape = 1.16; // of its width to its height
    place.setLeft(place.right() + 1 - static_cast<int>(place.height() * kShape));
    const bool taken = std::ranges::any_of(console->stack(), [&place](const Control* control) {
        return control->visible() && toPixels(control->place()).intersects(place);
    });
    return taken ? QRect() : place.translated(background->mapTo(background->window(), QPoint()));
}

void RecordsKey::settle() {
    const QRect place = freePlace();
    if (place.isEmpty()) {
        letGo();
        hide();
        return;
    }
    const QObjectList& stack = parentWidget()->children();
    const bool covered = std::any_of(std::ranges::find(stack, this), stack.end(), [](const QObject* above) {
        return dynamic_cast<const ControlView*>(above) != nullptr;
    });
    if (covered) {
        raise();
    }
    setGeometry(place);
    show();
}

void RecordsKey::act() {
    QString words;
    if (!onPress || !onPress(state_.folder)) {
        words = toQt(onPress ? texts_["sRecordsNotStarted"] : texts_["sRecordsMissing"]);
    } else if (lookOf(state_).sign == Sign::Warning) {
        words = toQt(texts_[lookOf(state_).words]);
        words += state_.why.empty() ? QString() : QStringLiteral(": ") + QString::fromStdString(state_.why);
    }
    if (!words.isEmpty()) {
        screen_.tell(toQt(texts_["sRecords"]) + QStringLiteral(": ") + words);
    }
}

bool RecordsKey::covers(QPoint place) const {
    return isVisible() && geometry().contains(place);
}

bool RecordsKey::press(int finger, QPoint place) {
    if (!covers(place)) {
        return false;
    }
    finger_ = finger;
    setPressed(true);
    return true;
}

bool RecordsKey::release(int finger, QPoint place) {
    if (!holds(finger)) {
        return false;
    }
    letGo();
    if (covers(place)) {
        act();
    }
    return true;
}

void RecordsKey::letGo() {
    finger_.reset();
    setPressed(false);
}

Words RecordsKey::words() const {
    QFont font = consoleFont(1);
    font.setPixelSize(std::max(9, height() * 22 / 100));
    return {QRect(3, height() * 52 / 100, width() - 6, height() * 40 / 100 + (pressed() ? 2 : 0)),
            toQt(texts_["sRecords"]), font, QColor::fromRgb(onPress ? kInk : kMutedInk),
            QColor::fromRgb(!onPress    ? kSurface
                            : pressed() ? kPressedFace
                                        : kFace)};
}

void RecordsKey::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    paintFace(painter, static_cast<bool>(onPress));
    const Words label = words();
    paintWords(painter, label);
    const double edge = height() * 0.3;
    const QRectF sign(width() / 2.0 - edge / 2, height() * 0.16 + (pressed() ? 2 : 0), edge, edge);
    painter.setRenderHint(QPainter::Antialiasing);
    switch (lookOf(state_).sign) {
    case Sign::Dot:
        painter.setPen(Qt::NoPen);
        painter.setBrush(label.ink);
        painter.drawEllipse(sign);
        break;
    case Sign::Ring: {
        const double line = edge * 0.14;
        painter.setPen(QPen(label.ink, line));
        painter.setBrush(Qt::NoBrush);
        painter.drawEllipse(sign.adjusted(line / 2, line / 2, -line / 2, -line / 2));
        break;
    }
    case Sign::Warning:
        paintArt(painter, "warning", sign.adjusted(-edge * 0.15, -edge * 0.15, edge * 0.15, edge * 0.15),
                 label.ink);
        break;
    }
}

} // namespace quillon
