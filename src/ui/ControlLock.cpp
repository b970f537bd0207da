#include "ui/ControlLock.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace quillon {

ControlLock::ControlLock(std::vector<Control*> controls) : controls_(std::move(controls)) {
    for (Control* control : controls_) {
        control->locks_.push_back(this);
        control->notify();
    }
}

ControlLock& ControlLock::operator=(ControlLock&& other) noexcept {
    if (this != &other) {
        release();
        controls_ = std::exchange(other.controls_, {});
        for (Control* control : controls_) {
            std::replace(control->locks_.begin(), control->locks_.end(), &other, this);
        }
    }
    return *this;
}

ControlLock::~ControlLock() {
    for (Control* control : controls_) {
        giveBack(*control);
    }
}

/// It is on the control once, until here.
void ControlLock::giveBack(Control& control) {
    [[maybe_unused]] const auto locks = std::erase(control.locks_, this);
    assert(locks == 1);
}

void ControlLock::release() {
    for (Control* control : std::exchange(controls_, {})) {
        giveBack(*control);
        control->notify();
    }
}

void ControlLock::forget(const Control& control) {
    std::erase(controls_, &control);
}

} // namespace quillon
