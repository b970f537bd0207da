#include "qt/QtRuntime.h"

#include <algorithm>

#include <QAbstractEventDispatcher>
#include <QCoreApplication>

namespace quillon {

QtScheduleDriver::QtScheduleDriver(Schedule& schedule) : schedule_(schedule) {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, [this] { schedule_.runDue(); });
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

void QtEventLoop::processEvents() {
    schedule_.runDue();
    // The operator's input waits: the handler that runs the loop is not to be entered by another key.
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

} // namespace quillon
