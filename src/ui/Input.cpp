#include "ui/Input.h"

#include <algorithm>
#include <cassert>

#include "base/Numbers.h"
#include "ui/ControlHost.h"

namespace quillon {

bool liesOn(const Control* control, const Control& ground) {
    while (control != nullptr && control != &ground) {
        control = control->container();
    }
    return control != nullptr;
}

void Input::run(const Control& control, const std::function<void()>& handler) {
    if (!handler) {
        return;
    }
    struct Hand {
        std::vector<const Control*>& all;
        std::size_t depth;
        ~Hand() {
            assert(all.size() == depth); // gestures end in the reverse order of their begin, faults or not
            all.pop_back();
        }
    };
    hands_.push_back(&control);
    const Hand hand{hands_, hands_.size()};
    // A handler may remove its own control, so what is needed afterwards is copied.
    const auto copy = handler;
    const std::string name = nameOf(control);
    if (const ControlHost* host = control.host()) {
        host->schedule().handlers().run({Cause::Kind::Key, name}, copy);
    } else {
        copy();
    }
}

bool Input::reachable(const Control& control) const {
    if (boxes_ > 0) {
        return false;
    }
    for (const Control* at = &control; at != nullptr; at = at->container()) {
        if (at->locked() || !at->has(Property::Visible) || !at->visible() ||
            (at->has(Property::Enabled) && !at->enabled())) {
            return false;
        }
        if (at->container() == nullptr && at->kind() != Kind::Form) {
            return false; // taken off the screen
        }
    }
    return true;
}

bool Input::press(Control& control) {
    if (!takes(control)) {
        return false;
    }
    tell(Gesture::Press, control);
    std::erase_if(held_, [&](const Held& each) { return each.control == &control; });
    held_.push_back({&control, control.timesTaken()});
    run(control, control.on.press);
    return true;
}

void Input::release(Control& control, bool over) {
    const auto held =
        std::find_if(held_.begin(), held_.end(), [&](const Held& each) { return each.control == &control; });
    if (held == held_.end()) {
        return;
    }
    const bool kept = held->timesTaken == control.timesTaken();
    held_.erase(held);
    tell(Gesture::Release, control, over ? "" : "outside");
    // A key without a press handler acts here: only under the finger, and only while its page is shown.
    if (control.on.press || (over && control.shown())) {
        run(control, control.on.release);
    }
    run(control, over && kept && takes(control) ? control.on.click : control.on.abandon);
}

void Input::releaseAll() {
    while (!held_.empty()) {
        release(*held_.back().control, false);
    }
}

bool Input::click(Control& control) {
    if (!press(control)) {
        return false;
    }
    release(control);
    return true;
}

bool Input::type(Control& control, std::string_view text) {
    if (!reachable(control) || control.kind() != Kind::TextBox || control.readOnly()) {
        return false;
    }
    tell(Gesture::Type, control, text);
    control.setText(text);
    run(control, control.on.change);
    return true;
}

bool Input::select(Control& control, std::string_view entry) {
    if (!reachable(control) || control.kind() != Kind::List ||
        std::find(control.items().begin(), control.items().end(), entry) == control.items().end()) {
        return false;
    }
    tell(Gesture::Select, control, entry);
    control.setText(entry);
    run(control, control.on.click);
    return true;
}

bool Input::drag(Control& control, std::int32_t value) {
    if (!reachableSlider(control)) {
        return false;
    }
    control.setValue(value);
    run(control, control.on.change);
    return true;
}

bool Input::slide(Control& control, std::int32_t value) {
    if (!reachableSlider(control)) {
        return false;
    }
    tell(Gesture::Slide, control, decimalText(value));
    drag(control, value);
    run(control, control.on.release);
    return true;
}

void Input::tell(Gesture gesture, const Control& control, std::string_view value) const {
    if (onGesture) {
        onGesture(gesture, control, value);
    }
}

bool Input::reachableSlider(const Control& control) const {
    return reachable(control) && control.kind() == Kind::Slider;
}

void Input::cancel() {
    // If a handler ends with a fault, the other controls stay held and are let go later.
    while (!held_.empty()) {
        const Control& control = *held_.front().control;
        held_.erase(held_.begin());
        run(control, control.on.cancel);
    }
}

void Input::boxOpened() {
    cancel();
    ++boxes_;
}

void Input::forget(const Control& control) {
    std::erase_if(held_, [&control](const Held& each) { return liesOn(each.control, control); });
    for (const Control*& hand : hands_) {
        hand = liesOn(hand, control) ? nullptr : hand;
    }
}

} // namespace quillon
