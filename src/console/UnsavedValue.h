#pragma once

#include "console/PendingKeys.h"

namespace quillon {

/// Whether the calibration value that the operator has changed was stored. It is known only from the commands
/// that were sent and acknowledged.
class UnsavedValue {
public:
    UnsavedValue(TorvaneSerialV3_07_QLC1& link, ServiceSession& session, PendingKeys& pending);

    /// Changed, and not stored yet.
    [[nodiscard]] bool stands() const { return stands_; }
    /// The point or the mode was left with it, and nothing was sent nor begun since.
    [[nodiscard]] bool wasLeft() const { return wasLeft_; }

    Signal<> changed;

private:
    void sent(const Control& key);
    void left(const Control& key, bool done);
    void set(bool stands, bool wasLeft);

    bool stands_ = false;
    bool wasLeft_ = false;
};

} // namespace quillon
