#pragma once

#include "runtime/Platform.h"

namespace quillon {

/// Restarts or switches off a PC that runs Windows.
class WindowsPower final : public PowerControl {
public:
    [[nodiscard]] Refusal exitWindows(bool restart, bool force) override;
};

} // namespace quillon
