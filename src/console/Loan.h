#pragma once

#include "link/TorvaneSerial.h"

namespace quillon {

/// User mode: the machine is lent to its users. It can begin in calibration only, and end in normal operation
/// only: asked for earlier, the end waits for that.
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
    /// To be called before anything else reacts to the report.
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
