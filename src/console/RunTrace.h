#pragma once

#include <string>

#include "console/Runs.h"
#include "runtime/Signal.h"

namespace quillon {

class Handlers;
class ServiceSession;

/// Tells each change of what the console is doing, from what to what and for what cause, so that a fault that
/// was met in the field can be read.
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
