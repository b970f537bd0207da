#pragma once

#include "console/ConsoleContext.h"
#include "console/Runs.h"

namespace quillon {

/// The timers of the runs, and the waits that may outlive their run.
class RunTimers {
public:
    explicit RunTimers(ConsoleHost& console) : console_(console) {}

    [[nodiscard]] bool running(ConsoleTimer timer) const { return console_.timer(timer).running(); }
    void stopOf(Run run);
    /// One of the run's timers runs.
    [[nodiscard]] bool anyOf(Run run) const;
    /// No timer of another run runs, except waits that may outlive their run.
    [[nodiscard]] bool onlyOf(Run run) const;
    void stopWaits();
    void stopWaitsBeforeNextRun();

private:
    ConsoleHost& console_;
};

} // namespace quillon
