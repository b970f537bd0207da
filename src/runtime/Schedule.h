#pragma once

#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "runtime/Clock.h"
#include "runtime/Handlers.h"

namespace quillon {

class Timer;

/// Everything that waits for time, in one order: by due time, then by the order in which it was set going.
/// Whoever drives it calls runDue() when nextDue() has come.
class Schedule {
public:
    using Action = std::function<void()>;

    explicit Schedule(const Clock& clock) : clock_(clock) {}
    Schedule(const Schedule&) = delete;
    Schedule& operator=(const Schedule&) = delete;

    [[nodiscard]] Milliseconds now() const { return clock_.now(); }

    /// Runs the action once, `delay` ms from now, never inside the present handler.
    void post(Milliseconds delay, Action action);

    /// When the next thing falls due; nothing while nothing waits.
    [[nodiscard]] std::optional<Milliseconds> nextDue() const;

    /// Runs what is due now. What falls due meanwhile waits for the next call, so a handler that always has
    /// something more to do cannot keep the port waiting.
    void runDue();

    /// Runs the one thing that is due first, if it is due by now. False when nothing was.
    bool runOne();

    /// Of the timers, and of whatever else happens to those that wait.
    [[nodiscard]] Handlers& handlers() { return handlers_; }

private:
    friend class Timer;

    struct Posted {
        Milliseconds due;
        std::uint64_t sequence;
        Action action;
    };

    void add(Timer& timer);
    void remove(Timer& timer);
    [[nodiscard]] Timer* firstTimer() const;
    bool runFirst(Milliseconds limit, std::uint64_t before);

    const Clock& clock_;
    std::vector<Timer*> running_;
    std::vector<Posted> posted_; // a heap, the first due on top
    std::uint64_t nextSequence_ = 0;
    Handlers handlers_;
};

/// A timer fires again and again, one interval apart, until it is stopped; interval 0 never fires.
class Timer {
public:
    /// The name, by which a fault is told, outlives the timer.
    explicit Timer(Schedule& schedule, Schedule::Action tick = {}, std::string_view name = "without a name");
    ~Timer();
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

    void setTick(Schedule::Action tick) { tick_ = std::move(tick); }

    /// Stops, sets the interval and starts: a whole new period begins.
    void start(int interval);
    /// Starts with the interval it has; leaves a timer that runs already in its period.
    void run();
    void stop();
    /// run() or stop().
    void setRunning(bool running);
    /// In ms. On a running timer this begins a new period.
    void setInterval(int interval);

    [[nodiscard]] bool running() const { return running_; }
    /// When it fires next; while it runs.
    [[nodiscard]] Milliseconds due() const { return due_; }
    [[nodiscard]] int interval() const { return interval_; }

private:
    friend class Schedule;

    void beginPeriod();
    void fire();

    Schedule& schedule_;
    Schedule::Action tick_;
    std::string_view name_;
    int interval_ = 0;
    bool running_ = false;
    bool inTick_ = false;
    bool* gone_ = nullptr; // set while a tick runs, to learn that the tick destroyed the timer
    Milliseconds due_ = 0;
    std::uint64_t sequence_ = 0;
};

} // namespace quillon
