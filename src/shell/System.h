#pragma once

#include "runtime/Platform.h"

namespace quillon {

/// What the application may do to the PC it runs on.
class System {
public:
    explicit System(PowerControl& power) : power_(power) {}

    /// Shuts the PC down or restarts it; `force` does not wait for other programs.
    [[nodiscard]] Refusal ExitWindows(bool restart, bool force) { return power_.exitWindows(restart, force); }

private:
    PowerControl& power_;
};

} // namespace quillon
