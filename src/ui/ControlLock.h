#pragma once

#include <memory>
#include <vector>

#include "ui/Control.h"

namespace quillon {

/// Takes controls away from the operator while it lives: neither they nor what lies on them can be reached,
/// and their Enabled reads False, that of a frame excepted. What the program writes to Enabled meanwhile is
/// kept and holds once the last lock on the control has gone. A control that goes meanwhile leaves it.
class ControlLock {
public:
    ControlLock() = default;
    explicit ControlLock(const std::vector<Control*>& controls);
    ControlLock(ControlLock&& other) noexcept;
    ControlLock& operator=(ControlLock&& other) noexcept;
    /// Tells no window: what it locked may be on its way out as well.
    ~ControlLock();

    void release();

private:
    struct Locked {
        Control* control;
        std::weak_ptr<int> locks; ///< gone with the control
    };
    void unlock(bool told);

    std::vector<Locked> controls_;
};

} // namespace quillon
