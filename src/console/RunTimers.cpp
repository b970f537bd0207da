#include "console/RunTimers.h"

#include <algorithm>

namespace quillon {

void RunTimers::stopOf(Run run) {
    for (const ConsoleTimer timer : rowOf(run).timers) {
        if (!timer.empty()) {
            console_.timer(timer).stop();
        }
    }
}

bool RunTimers::anyOf(Run run) const {
    const auto& timers = rowOf(run).timers;
    return std::any_of(timers.begin(), timers.end(),
                       [this](ConsoleTimer timer) { return !timer.empty() && running(timer); });
}

bool RunTimers::onlyOf(Run run) const {
    const auto among = [](const auto& timers, std::string_view timer) {
        return std::any_of(timers.begin(), timers.end(),
                           [timer](std::string_view each) { return each == timer; });
    };
    const auto outlives = [](std::string_view timer) {
        const auto rows = waitRows();
        return std::any_of(rows.begin(), rows.end(),
                           [timer](const WaitRow& row) { return row.timer == timer; });
    };
    for (std::size_t other = 0; other < kRuns; ++other) {
        for (const ConsoleTimer timer : rowOf(static_cast<Run>(other)).timers) {
            if (!timer.empty() && running(timer) && !among(rowOf(run).timers, timer) && !outlives(timer)) {
                return false;
            }
        }
    }
    return true;
}

void RunTimers::stopWaits() {
    for (const WaitRow& wait : waitRows()) {
        console_.timer(wait.timer).stop();
    }
}

void RunTimers::stopWaitsBeforeNextRun() {
    for (const WaitRow& wait : waitRows()) {
        if (wait.byNextRun) {
            console_.timer(wait.timer).stop();
        }
    }
}

} // namespace quillon
