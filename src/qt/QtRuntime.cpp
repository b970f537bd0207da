#include "qt/QtRuntime.h"

#include <algorithm>

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEvent>

#ifdef __linux__
#include <sys/timerfd.h>
#include <unistd.h>
#endif

namespace quillon {

namespace {

constexpr std::int64_t kLongestHold = 100'000;     // microseconds that a picture waits
constexpr std::int64_t kLongestPaintTime = 40'000; // a longer painting does not wait for timers
constexpr std::int64_t kRest = 3;                  // times as long as painting took
constexpr std::int64_t kLongestRest = 6'000;       // what takes longer waited for the display

} // namespace

#ifdef __linux__

// The clock of the timer is the one below std::chrono::steady_clock.
QtScheduleDriver::QtScheduleDriver(Schedule& schedule, const SteadyClock& clock)
    : schedule_(schedule), clock_(clock),
      waker_(::timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC)),
      woken_(waker_, QSocketNotifier::Read) {
    connect(&woken_, &QSocketNotifier::activated, this, [this] { runDue(); });
    const auto* dispatcher = QAbstractEventDispatcher::instance();
    connect(dispatcher, &QAbstractEventDispatcher::awake, this, [this] { arm(); });
    connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, this, [this] { arm(); });
}

QtScheduleDriver::~QtScheduleDriver() {
    woken_.setEnabled(false);
    ::close(waker_);
}

void QtScheduleDriver::wakeAt(Milliseconds due) {
    using namespace std::chrono;
    // A moment that has passed wakes at once; 0 would stop the timer.
    const auto moment = duration_cast<nanoseconds>((clock_.start() + milliseconds(due)).time_since_epoch());
    const auto count = std::max<nanoseconds::rep>(moment.count(), 1);
    itimerspec when{};
    when.it_value.tv_sec = static_cast<time_t>(count / 1'000'000'000);
    when.it_value.tv_nsec = static_cast<long>(count % 1'000'000'000);
    ::timerfd_settime(waker_, TFD_TIMER_ABSTIME, &when, nullptr);
}

void QtScheduleDriver::stopWaking() {
    const itimerspec never{};
    ::timerfd_settime(waker_, 0, &never, nullptr);
}

#else

QtScheduleDriver::QtScheduleDriver(Schedule& schedule, const SteadyClock& clock)
    : schedule_(schedule), clock_(clock) {
    waker_.setSingleShot(true);
    waker_.setTimerType(Qt::PreciseTimer);
    connect(&waker_, &QTimer::timeout, this, [this] { runDue(); });
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
            [this] { arm(); });
}

QtScheduleDriver::~QtScheduleDriver() = default;

void QtScheduleDriver::wakeAt(Milliseconds due) {
    constexpr Milliseconds kLongest = 60'000;
    waker_.start(static_cast<int>(std::clamp<Milliseconds>(due - schedule_.now(), 0, kLongest)));
}

void QtScheduleDriver::stopWaking() {
    waker_.stop();
}

#endif

void QtScheduleDriver::arm() {
    std::optional<Milliseconds> due = schedule_.nextDue();
    if (paintHeld_ && rested_ > clock_.microseconds()) {
        const Milliseconds rested = rested_ / 1000 + 1;
        due = due ? std::min(*due, rested) : rested;
    }
    if (due != armedFor_) {
        armedFor_ = due;
        if (due) {
            wakeAt(*due);
        } else {
            stopWaking();
        }
    }
    if (paintHeld_ && mayPaint()) {
        QCoreApplication::postEvent(guarded_, new QEvent(QEvent::UpdateRequest), Qt::LowEventPriority);
    }
}

void QtScheduleDriver::runDue() {
    armedFor_.reset(); // the waking is used up, whatever the schedule holds next
    stopWaking();
    if (const auto due = schedule_.nextDue(); onRun && due && *due <= schedule_.now()) {
        onRun(clock_.microseconds() - *due * 1000);
    }
    schedule_.runDue();
}

void QtScheduleDriver::guard(QWidget& window) {
    guarded_ = &window;
    window.installEventFilter(this);
}

bool QtScheduleDriver::mayPaint() const {
    const std::optional<Milliseconds> due = schedule_.nextDue();
    const std::int64_t now = clock_.microseconds();
    if (paintHeld_ && now - *paintHeld_ > kLongestHold) {
        return true;
    }
    return now >= rested_ && (!due || now + paintTime_ < *due * 1000);
}

/// No timer runs in here: its handler may open a box, and the window has to be painted below it.
bool QtScheduleDriver::eventFilter(QObject* window, QEvent* event) {
    if (event->type() != QEvent::UpdateRequest) {
        return false;
    }
    const std::int64_t begin = clock_.microseconds();
    if (!mayPaint()) {
        paintHeld_ = paintHeld_.value_or(begin);
        return true;
    }
    paintHeld_.reset();
    window->event(event);
    const std::int64_t end = clock_.microseconds();
    const std::int64_t took = end - begin;
    if (onPaint) {
        onPaint(took);
    }
    rested_ = end + std::min(kRest * took, kLongestRest);
    paintTime_ = std::min(std::max(took, paintTime_ - paintTime_ / 8), kLongestPaintTime);
    return true;
}

void QtEventLoop::processEvents() {
    schedule_.runDue();
    // The operator's input waits: the handler that runs the loop is not to be entered by another key.
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

} // namespace quillon
