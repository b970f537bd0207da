#include "qt/QtRuntime.h"

#include <algorithm>

#include <QAbstractEventDispatcher>
#include <QCoreApplication>

namespace quillon {

QtScheduleDriver::QtScheduleDriver(Schedule& schedule, const SteadyClock& clock)
    : schedule_(schedule), clock_(clock) {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, [this] { runDue(); });
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
            [this] { arm(); });
}

void QtScheduleDriver::arm() {
    const std::optional<Milliseconds> due = schedule_.nextDue();
    if (!due) {
        timer_.stop();
    } else if (!timer_.isActive() || *due != armedFor_) {
        armedFor_ = *due;
        constexpr Milliseconds kLongest = 60'000;
        timer_.start(static_cast<int>(std::clamp<Milliseconds>(*due - schedule_.now(), 0, kLongest)));
    }
}

void QtScheduleDriver::runDue() {
    if (const auto due = schedule_.nextDue(); onRun && due && *due <= schedule_.now()) {
        onRun(clock_.microseconds() - *due * 1000);
    }
    schedule_.runDue();
}

void QtEventLoop::processEvents() {
    schedule_.runDue();
    // The operator's input waits: the handler that runs the loop is not to be entered by another key.
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

} // namespace quillon
