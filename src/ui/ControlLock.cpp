#include "ui/ControlLock.h"

#include <utility>

namespace quillon {

ControlLock::ControlLock(const std::vector<Control*>& controls) {
    for (Control* control : controls) {
        if (!control->locks_) {
            control->locks_ = std::make_shared<int>(0);
        }
        ++*control->locks_;
        controls_.push_back({control, control->locks_});
        control->notify();
    }
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
    unlock(false);
}

void ControlLock::release() {
    unlock(true);
}

void ControlLock::unlock(bool told) {
    for (const Locked& locked : std::exchange(controls_, {})) {
        if (const std::shared_ptr<int> locks = locked.locks.lock()) {
            --*locks;
            if (told) {
                locked.control->notify();
            }
        }
    }
}

} // namespace quillon
