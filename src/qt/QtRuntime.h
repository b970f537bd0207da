#pragma once

#include <chrono>
#include <functional>

#include <QObject>
#include <QTimer>

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

private:
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

/// Runs the schedule from one timer of Qt's. The timer is set whenever an event loop is about to sleep, so it
/// is right after every handler, key, port byte and inside every message box.
class QtScheduleDriver final : public QObject {
public:
    QtScheduleDriver(Schedule& schedule, const SteadyClock& clock);

    /// Told before due timers run how late the first of them is, in microseconds.
    std::function<void(std::int64_t late)> onRun;

private:
    void arm();
    void runDue();

    Schedule& schedule_;
    const SteadyClock& clock_;
    QTimer timer_;
    Milliseconds armedFor_ = 0;
};

class QtEventLoop final : public EventLoop {
public:
    explicit QtEventLoop(Schedule& schedule) : schedule_(schedule) {}
    void processEvents() override;

private:
    Schedule& schedule_;
};

} // namespace quillon
