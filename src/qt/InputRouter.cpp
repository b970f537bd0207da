#include "qt/InputRouter.h"

#include <algorithm>

#include <QKeyEvent>
#include <QMouseEvent>
#include <QTouchEvent>

#include "qt/ListView.h"
#include "qt/Screen.h"
#include "qt/SliderView.h"

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

bool takesKeyboard(Kind kind) {
    return kind == Kind::Button || kind == Kind::TextBox || kind == Kind::List || kind == Kind::Slider;
}

void collect(const ControlHost& host, const Input& input, std::vector<Control*>& found) {
    for (const auto& control : host.controls()) {
        if (takesKeyboard(control->kind()) && input.reachable(*control)) {
            found.push_back(control.get());
        }
        if (const auto* inner = dynamic_cast<const ControlHost*>(control.get())) {
            collect(*inner, input, found);
        }
    }
}

} // namespace

InputRouter::InputRouter(Screen& screen, ControlHost& form, Input& input)
    : screen_(screen), form_(form), input_(input) {}

void InputRouter::forget(const Control& control) {
    std::erase_if(held_, [&control](const auto& entry) { return isBelow(entry.second, control); });
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
    Control& control = screen_.controlAt(place);
    const bool text = control.kind() == Kind::TextBox;
    if (input_.reachable(control)) {
        setFocus(takesKeyboard(control.kind()) ? &control : nullptr, false);
        hold(finger, control);
        if (control.kind() == Kind::Slider) {
            input_.drag(control, sliderValue(control, place));
        }
    }
    return !text;
}

bool InputRouter::move(int finger, QPoint place) {
    const auto entry = held_.find(finger);
    if (entry == held_.end()) {
        return false;
    }
    Control& control = *entry->second;
    if (control.kind() == Kind::Slider) {
        input_.drag(control, sliderValue(control, place));
    }
    return control.kind() != Kind::TextBox;
}

bool InputRouter::release(int finger, QPoint place) {
    const auto entry = held_.find(finger);
    if (entry == held_.end()) {
        return false;
    }
    const bool text = entry->second->kind() == Kind::TextBox;
    letGo(finger, &screen_.controlAt(place) == entry->second);
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
    held_[finger] = &control;
    if (ControlView* view = screen_.view(control)) {
        view->setPressed(true);
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
    Control& control = *entry->second;
    held_.erase(entry);
    ControlView* view = screen_.view(control);
    if (view != nullptr) {
        view->setPressed(false);
    }
    if (control.kind() == Kind::Slider) {
        input_.slide(control, control.value());
    } else if (control.kind() != Kind::List) {
        input_.release(control, over);
    } else if (over && view != nullptr) {
        static_cast<ListView*>(view)->open();
    }
}

void InputRouter::letGoOfAll() {
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
    if (focus_ == nullptr || !focusMarked_ || focus_->kind() == Kind::TextBox) {
        return false;
    }
    if (presses(event.key())) {
        // A held key repeats by the panel's own clock and not by the keyboard's.
        if (!event.isAutoRepeat() && !held_.contains(kSpaceKey) && input_.reachable(*focus_)) {
            pressing_ = event.key();
            hold(kSpaceKey, *focus_);
        }
        return true;
    }
    if (focus_->kind() == Kind::Slider && (event.key() == Qt::Key_Left || event.key() == Qt::Key_Right)) {
        pressing_ = event.key();
        hold(kSpaceKey, *focus_);
        input_.drag(*focus_, focus_->value() + (event.key() == Qt::Key_Right ? 1 : -1));
        return true;
    }
    return false;
}

bool InputRouter::escapePressed(const QKeyEvent& event) {
    if (event.isAutoRepeat()) {
        return true; // one press answers one question
    }
    if (held_.contains(kSpaceKey)) {
        letGo(kSpaceKey, false);
        return true;
    }
    Control* key = refusingKey();
    if (key != nullptr && !held_.contains(kEscapeKey)) {
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
    std::vector<Control*> found = keyboardOrder();
    std::erase_if(found, [](const Control* each) {
        return each->kind() != Kind::Button || each->role() != Role::Decline;
    });
    return found.size() == 1 ? found.front() : nullptr;
}

std::vector<Control*> InputRouter::keyboardOrder() const {
    std::vector<Control*> order;
    collect(form_, input_, order);
    return order;
}

void InputRouter::moveFocus(int step) {
    const std::vector<Control*> order = keyboardOrder();
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

std::int32_t InputRouter::sliderValue(const Control& control, QPoint place) const {
    const auto* view = dynamic_cast<const SliderView*>(screen_.view(control));
    return view == nullptr ? control.value() : view->valueAt(view->mapFrom(&screen_.window(), place));
}

} // namespace quillon
