#include "ui/ControlLock.h"

#include <utility>

namespace quillon {

ControlLock::ControlLock(std::vector<Control*> controls) : controls_(std::move(controls)) {
    add(1);
}

ControlLock::ControlLock(ControlLock&& other) noexcept : controls_(std::exchange(other.controls_, {})) {}

ControlLock& ControlLock::operator=(ControlLock&& other) noexcept {
    if (this != &other) {
        release();
        controls_ = std::exchange(other.controls_, {});
    }
    return *this;
}

ControlLock::~ControlLock() {
    for (Control* control : controls_) {
        --control->locks_;
    }
}

void ControlLock::release() {
    add(-1);
    controls_.clear();
}

void ControlLock::add(int count) {
    for (Control* control : controls_) {
        control->locks_ += count;
        control->notify();
    }
}

} // namespace quillon
