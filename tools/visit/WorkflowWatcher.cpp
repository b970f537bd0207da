#include "WorkflowWatcher.h"

namespace quillon {

namespace {

Workflow workflowOf(Run run) {
    switch (run) {
    case Run::EnteringConfiguration:
    case Run::LeavingConfiguration:
        return Workflow::Configuration;
    case Run::ChoosingWorkstation:
    case Run::EnteringCalibration:
    case Run::LeavingCalibration:
    case Run::Lending:
        return Workflow::Calibration;
    case Run::ChoosingAutocalibration:
    case Run::EnteringAutocalibration:
    case Run::HandingOver:
    case Run::LeavingAutocalibration:
        return Workflow::Autocalibration;
    case Run::ReadingCounters:
    case Run::ShowingCounters:
        return Workflow::Counters;
    case Run::None:
    case Run::Closing:
        break;
    }
    return Workflow::Closing;
}

/// The mode that a workflow is about; None for one without.
Phase modeOf(Workflow workflow) {
    switch (workflow) {
    case Workflow::Configuration:
        return Phase::Configuration;
    case Workflow::Calibration:
        return Phase::Calibration;
    case Workflow::Autocalibration:
        return Phase::Autocalibration;
    case Workflow::Counters:
    case Workflow::Closing:
        break;
    }
    return Phase::None;
}

} // namespace

void WorkflowWatcher::runs(Run run, Milliseconds at) {
    if (run_ == Run::None && run != Run::None) {
        since_ = at;
    }
    run_ = run;
}

void WorkflowWatcher::ended(Run run, const Ending& ending, Phase mode, Milliseconds at) {
    const bool entered = (run == Run::EnteringConfiguration || run == Run::EnteringCalibration ||
                          run == Run::EnteringAutocalibration || run == Run::HandingOver) &&
                         mode == modeOf(workflowOf(run));
    add({run, ending, mode}, at).open = entered;
    run_ = Run::None; // what comes next is another one, even at this moment
}

WorkflowFact& WorkflowWatcher::add(const Step& step, Milliseconds at) {
    const Workflow what = workflowOf(step.run);
    WorkflowFact* work = open();
    // The way out of an autocalibration leads through calibration.
    const bool wayOut = step.run == Run::LeavingCalibration;
    const bool goesOn =
        work != nullptr && (work->what == what || (work->what == Workflow::Autocalibration && wayOut));
    if (!goesOn) {
        if (work != nullptr) {
            work->open = false;
            work->span.to = since_;
        }
        facts_.push_back({{since_}, what});
        work = &facts_.back();
    }
    work->steps.push_back(step);
    work->span.to = at;
    return *work;
}

void WorkflowWatcher::modeLeft(Phase mode, Milliseconds at) {
    if (WorkflowFact* work = open(); work != nullptr && modeOf(work->what) == mode) {
        work->open = false;
        work->span.to = at;
    }
}

void WorkflowWatcher::phaseReported(Phase phase) {
    WorkflowFact* work = open();
    if (work != nullptr && work->what == Workflow::Autocalibration && endsAutocalibration(phase)) {
        work->result = phase;
    }
}

void WorkflowWatcher::finish(Phase mode, bool closed, Milliseconds at) {
    if (run_ != Run::None) {
        const auto ending = closed ? std::optional(Ending{}) : std::nullopt;
        add({run_, ending, mode}, at).open = !closed;
    } else if (WorkflowFact* work = open(); work != nullptr && mode == Phase::NormalOperation) {
        work->open = false;
    }
}

WorkflowFact* WorkflowWatcher::open() {
    return facts_.empty() || !facts_.back().open ? nullptr : &facts_.back();
}

} // namespace quillon
