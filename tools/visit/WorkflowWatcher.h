#pragma once

#include <vector>

#include "Visit.h"

namespace quillon {

/// Puts the runs of a session together to what the engineer has done: entering a mode, the stay and the way
/// out are one workflow.
class WorkflowWatcher {
public:
    explicit WorkflowWatcher(std::vector<WorkflowFact>& facts) : facts_(facts) {}

    /// What the console is doing from now on.
    void runs(Run run, Milliseconds at);
    /// A run has ended in this mode.
    void ended(Run run, const Ending& ending, Phase mode, Milliseconds at);
    /// The generator has left the mode by itself.
    void modeLeft(Phase mode, Milliseconds at);
    void phaseReported(Phase phase);
    /// The recording ends in this mode; `closed` behind an orderly "Close".
    void finish(Phase mode, bool closed, Milliseconds at);

private:
    [[nodiscard]] WorkflowFact* open();
    WorkflowFact& add(const Step& step, Milliseconds at);

    std::vector<WorkflowFact>& facts_;
    Run run_ = Run::None;
    Milliseconds since_ = 0; ///< the first of the runs that have followed one another
};

} // namespace quillon
