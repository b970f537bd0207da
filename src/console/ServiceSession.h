#pragma once

#include <functional>

#include "base/Phase.h"
#include "console/Loan.h"
#include "console/Moments.h"
#include "console/PollHold.h"
#include "console/RestScreen.h"
#include "console/Runs.h"

namespace quillon {

/// So many of so many.
struct Count {
    int done = 0;
    int of = 0; ///< 0 where that is not known
    bool operator==(const Count&) const = default;
};

/// What a run has to say when it does not reach its own end.
struct RunHooks {
    std::function<void()> undo = {};    ///< it does not reach its own end: what is its own on the screen goes
    std::function<bool(Way)> ends = {}; ///< its word where the matrix asks for it
    std::function<Count()> count = {};  ///< how far it is
    std::function<void()> givenUp = {}; ///< the operator has waited for a minute and pressed cmbClose
};

/// What the engineer has with the machine: where the generator stands, and what the console is doing, one run
/// at a time. Nobody else keeps either, and whatever ends a run, it is ended here.
class ServiceSession {
public:
    explicit ServiceSession(ConsoleContext& context);

    // Where the generator stands.
    /// The last of 2, 6, 8 and 9 that was reported.
    [[nodiscard]] Phase mode() const { return mode_; }
    void setMode(Phase mode);
    /// How far the run is; in autocalibration, of which nobody knows the length, the exposures made.
    [[nodiscard]] Count count() const;
    /// The last report; 1 after a loss and at the start.
    [[nodiscard]] Phase lastPhase() const { return lastPhase_; }
    void setLastPhase(Phase phase) { lastPhase_ = phase; }
    /// The generator said that it starts, and nothing since.
    [[nodiscard]] bool poweringUp() const { return poweringUp_; }
    /// Nothing was heard for too long, and nothing since.
    [[nodiscard]] bool isLost() const { return lost_; }

    // What the console is doing.
    [[nodiscard]] Run run() const { return run_; }
    [[nodiscard]] bool is(Run run) const { return run_ == run; }
    [[nodiscard]] bool idle() const { return run_ == Run::None; }
    /// It waits for the generator, and not for the operator.
    [[nodiscard]] bool waits() const;
    /// A mode can be entered: normal operation, and no exposure.
    [[nodiscard]] bool canEnter() const { return mode_ == Phase::NormalOperation && !isExposure(lastPhase_); }
    /// What a report or a wait gives to the mode keys is given: no run is under way, or one that waits for a
    /// choice.
    [[nodiscard]] bool isFree() const;
    /// A mode is being left.
    [[nodiscard]] bool isLeaving() const {
        return is(Run::LeavingConfiguration) || is(Run::LeavingCalibration) || is(Run::Lending) ||
               is(Run::LeavingAutocalibration);
    }
    [[nodiscard]] bool countersActive() const { return is(Run::ReadingCounters) || is(Run::ShowingCounters); }

    /// Ends what runs and begins another run; the moment's row is given and taken.
    void begin(Run run, const Moment& moment, RunHooks hooks = {});
    /// The same workflow goes on as another run: nothing of it stops.
    void turn(Run run, const Moment& moment, RunHooks hooks = {});
    /// A moment of the run that goes on, or of no run.
    void at(const Moment& moment);
    /// The run's own end.
    void end(const Moment& moment);
    /// The same, and a message tells it: what stands is shown behind that.
    void fail(const Moment& moment) { finish(moment); }
    /// The same, with the generator on its way: what stands is shown when it has had time to follow.
    void endOnTheWay(const Moment& moment);
    /// The run is known by another name from now on, and nothing else changes.
    void become(Run run) { setRun(run); }
    /// Ends the run before its own end.
    void breakOff(const Moment& moment = moments::kBrokenOff);
    /// The refresh ends the way to the users, and with it the wait that would have ended it.
    void cancelLending();
    /// All of it is over without a word: the console appears anew.
    void drop();

    /// A wait that may never end begins: a minute from now cmbClose is given. An earlier minute is forgotten.
    void waitPatiently();
    /// It has an end again; a minute that is over stays over.
    void stopWaiting();
    /// It is over: cmbClose ends the run.
    [[nodiscard]] bool canGiveUp() const { return patienceOver_; }
    /// cmbClose ends the run, if the minute is over. False when it is not.
    bool giveUp();

    /// A phase was reported: what has no business in it ends, the reaction comes, and where nothing is under
    /// way the screen is what stands.
    void report(Phase phase, const std::function<void()>& reaction);
    /// The screen shows where the generator stands, unless something is under way or to be answered. Whatever
    /// ends a run ends in this.
    void stand();
    /// The same whatever is under way: the generator starts anew, or was lost.
    void standNow();

    /// A message came up. `belie` is called when the phase that it says was not reached is reported after
    /// all.
    void messageOpens(Phase missed, std::function<void()> belie);
    void messageCloses();
    /// The generator was lost.
    void lost();

    /// A screen of its own keeps the mode keys: first the other three follow cmbManualCalibration, then all
    /// four are locked. `wayBack` opens and closes it. One screen at a time; `close` is called when it goes,
    /// whatever takes it away.
    void openScreen(const Control& wayBack, std::function<void()> close);

    Signal<> began;   ///< another run, in the place of what ran before
    Signal<> changed; ///< what is done, or the phase, or what one of its moments gave

    [[nodiscard]] RestScreen& restScreen() { return restScreen_; }
    [[nodiscard]] const RestScreen& restScreen() const { return restScreen_; }
    [[nodiscard]] Loan& loan() { return loan_; }
    [[nodiscard]] bool lent() const { return loan_.lent(); }
    /// X-rays are allowed, or will be with the next report of a phase at rest.
    [[nodiscard]] bool allowsXRays() const { return context_.link.mirror().RXEnable || xRaysOwed_; }
    /// X-rays are allowed again, at once or with the next report of a phase at rest.
    void giveXRaysBack();
    /// The press of the key that closes, which takes them, has come to nothing: they are as before it.
    void pressCameToNothing();
    void closePressed();
    /// With the next such report in any case: what was said before may be lost.
    void oweXRays() { xRaysOwed_ = true; }
    /// A line that was closed by hand is opened, so that the generator can be told.
    void openLine();
    /// What the mode asks the operator for, until it is over.
    void setExposureRequest(ExposureRequest request) { wanted_ = request; }
    /// The generator was told to go into a mode.
    void asked(Phase mode);
    /// The mode in which it may still arrive; None when there is none.
    [[nodiscard]] Phase onTheWayTo() const;
    /// It was told to leave a mode while it was lost, and has not been heard since.
    [[nodiscard]] bool exitUnheard() const { return exitUnheard_; }
    /// All that decides what is on the screen at rest.
    [[nodiscard]] Heard heard() const;
    /// The generator may still follow the last command of a run that is over.
    [[nodiscard]] bool follows() const { return followed_.running(); }

private:
    void setRun(Run run);
    void reported(Phase phase);
    void settled(Phase phase);
    void stopParts();
    void give(Keys keys);
    void take(Keys keys);
    void stopWait(const WaitRow& wait);
    [[nodiscard]] bool holdsPoll() const;
    void answer(Way way);
    [[nodiscard]] bool running(ConsoleTimer timer) const;
    void finish(const Moment& moment);
    [[nodiscard]] bool hasNoTimer() const;
    [[nodiscard]] bool ownsWhatRuns() const;

    ConsoleContext& context_;
    ConsoleScreen screen_;
    RestScreen restScreen_;
    Loan loan_;
    PollHold poll_;
    Timer patience_;
    Timer followed_; ///< while the generator may still follow the last command of a run that is over
    Phase mode_ = Phase::None;
    Phase lastPhase_ = Phase::None;
    Run run_ = Run::None;
    RunHooks hooks_;
    bool poweringUp_ = false;
    bool lost_ = false;
    bool patienceOver_ = false;
    Keys afterExposure_;      ///< what was given during an exposure
    bool layoutOwed_ = false; ///< a run has ended since the keys were last laid out
    bool busy_ = false;
    bool xRaysOwed_ = false;
    ExposureRequest wanted_ = ExposureRequest::None;
    bool xRaysAtPress_ = true;
    bool reporting_ = false; ///< a report is reacted to: what stands is not known before that is over
    bool messageOpen_ = false;
    Phase missed_ = Phase::None; ///< what the message says was not reached
    std::function<void()> belie_;
    bool exitUnheard_ = false;
    Phase asked_ = Phase::None;
    Milliseconds askedAt_ = 0;
    int exposures_ = 0; ///< since autocalibration was entered
};

} // namespace quillon
