#pragma once

#include <vector>

#include "ui/Control.h"

namespace quillon {

/// Takes controls away from the operator while it lives: neither they nor what lies on them can be reached,
/// and their Enabled reads False, that of a frame excepted. What the program writes to Enabled meanwhile is
/// kept and holds once the last lock on the control has gone.
class ControlLock {
public:
    ControlLock() = default;
    explicit ControlLock(std::vector<Control*> controls);
    ControlLock& operator=(ControlLock&& other) noexcept;
    /// Tells no window: what it locked may be on its way out as well.
    ~ControlLock();

    void release();
    /// The control goes away.
    void forget(const Control& control);

private:
    void giveBack(Control& control);

    std::vector<Control*> controls_;
};

} // namespace quillon
