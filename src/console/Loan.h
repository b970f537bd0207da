#pragma once

#include "link/TorvaneSerial.h"

namespace quillon {

/// The machine with its users. It can be given to them in calibration only, and taken back in normal
/// operation only: asked for earlier, the return waits for that.
class Loan {
public:
    explicit Loan(TorvaneSerialV3_07_QLC1& link) : link_(link) {}
    [[nodiscard]] bool lent() const { return link_.TempUserMode() && !returning_; }
    void lend() {
        returning_ = false;
        link_.setTempUserMode(true);
    }
    void takeBack() {
        link_.setTempUserMode(false);
        returning_ = link_.TempUserMode();
    }
    /// Before anything else is made of a report.
    void reported(Phase phase) {
        if (phase == Phase::NormalOperation && returning_) {
            takeBack();
        }
    }

private:
    TorvaneSerialV3_07_QLC1& link_;
    bool returning_ = false;
};

} // namespace quillon
