#pragma once

#include <string>

#include "console/Runs.h"
#include "runtime/Signal.h"

namespace quillon {

class Handlers;
class ServiceSession;

/// Reports each change of the run, from which to which and by what cause, so that a fault in the field can be
/// understood.
class RunTrace {
public:
    RunTrace(const Handlers& handlers, ServiceSession& session);

    /// A line for a developer: "run nothing -> entering configuration by key Quillon.cmbConfiguration".
    Signal<std::string> told;

private:
    void look();

    const Handlers& handlers_;
    ServiceSession& session_;
    Run run_ = Run::None;
    bool lost_ = false;
};

} // namespace quillon
