#pragma once

#include "console/ConsoleContext.h"
#include "console/Runs.h"

namespace quillon {

/// The timers of the runs, and the waits that may outlive theirs.
class RunTimers {
public:
    explicit RunTimers(ConsoleHost& console) : console_(console) {}

    [[nodiscard]] bool running(ConsoleTimer timer) const { return console_.timer(timer).running(); }
    void stopOf(Run run);
    /// Any of the run's.
    [[nodiscard]] bool anyOf(Run run) const;
    /// None of another run's but the waits that may outlive theirs.
    [[nodiscard]] bool onlyOf(Run run) const;
    void stopWaits();
    void stopWaitsBeforeNextRun();

private:
    ConsoleHost& console_;
};

} // namespace quillon
