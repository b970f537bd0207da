#include "desk/SwitchBox.h"

#include <algorithm>

#include <QEvent>
#include <QGridLayout>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTouchEvent>

namespace desk {

namespace {

constexpr int kSlack = 20; // pixels that a finger may slide off a key

// Bits of the keys that are held.
constexpr int kPrepareKey = 1;
constexpr int kExposeKey = 2;
constexpr int kFootKey = 4;

QPushButton* switchKey(const QString& words, const QString& description) {
    auto* key = new QPushButton(words);
    key->setMinimumHeight(44);
    key->setAutoDefault(false);
    key->setAccessibleDescription(description);
    key->setToolTip(description);
    return key;
}

bool holds(int key) {
    return key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter;
}

} // namespace

SwitchBox::SwitchBox(Station& station, QWidget* parent)
    : QGroupBox(tr("Switches"), parent), station_(station),
      prepare_(switchKey(tr("Prep (F5)"), tr("Hand switch, half pressed. Hold to prepare."))),
      expose_(switchKey(tr("Expose (F6)"), tr("Hand switch, pressed through. Hold to expose."))),
      foot_(switchKey(tr("Foot switch (F7)"), tr("Foot switch. Hold for fluoroscopy."))),
      stays_(new QCheckBox(tr("Stay where they are put"))), complaint_(new News) {
    stays_->setToolTip(
        tr("For a single mouse, and for hands that cannot hold: a press stays until the next."));
    stays_->setAccessibleDescription(stays_->toolTip());
    build();
    setAttribute(Qt::WA_AcceptTouchEvents);
    for (QPushButton* each : {prepare_, expose_, foot_}) {
        each->installEventFilter(this);
    }
    // Mouse and keyboard are handled below; this is a screen reader's press, which is short.
    connect(prepare_, &QPushButton::clicked, this, [this] { put({1, false}); });
    connect(expose_, &QPushButton::clicked, this, [this] { put({2, false}); });
    connect(foot_, &QPushButton::clicked, this, [this] { put({0, true}); });
    connect(&keys_, &KeyHold::changed, this, &SwitchBox::settle);
    connect(stays_, &QCheckBox::toggled, this, [this] {
        put_ = {};
        settle();
    });
}

void SwitchBox::build() {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(8, 4, 8, 4);
    grid->setVerticalSpacing(2);
    grid->addWidget(prepare_, 0, 0);
    grid->addWidget(expose_, 1, 0);
    foot_->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    grid->addWidget(foot_, 0, 1, 2, 1);
    grid->addWidget(stays_, 2, 0, 1, 2);
    grid->addWidget(complaint_, 3, 0, 1, 2);
}

void SwitchBox::letGo() {
    pointer_ = put_ = {};
    keys_.clear();
    settle();
}

bool SwitchBox::key(int key, bool down) {
    switch (key) {
    case Qt::Key_F5:
        keys_.set(kPrepareKey, down);
        return true;
    case Qt::Key_F6:
        keys_.set(kExposeKey, down);
        return true;
    case Qt::Key_F7:
        keys_.set(kFootKey, down);
        return true;
    default:
        return false;
    }
}

bool SwitchBox::eventFilter(QObject* watched, QEvent* event) {
    const Place own{watched == expose_ ? 2 : watched == prepare_ ? 1 : 0, watched == foot_};
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        static_cast<QWidget*>(watched)->setFocus(Qt::MouseFocusReason);
        pointerDown(own);
        return true;
    case QEvent::MouseMove:
        pointerMoved(placeAt(static_cast<QMouseEvent*>(event)->globalPosition().toPoint()));
        return true;
    case QEvent::MouseButtonRelease:
        pointerUp();
        return true;
    case QEvent::KeyPress:
    case QEvent::KeyRelease: {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (!holds(key->key())) {
            return false;
        }
        const bool down = event->type() == QEvent::KeyPress;
        if (!stays_->isChecked()) {
            keys_.set(own.foot ? kFootKey : own.stage == 2 ? kExposeKey : kPrepareKey, down);
        } else if (down && !key->isAutoRepeat()) {
            pointerDown(own);
            pointerUp();
        }
        return true;
    }
    default:
        return false;
    }
}

bool SwitchBox::event(QEvent* event) {
    switch (event->type()) {
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
        return touched(event);
    case QEvent::WindowDeactivate:
        // The window hears of no release any more; what was put stays.
        keys_.clear();
        return QGroupBox::event(event);
    default:
        return QGroupBox::event(event);
    }
}

/// Several fingers may be down: one at the hand switch, one at the foot switch.
bool SwitchBox::touched(QEvent* event) {
    auto* touch = static_cast<QTouchEvent*>(event);
    Place all;
    for (const QEventPoint& point : touch->points()) {
        const bool down = point.state() != QEventPoint::Released && event->type() != QEvent::TouchCancel;
        const Place at = placeAt(point.globalPosition().toPoint());
        if (down) {
            all.stage = std::max(all.stage, at.stage);
            all.foot = all.foot || at.foot;
        }
    }
    const bool on = all.stage != 0 || all.foot;
    if (event->type() == QEvent::TouchBegin && !on) {
        event->ignore(); // it is meant for the box below the keys
        return false;
    }
    if (event->type() == QEvent::TouchBegin) {
        pointerDown(all);
    } else if (on && !stays_->isChecked()) {
        pointer_ = all;
        settle();
    } else if (!on) {
        pointerUp();
    }
    event->accept();
    return true;
}

void SwitchBox::hideEvent(QHideEvent* event) {
    pointer_ = {};
    keys_.clear();
    settle();
    QGroupBox::hideEvent(event);
}

SwitchBox::Place SwitchBox::placeAt(QPoint global) const {
    const auto over = [global](const QWidget* key) {
        const QRect around = key->rect().adjusted(-kSlack, 0, kSlack, 0);
        return around.contains(key->mapFromGlobal(global));
    };
    if (foot_->rect().contains(foot_->mapFromGlobal(global))) {
        return {0, true};
    }
    return {over(expose_) ? 2 : over(prepare_) ? 1 : 0, false};
}

void SwitchBox::pointerDown(Place at) {
    if (stays_->isChecked()) {
        put(at);
    } else {
        pointer_ = at;
        settle();
    }
}

/// It stays pressed until it, or another key of the switch, is pressed.
void SwitchBox::put(Place at) {
    if (at.foot) {
        put_.foot = !put_.foot;
    } else {
        put_.stage = put_.stage == at.stage ? 0 : at.stage;
    }
    settle();
}

void SwitchBox::pointerMoved(Place at) {
    // A hand slides along its switch, and off it, but not onto another one.
    if (pointer_.stage != 0) {
        pointer_.stage = at.stage;
        if (at.stage == 0) {
            pointer_ = {};
        }
        settle();
    }
}

void SwitchBox::pointerUp() {
    pointer_ = {};
    settle();
}

/// Brings the machine's switches to where hand, foot and keyboard hold them.
void SwitchBox::settle() {
    const int keys = keys_.held();
    const int byKey = (keys & kExposeKey) != 0 ? 2 : (keys & kPrepareKey) != 0 ? 1 : 0;
    const int stage = std::max({pointer_.stage, put_.stage, byKey});
    const bool foot = pointer_.foot || put_.foot || (keys & kFootKey) != 0;
    prepare_->setDown(stage >= 1);
    expose_->setDown(stage == 2);
    foot_->setDown(foot);
    if (stage != stage_) {
        const bool press = stage > stage_;
        stage_ = stage;
        obey("hand " + std::to_string(stage), press);
    }
    if (foot != footDown_) {
        footDown_ = foot;
        obey(foot ? "fluoro on" : "fluoro off", foot);
    }
}

/// A press that had no effect stays told until the next one; letting go says nothing.
void SwitchBox::obey(const std::string& command, bool press) {
    const std::string answer = station_.obey(command);
    if (press) {
        complaint_->tell(answer.starts_with('?')
                             ? tr("No effect: %1").arg(QString::fromStdString(answer.substr(1)))
                             : QString(),
                         true);
    }
}

} // namespace desk
