#include "qt/InputRouter.h"

#include <algorithm>

#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QTouchEvent>

#include "qt/Keypad.h"
#include "qt/ListView.h"
#include "qt/RecordsKey.h"
#include "qt/Screen.h"
#include "qt/SliderView.h"
#include "qt/TabOrder.h"

namespace quillon {

namespace {

constexpr int kMouse = -1;
constexpr int kSpaceKey = -2; // and the others that press what is in focus
constexpr int kEscapeKey = -3;

bool isBelow(const Control* control, const Control& top) {
    while (control != nullptr && control != &top) {
        control = control->container();
    }
    return control != nullptr;
}

bool presses(int key) {
    return key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter;
}

/// -1, 1, or 0 for a key that is no arrow.
std::ptrdiff_t arrowStep(int key) {
    if (key == Qt::Key_Left || key == Qt::Key_Up) {
        return -1;
    }
    return key == Qt::Key_Right || key == Qt::Key_Down ? 1 : 0;
}

} // namespace

InputRouter::InputRouter(Screen& screen, ControlHost& form, Input& input)
    : screen_(screen), form_(form), input_(input) {}

void InputRouter::forget(const Control& control) {
    std::erase_if(held_, [&control](const auto& entry) { return isBelow(entry.second.control, control); });
    if (Keypad* pad = screen_.keypad(); pad != nullptr && isBelow(pad->box(), control)) {
        pad->close();
    }
    if (focus_ != nullptr && isBelow(focus_, control)) {
        focus_ = nullptr;
        focusMarked_ = false;
    }
}

bool InputRouter::eventFilter(QObject* /*window*/, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease: {
        const auto& mouse = static_cast<const QMouseEvent&>(*event);
        if (mouse.button() != Qt::LeftButton) {
            return false;
        }
        const QPoint place = mouse.position().toPoint();
        return event->type() == QEvent::MouseButtonPress ? press(kMouse, place) : release(kMouse, place);
    }
    case QEvent::MouseButtonDblClick: // comes on top of the second press
        return screen_.controlAt(static_cast<const QMouseEvent*>(event)->position().toPoint()).kind() !=
               Kind::TextBox;
    case QEvent::MouseMove:
        return move(kMouse, static_cast<const QMouseEvent*>(event)->position().toPoint());
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
        return touch(static_cast<const QTouchEvent&>(*event));
    case QEvent::KeyPress:
        return keyPressed(static_cast<const QKeyEvent&>(*event));
    case QEvent::KeyRelease:
        return keyReleased(static_cast<const QKeyEvent&>(*event));
    case QEvent::TouchCancel:
    case QEvent::FocusOut:
    case QEvent::WindowBlocked:
    case QEvent::Hide:
        letGoOfAll();
        return false;
    default:
        return false;
    }
}

bool InputRouter::press(int finger, QPoint place) {
    letGo(finger, false); // a release that the platform lost
    if (Keypad* pad = screen_.keypad(); pad != nullptr && pad->covers(place)) {
        pad->press(finger, place);
        return true;
    }
    if (RecordsKey* key = screen_.recordsKey(); key != nullptr && key->press(finger, place)) {
        return true;
    }
    Control& control = screen_.controlAt(place);
    const bool text = control.kind() == Kind::TextBox;
    if (!screen_.admits(control)) {
        return !text;
    }
    setFocus(takesKeyboard(control.kind()) ? &control : nullptr, false);
    if (control.kind() == Kind::Slider) {
        grip(finger, control, place);
    } else {
        hold(finger, control);
    }
    if (text) {
        openKeypad(finger, control);
    }
    return !text;
}

void InputRouter::openKeypad(int finger, const Control& box) {
    Keypad* pad = screen_.keypad();
    const auto held = held_.find(finger);
    if (pad != nullptr && pad->openFor(box) && held != held_.end()) {
        held->second.opened = true;
    }
}

bool InputRouter::move(int finger, QPoint place) {
    if ((screen_.keypad() != nullptr && screen_.keypad()->holds(finger)) ||
        (screen_.recordsKey() != nullptr && screen_.recordsKey()->holds(finger))) {
        return true;
    }
    const auto entry = held_.find(finger);
    if (entry == held_.end()) {
        return false;
    }
    const Kind kind = entry->second.control->kind();
    if (kind == Kind::Slider) {
        dragTo(entry->second, place);
    }
    return kind != Kind::TextBox;
}

bool InputRouter::release(int finger, QPoint place) {
    if ((screen_.keypad() != nullptr && screen_.keypad()->release(finger, place)) ||
        (screen_.recordsKey() != nullptr && screen_.recordsKey()->release(finger, place))) {
        return true;
    }
    const auto entry = held_.find(finger);
    if (entry == held_.end()) {
        return false;
    }
    const bool text = entry->second.control->kind() == Kind::TextBox;
    if (const ControlView* view = screen_.view(*entry->second.control);
        view != nullptr && entry->second.opened) {
        // The first digit replaces what stands there; another touch places the cursor.
        if (auto* line = qobject_cast<QLineEdit*>(view->editor())) {
            line->selectAll();
        }
    }
    letGo(finger, &screen_.controlAt(place) == entry->second.control);
    return !text;
}

bool InputRouter::touch(const QTouchEvent& event) {
    if (event.type() == QEvent::TouchBegin && !event.points().isEmpty() &&
        screen_.controlAt(event.points().first().scenePosition().toPoint()).kind() == Kind::TextBox) {
        return false; // the platform makes a mouse of it, which a text box understands
    }
    for (const QEventPoint& point : event.points()) {
        const QPoint place = point.scenePosition().toPoint();
        if (point.state() == QEventPoint::Pressed) {
            press(point.id(), place);
        } else if (point.state() == QEventPoint::Updated) {
            move(point.id(), place);
        } else if (point.state() == QEventPoint::Released) {
            release(point.id(), place);
        }
    }
    return true;
}

void InputRouter::hold(int finger, Control& control) {
    // Noted before the handler runs: it may open a box or take the control away.
    Held& held = held_[finger];
    held = {&control, {}};
    held.since.start();
    if (ControlView* view = screen_.view(control)) {
        view->setPressed(true);
    }
    if (control.holdTime() > 0) {
        screen_.tellHold(control);
    }
    if (control.kind() != Kind::List && control.kind() != Kind::Slider) {
        input_.press(control);
    }
}

void InputRouter::letGo(int finger, bool over) {
    const auto entry = held_.find(finger);
    if (entry == held_.end()) {
        return;
    }
    const Held held = entry->second;
    held_.erase(entry);
    Control& control = *held.control;
    ControlView* view = screen_.view(control);
    if (view != nullptr) {
        view->setPressed(false);
    }
    if (control.kind() == Kind::Slider) {
        letGoOfSlider(held);
    } else if (control.kind() != Kind::List) {
        if (over && !longEnough(held)) {
            over = false;
            screen_.tellHold(control);
        } else if (over && control.holdTime() > 0) {
            screen_.tellNothing();
        }
        input_.release(control, over);
    } else if (over && view != nullptr) {
        static_cast<ListView*>(view)->open();
    }
}

bool InputRouter::longEnough(const Held& held) const {
    return held.since.elapsed() >= held.control->holdTime();
}

void InputRouter::letGoOfAll() {
    if (Keypad* pad = screen_.keypad()) {
        pad->letGoOfAll();
    }
    if (RecordsKey* key = screen_.recordsKey()) {
        key->letGo();
    }
    while (!held_.empty()) {
        letGo(held_.begin()->first, false);
    }
}

bool InputRouter::keyPressed(const QKeyEvent& event) {
    const auto modifiers = event.modifiers() & ~Qt::KeyboardModifiers(Qt::ShiftModifier | Qt::KeypadModifier);
    if (modifiers != Qt::NoModifier) {
        return false;
    }
    if (event.key() == Qt::Key_Tab || event.key() == Qt::Key_Backtab) {
        moveFocus(event.key() == Qt::Key_Tab ? 1 : -1);
        return true;
    }
    if (event.key() == Qt::Key_Escape) {
        return escapePressed(event);
    }
    if (RecordsKey* key = screen_.recordsKey(); key != nullptr && event.key() == Qt::Key_F2) {
        if (!event.isAutoRepeat()) {
            key->act();
        }
        return true;
    }
    if (focus_ == nullptr || !focusMarked_ || focus_->kind() == Kind::TextBox) {
        return false;
    }
    if (presses(event.key())) {
        // A held key repeats by the panel's own clock and not by the keyboard's.
        if (!event.isAutoRepeat() && !held_.contains(kSpaceKey) && screen_.admits(*focus_)) {
            pressing_ = event.key();
            hold(kSpaceKey, *focus_);
        }
        return true;
    }
    if (focus_->kind() == Kind::Slider && (event.key() == Qt::Key_Left || event.key() == Qt::Key_Right)) {
        if (held_.contains(kSpaceKey) || screen_.admits(*focus_)) {
            pressing_ = event.key();
            hold(kSpaceKey, *focus_);
            held_[kSpaceKey].moved = true;
            input_.drag(*focus_, focus_->value() + (event.key() == Qt::Key_Right ? 1 : -1));
        }
        return true;
    }
    return moveInGroup(arrowStep(event.key()));
}

bool InputRouter::escapePressed(const QKeyEvent& event) {
    if (event.isAutoRepeat()) {
        return true; // one press answers one question
    }
    if (held_.contains(kSpaceKey)) {
        letGo(kSpaceKey, false);
        return true;
    }
    if (Keypad* pad = screen_.keypad(); pad != nullptr && pad->box() != nullptr) {
        pad->close();
        return true;
    }
    Control* key = refusingKey();
    if (key != nullptr && !held_.contains(kEscapeKey) && screen_.admits(*key)) {
        hold(kEscapeKey, *key);
    }
    return key != nullptr;
}

bool InputRouter::keyReleased(const QKeyEvent& event) {
    if (event.isAutoRepeat()) {
        return false;
    }
    const int finger = event.key() == Qt::Key_Escape ? kEscapeKey : kSpaceKey;
    if (!held_.contains(finger) || (finger == kSpaceKey && event.key() != pressing_)) {
        return false;
    }
    letGo(finger, true);
    return true;
}

Control* InputRouter::refusingKey() const {
    std::vector<Control*> found = keyboardOrder(form_, input_);
    std::erase_if(found, [](const Control* each) {
        return each->kind() != Kind::Button || each->role() != Role::Decline;
    });
    return found.size() == 1 ? found.front() : nullptr;
}

bool InputRouter::moveInGroup(std::ptrdiff_t step) {
    Control* control = besideInGroup(keyboardOrder(form_, input_), focus_, step);
    if (control != nullptr) {
        setFocus(control, true);
    }
    return control != nullptr;
}

void InputRouter::moveFocus(int step) {
    const std::vector<Control*> order = tabStops(keyboardOrder(form_, input_), focus_);
    if (order.empty()) {
        setFocus(nullptr, true);
        return;
    }
    const auto count = static_cast<std::ptrdiff_t>(order.size());
    const auto present = std::find(order.begin(), order.end(), focus_) - order.begin();
    std::ptrdiff_t next = (present + step + count) % count;
    if (present == count) {
        next = step > 0 ? 0 : count - 1;
    }
    setFocus(order[static_cast<std::size_t>(next)], true);
}

void InputRouter::setFocus(Control* control, bool byKeyboard) {
    letGo(kSpaceKey, false);
    if (ControlView* before = focus_ == nullptr ? nullptr : screen_.view(*focus_)) {
        before->setFocusMark(false);
    }
    if (Keypad* pad = screen_.keypad(); pad != nullptr && pad->box() != control) {
        pad->close();
    }
    focus_ = control;
    focusMarked_ = control != nullptr && byKeyboard;
    ControlView* view = control == nullptr ? nullptr : screen_.view(*control);
    if (view != nullptr) {
        view->setFocusMark(byKeyboard);
    }
    if (view != nullptr && view->editor() != nullptr) {
        view->editor()->setFocus(byKeyboard ? Qt::TabFocusReason : Qt::MouseFocusReason);
    } else {
        screen_.window().setFocus();
    }
}

/// Only the handle is dragged: a touch beside it must not throw the value away.
void InputRouter::grip(int finger, Control& slider, QPoint place) {
    const auto* view = dynamic_cast<const SliderView*>(screen_.view(slider));
    if (view == nullptr) {
        return;
    }
    if (view->isOnHandle(view->mapFrom(&screen_.window(), place))) {
        hold(finger, slider);
        held_[finger].x = place.x();
        held_[finger].gripped = slider.value();
    } else {
        screen_.tellHandle(slider);
    }
}

void InputRouter::dragTo(Held& held, QPoint place) {
    if (const auto* view = dynamic_cast<const SliderView*>(screen_.view(*held.control))) {
        const std::int32_t value = view->dragged(held.gripped, place.x() - held.x);
        held.moved = held.moved || value != held.gripped;
        input_.drag(*held.control, value);
    }
}

/// A handle that was touched and not moved says nothing.
void InputRouter::letGoOfSlider(const Held& held) {
    if (held.moved) {
        input_.slide(*held.control, held.control->value());
    }
}

} // namespace quillon
