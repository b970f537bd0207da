#pragma once

#include <functional>
#include <map>
#include <utility>

#include "base/Phase.h"
#include "console/GeneratorReports.h"
#include "console/Holdings.h"
#include "console/Loan.h"
#include "console/RestScreen.h"
#include "console/RunTimers.h"

namespace quillon {

/// Steps that are done, of all that there are.
struct Count {
    int done = 0;
    int of = 0; ///< 0 where that is not known
    bool operator==(const Count&) const = default;
};

/// What the session asks of a workflow while its run goes on.
struct RunHooks {
    std::function<void()> undo = {}; ///< takes back what it put on the screen, when something else ends it
    std::function<bool(Stimulus)> ends =
        {};                             ///< whether the stimulus ends it, where the table leaves that to it
    std::function<Count()> count = {};  ///< how far it is
    std::function<void()> givenUp = {}; ///< the operator has waited for a minute and pressed cmbClose
};

/// The session of the engineer with the machine: the state of the generator, and what the console is doing,
/// one run at a time. Both are kept only here, and every run is ended here.
class ServiceSession {
public:
    explicit ServiceSession(ConsoleContext& context);

    [[nodiscard]] GeneratorReports& generator() { return generator_; }
    [[nodiscard]] const GeneratorReports& generator() const { return generator_; }
    [[nodiscard]] const Holdings& holdings() const { return holdings_; }
    [[nodiscard]] Phase mode() const { return generator_.mode(); }
    [[nodiscard]] Phase lastPhase() const { return generator_.lastPhase(); }
    /// All that decides what is on the screen at rest.
    [[nodiscard]] Heard heard() const { return generator_.all(lent()); }

    // What the console is doing.
    [[nodiscard]] Run run() const { return run_; }
    [[nodiscard]] bool is(Run run) const { return run_ == run; }
    [[nodiscard]] bool idle() const { return run_ == Run::None; }
    /// It waits for the generator, and not for the operator.
    [[nodiscard]] bool waits() const;
    /// Reports and waits may enable the mode keys: there is no run, or one that waits for a choice.
    [[nodiscard]] bool isFree() const;
    /// A mode is being left.
    [[nodiscard]] bool isLeaving() const;
    /// How far the run is; in autocalibration, of which nobody knows the length, the exposures made.
    [[nodiscard]] Count count() const;
    [[nodiscard]] bool countersActive() const { return is(Run::ReadingCounters) || is(Run::ShowingCounters); }

    /// Ends what runs and begins another run; the moment's row is given and taken.
    void begin(Run run, const Effects& effects, RunHooks hooks = {});
    /// The same workflow goes on as another run: nothing of it stops.
    void continueAs(Run run, const Effects& effects, RunHooks hooks = {});
    /// Applies a step's row within a run, or without one.
    void apply(const Effects& effects);
    /// The run's own end.
    void end(const Effects& effects);
    /// The same with a message: the screen at rest is shown after it.
    void fail(const Effects& effects) { finish(effects, Ending::Kind::Failed); }
    /// The same while the generator still changes: the screen at rest is shown when it has had time to
    /// follow.
    void endOnTheWay(const Effects& effects);
    /// The run is known by another name from now on, and nothing else changes.
    void rename(Run run) { setRun(run); }
    /// Ends the run before its own end.
    void cancel(const Effects& effects = effects::kCancelled, Ending ending = {Ending::Kind::Cancelled});
    /// The refresh ends the way to the users, and with it the wait that would have ended it.
    void cancelLending();
    /// Calibration is still being left, but not for the users. False if it is not being left any more.
    bool lendingGoesOnLeaving();
    /// Ends everything silently: the console is shown again.
    void reset();

    /// A wait that may never end begins: a minute from now cmbClose is given. An earlier minute is forgotten.
    void startWatchdog();
    /// It has an end again; a minute that is over stays over.
    void stopWatchdog();
    /// It is over: cmbClose ends the run.
    [[nodiscard]] bool canGiveUp() const { return watchdogExpired_; }
    /// The press that does so.
    void giveUp();

    /// A phase was reported: ends what cannot go on in it, calls the reaction, and shows the screen at rest
    /// if there is no run.
    void report(Phase phase, const std::function<void()>& reaction);
    /// Shows the screen at rest, unless there is a run or an open message. Called at the end of every run.
    void stand();
    /// The same in any case: the generator restarts, or was lost.
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

    /// A click of the key does `work`, unless the key is kept back or the console closes.
    void onClick(Key key, std::function<void()> work);
    [[nodiscard]] bool takes(Key key) const;

    /// `leave` is the way out of the mode for whoever does not press the mode's own key.
    void onLeave(Phase mode, std::function<void()> leave) { exits_[mode] = std::move(leave); }
    /// Leaves the service mode in which the generator is.
    void leaveMode() { exits_.at(mode())(); }

    Signal<> began; ///< another run, in the place of what ran before
    /// A run is over. One that goes on as another run of the same workflow is not.
    Signal<Run, Ending> ended;
    Signal<> changed; ///< what is done, or the phase, or what one of its moments gave

    [[nodiscard]] RestScreen& restScreen() { return restScreen_; }
    [[nodiscard]] const RestScreen& restScreen() const { return restScreen_; }
    [[nodiscard]] Loan& loan() { return loan_; }
    [[nodiscard]] bool lent() const { return loan_.lent(); }
    /// X-rays are allowed again, at once or with the next report of a phase at rest.
    void giveXRaysBack();
    /// The press of the key that closes, which takes them, has come to nothing: they are as before it.
    void pressCameToNothing();
    void closePressed();
    /// With the next such report in any case: what was said before may be lost.
    void oweXRays() { holdings_.oweXRays(); }
    /// A line that was closed by hand is opened, so that the generator can be told.
    void openLine();
    /// The generator may still follow the last command of a run that is over.
    [[nodiscard]] bool follows() const { return followed_.running(); }

private:
    void setRun(Run run);
    void setNoRun(Ending ending);
    void reported(Phase phase);
    void settled(Phase phase);
    void stopParts();
    void stopWait(const WaitRow& wait);
    [[nodiscard]] bool holdsPoll() const;
    void react(Stimulus stimulus);
    void finish(const Effects& effects, Ending::Kind kind = Ending::Kind::Own);
    [[nodiscard]] bool hasNoTimer() const;

    ConsoleContext& context_;
    GeneratorReports generator_;
    ConsoleScreen screen_;
    RestScreen restScreen_;
    Loan loan_;
    Holdings holdings_;
    RunTimers timers_;
    Timer watchdog_;
    Timer followed_; ///< while the generator may still follow the last command of a run that is over
    Run run_ = Run::None;
    RunHooks hooks_;
    std::map<Phase, std::function<void()>> exits_;
    bool watchdogExpired_ = false;
    bool givingUp_ = false;
    bool layoutOwed_ = false; ///< a run has ended since the keys were last laid out
    bool xRaysAtPress_ = true;
    bool reporting_ = false; ///< a report is reacted to: what stands is not known before that is over
    bool messageOpen_ = false;
    Phase missed_ = Phase::None; ///< what the message says was not reached
    std::function<void()> belie_;
};

} // namespace quillon
