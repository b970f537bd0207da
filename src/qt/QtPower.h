#pragma once

#include "runtime/Platform.h"

namespace quillon {

/// Restarts or switches off this PC through its system's own service.
class QtPower final : public PowerControl {
public:
    [[nodiscard]] Refusal exitWindows(bool restart, bool force) override;
};

} // namespace quillon
