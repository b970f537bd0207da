#pragma once

#include <functional>
#include <memory>

#include <QSocketNotifier>

#include "sim/PseudoTerminal.h"

namespace desk {

/// SIGINT, SIGTERM and SIGHUP as something to read. Made before the first thread of the toolkit, or one of
/// those gets them; `listen` when there is an event loop.
class EndSignals {
public:
    EndSignals();

    void listen(std::function<void()> asked);

    /// For a child: signals do to it what they do to any program.
    static void restore();

private:
    simulator::Descriptor signals_;
    std::unique_ptr<QSocketNotifier> notifier_;
};

} // namespace desk
