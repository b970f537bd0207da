#pragma once

#include <vector>

#include <QTimer>
#include <QWidget>

#include "qt/QtRuntime.h"
#include "runtime/Schedule.h"

namespace quillon {

/// Measures how late timers fire and how long paints take, in memory, and tells it on standard error after so
/// many timers. On only when the environment variable QUILLON_LATENESS holds their number; behind it may
/// stand an interval in ms at which the whole window is painted anew meanwhile. See scripts/lateness.
class LatenessTrace {
public:
    LatenessTrace(QtScheduleDriver& driver, Schedule& schedule, QWidget& window);

private:
    void note(std::int64_t late);

    Timer probe_; // the console's own timers are few and far between
    QTimer repaint_;
    std::vector<std::int64_t> late_; // microseconds
    std::vector<std::int64_t> paints_;
    std::size_t wanted_ = 0;
};

} // namespace quillon
