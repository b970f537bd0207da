#pragma once

#include "base/Phase.h"
#include "console/ConsoleContext.h"
#include "console/Standing.h"

namespace quillon {

/// Where the generator stands by its last reports, and the mode that it was told to go into.
class GeneratorReports {
public:
    explicit GeneratorReports(ConsoleContext& context) : context_(context) {}

    /// The last of 2, 6, 8 and 9 that was reported.
    [[nodiscard]] Phase mode() const { return mode_; }
    void setMode(Phase mode);
    /// The last report; 1 after a loss and at the start.
    [[nodiscard]] Phase lastPhase() const { return lastPhase_; }
    void setLastPhase(Phase phase) { lastPhase_ = phase; }
    /// The generator has reported that it starts, and nothing since.
    [[nodiscard]] bool poweringUp() const { return poweringUp_; }
    /// Nothing was heard for too long, and nothing since.
    [[nodiscard]] bool isLost() const { return lost_; }
    /// A mode can be entered: normal operation, and no exposure.
    [[nodiscard]] bool canEnter() const { return mode_ == Phase::NormalOperation && !isExposure(lastPhase_); }
    /// Since autocalibration was entered; 0 in any other mode.
    [[nodiscard]] int exposures() const { return mode_ == Phase::Autocalibration ? exposures_ : 0; }

    /// What the mode asks the operator for, until it is over.
    void setExposureRequest(ExposureRequest request) { wanted_ = request; }
    /// The generator was told to go into a mode; None: to leave one.
    void asked(Phase mode);
    /// The mode in which it may still arrive; None when there is none.
    [[nodiscard]] Phase onTheWayTo() const;
    /// It was told to leave a mode while it was lost, and has not been heard since.
    [[nodiscard]] bool exitUnheard() const { return exitUnheard_; }
    void setExitUnheard(bool unheard) { exitUnheard_ = unheard; }

    /// A phase is reported. It becomes the last one when the reactions to it are over.
    void heard(Phase phase);
    void lost();

    [[nodiscard]] Heard all(bool lent) const {
        return {mode_, lastPhase_, lost_, poweringUp_, lent, wanted_, exitUnheard_};
    }

private:
    ConsoleContext& context_;
    Phase mode_ = Phase::None;
    Phase lastPhase_ = Phase::None;
    bool poweringUp_ = false;
    bool lost_ = false;
    bool exitUnheard_ = false;
    ExposureRequest wanted_ = ExposureRequest::None;
    Phase asked_ = Phase::None;
    Milliseconds askedAt_ = 0;
    int exposures_ = 0;
};

} // namespace quillon
