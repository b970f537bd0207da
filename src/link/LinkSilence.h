#pragma once

#include "runtime/Schedule.h"
#include "runtime/Signal.h"
#include "ui/ReportAge.h"

namespace quillon {

/// Detects a generator that has missed two polls, long before it counts as lost. Only after it was heard for
/// the first time.
class LinkSilence {
public:
    explicit LinkSilence(const Schedule& schedule) : schedule_(schedule) {}

    /// Something came.
    void heard();
    /// Another poll goes out, which is number `unanswered` since something came.
    void polled(int unanswered);
    /// The port was opened or closed: nothing can be heard, or nothing was heard yet.
    void forget();

    [[nodiscard]] bool quiet() const { return quiet_; }
    /// Something came since the port was opened.
    [[nodiscard]] bool everHeard() const { return everHeard_; }
    /// Since when nothing has come.
    [[nodiscard]] Milliseconds since() const { return heardAt_; }

    /// Whether what is shown was reported before it.
    ReportAge age;
    /// It begins or ends, the port is opened or closed, or its device goes or comes.
    Signal<> changed;

private:
    void set(bool quiet);

    const Schedule& schedule_;
    Milliseconds heardAt_ = 0;
    bool everHeard_ = false;
    bool quiet_ = false;
};

} // namespace quillon
