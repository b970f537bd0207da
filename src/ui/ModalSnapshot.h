#pragma once

#include <vector>

#include "ui/ControlHost.h"

namespace quillon {

/// Makes a host modal for a panel that lies on it: saves what is enabled, disables it, and gives it back.
/// Timers, frames, panels and whatever has no enabled state are passed over in both walks.
class ModalSnapshot {
public:
    void take(ControlHost& host);
    /// Gives the states back and forgets them.
    void restore(ControlHost& host);

private:
    std::vector<bool> enabled_;
};

} // namespace quillon
