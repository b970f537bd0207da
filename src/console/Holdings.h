#pragma once

#include <functional>

#include "console/Effects.h"
#include "console/GeneratorReports.h"
#include "console/PollHold.h"
#include "console/RestScreen.h"

namespace quillon {

/// What the workflows hold of the operator's and the generator's: keys, the status poll, the event Busy and
/// the permission to make X-rays.
class Holdings {
public:
    /// `holdsPoll`: something is under way that keeps the poll away.
    Holdings(ConsoleContext& context, const GeneratorReports& generator, RestScreen& restScreen,
             std::function<bool()> holdsPoll);

    void apply(const Effects& effects);
    /// During an exposure keys of the workflows stay disabled: what is given meanwhile comes with
    /// giveDelayed().
    void give(Keys keys);
    void giveDelayed();
    void dropDelayed() { afterExposure_ = {}; }

    /// Does what a wait would have done at its last tick.
    void freePoll();
    /// To be called whenever the poll may have stopped.
    void noticePoll() { poll_.notice(); }
    [[nodiscard]] bool pollHeld() const { return poll_.held(); }

    /// X-rays are allowed, or will be with the next report of a phase at rest.
    [[nodiscard]] bool allowsXRays() const { return context_.link.mirror().RXEnable || xRaysOwed_; }
    /// They are to be allowed with the next such report in any case: an earlier command may be lost.
    void oweXRays() { xRaysOwed_ = true; }
    void phaseReported(Phase phase);

private:
    void take(Keys keys);

    ConsoleContext& context_;
    const GeneratorReports& generator_;
    RestScreen& restScreen_;
    ConsoleScreen screen_;
    PollHold poll_;
    Keys afterExposure_; ///< what was given during an exposure
    bool busy_ = false;
    bool xRaysOwed_ = false;
};

} // namespace quillon
