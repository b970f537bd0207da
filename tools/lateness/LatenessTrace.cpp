#include "LatenessTrace.h"

#include <algorithm>
#include <cstdio>
#include <string>

namespace quillon {

namespace {

constexpr int kProbeInterval = 47;    // ms, in step with no timer of the console's
constexpr Milliseconds kQuiet = 3000; // the start is not what is measured

void tell(const char* what, std::vector<std::int64_t>& times) {
    if (times.empty()) {
        return;
    }
    std::sort(times.begin(), times.end());
    const auto at = [&times](std::size_t percent) {
        return static_cast<double>(times[(times.size() - 1) * percent / 100]) / 1000;
    };
    std::fprintf(stderr, "%s: median %.2f p95 %.2f p99 %.2f maximum %.2f\n", what, at(50), at(95), at(99),
                 at(100));
}

} // namespace

LatenessTrace::LatenessTrace(QtScheduleDriver& driver, Schedule& schedule, QWidget& window)
    : probe_(schedule) {
    int repaint = 0;
    if (std::sscanf(qgetenv("QUILLON_LATENESS").constData(), "%zu %d", &wanted_, &repaint) < 1 ||
        wanted_ == 0) {
        return;
    }
    late_.reserve(wanted_);
    schedule.post(kQuiet, [this, &driver] {
        driver.onRun = [this](std::int64_t late) { note(late); };
        driver.onPaint = [this](std::int64_t took) { paints_.push_back(took); };
        probe_.start(kProbeInterval);
    });
    if (repaint > 0) {
        QObject::connect(&repaint_, &QTimer::timeout, &window, [&window] { window.update(); });
        repaint_.start(repaint);
    }
}

void LatenessTrace::note(std::int64_t late) {
    if (late_.size() < wanted_) {
        late_.push_back(late);
        if (late_.size() == wanted_) {
            tell(("duration in ms of " + std::to_string(paints_.size()) + " paints").c_str(), paints_);
            tell(("lateness in ms of " + std::to_string(wanted_) + " timers").c_str(), late_);
        }
    }
}

} // namespace quillon
