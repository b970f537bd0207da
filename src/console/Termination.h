#pragma once

#include <vector>

#include "console/Closing.h"

namespace quillon {

/// The system wants the program to end. What the console took is given back, the mode is left as far as its
/// commands go out within 3 s, and the console says goodbye whatever became of it. Nothing else happens
/// meanwhile.
class Termination {
public:
    Termination(ConsoleContext& context, ServiceSession& session, Closing& closing);

    /// No effect when the console closes already.
    void LeaveNow();

private:
    /// Where the generator stands or may soon stand.
    [[nodiscard]] std::vector<Phase> modesToLeave() const;
    /// Sends what leads out of that phase.
    void leave(Phase phase);
    void stopAllTimers();
    void phaseReported(Phase phase);

    ConsoleContext& context_;
    ServiceSession& session_;
    Closing& closing_;
    ConsoleScreen screen_;
    bool leaving_ = false;
    Phase stood_ = Phase::None; ///< the phase that was left last
};

} // namespace quillon
