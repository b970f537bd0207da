#pragma once

#include <chrono>
#include <functional>

#include <QObject>
#include <QWidget>
#ifdef __linux__
#include <QSocketNotifier>
#else
#include <QTimer>
#endif

#include "runtime/Clock.h"
#include "runtime/EventLoop.h"
#include "runtime/Schedule.h"

namespace quillon {

/// Milliseconds since the clock was made, whatever happens to the PC's date.
class SteadyClock final : public Clock {
public:
    [[nodiscard]] Milliseconds now() const override { return microseconds() / 1000; }
    [[nodiscard]] std::int64_t microseconds() const {
        return std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() -
                                                                     start_)
            .count();
    }
    /// The moment of its 0.
    [[nodiscard]] std::chrono::steady_clock::time_point start() const { return start_; }

private:
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

/// Runs the schedule from Qt's event loops. The system wakes the loop at the very moment at which the next
/// timer is due. That moment is set before the loop looks for something to do, and again before it sleeps, so
/// it is right after every handler, key, port byte and inside every message box.
class QtScheduleDriver final : public QObject {
public:
    QtScheduleDriver(Schedule& schedule, const SteadyClock& clock);
    ~QtScheduleDriver() override;

    /// From now on the window is painted only when no timer is due, nor will be before the painting is over
    /// as far as can be foreseen, and painting rests three times as long as it took, 6 ms at most. A picture
    /// waits a tenth of a second at most.
    void guard(QWidget& window);

    /// Told before due timers run how late the first of them is, in microseconds.
    std::function<void(std::int64_t late)> onRun;
    /// Told after the guarded window was painted how long it took, in microseconds.
    std::function<void(std::int64_t took)> onPaint;

protected:
    bool eventFilter(QObject* window, QEvent* event) override;

private:
    void arm();
    void wakeAt(Milliseconds due);
    void stopWaking();
    void runDue();
    [[nodiscard]] bool mayPaint() const;

    Schedule& schedule_;
    const SteadyClock& clock_;
#ifdef __linux__
    int waker_; // a timer of the system's that ends at a moment, not after a time
    QSocketNotifier woken_;
#else
    QTimer waker_;
#endif
    std::optional<Milliseconds> armedFor_;
    QWidget* guarded_ = nullptr;
    std::int64_t paintTime_ = 0; // microseconds that recent paintings took at most
    std::int64_t rested_ = 0;    // no picture is painted before this time, to leave time for timers
    std::optional<std::int64_t> paintHeld_; // since when a picture waits
};

class QtEventLoop final : public EventLoop {
public:
    explicit QtEventLoop(Schedule& schedule) : schedule_(schedule) {}
    void processEvents() override;

private:
    Schedule& schedule_;
};

} // namespace quillon
