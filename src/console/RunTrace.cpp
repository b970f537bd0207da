#include "console/RunTrace.h"

#include <utility>

#include "console/ServiceSession.h"
#include "runtime/Handlers.h"

namespace quillon {

RunTrace::RunTrace(const Handlers& handlers, ServiceSession& session)
    : handlers_(handlers), session_(session) {
    session_.changed.observe([this] { look(); });
}

void RunTrace::look() {
    const Run before = std::exchange(run_, session_.run());
    const bool wasLost = std::exchange(lost_, session_.generator().isLost());
    if (run_ == before) {
        return;
    }
    std::string line("run ");
    line.append(rowOf(before).name).append(" -> ").append(rowOf(run_).name).append(" by ");
    if (lost_ && !wasLost) {
        line += "the loss of the generator";
    } else if (const Cause* cause = handlers_.running()) {
        line += textOf(*cause);
    } else {
        line += "the window or the system";
    }
    told.raise(line);
}

} // namespace quillon
