#include "runtime/Schedule.h"

#include <algorithm>
#include <cassert>
#include <tuple>

namespace quillon {

namespace {

/// Later first, as a heap with the first due on top wants it.
constexpr auto kLater = [](const auto& a, const auto& b) {
    return std::tie(a.due, a.sequence) > std::tie(b.due, b.sequence);
};

} // namespace

void Schedule::post(Milliseconds delay, Action action) {
    posted_.push_back({now() + std::max<Milliseconds>(delay, 0), nextSequence_++, std::move(action)});
    std::push_heap(posted_.begin(), posted_.end(), kLater);
}

std::optional<Milliseconds> Schedule::nextDue() const {
    const Timer* timer = firstTimer();
    if (posted_.empty()) {
        return timer == nullptr ? std::nullopt : std::optional(timer->due_);
    }
    const Milliseconds posted = posted_.front().due;
    return timer == nullptr ? posted : std::min(timer->due_, posted);
}

void Schedule::runDue() {
    const Milliseconds limit = now();
    const std::uint64_t before = nextSequence_;
    while (runFirst(limit, before)) {
    }
}

bool Schedule::runOne() {
    return runFirst(now(), nextSequence_);
}

bool Schedule::runFirst(Milliseconds limit, std::uint64_t before) {
    Timer* timer = firstTimer();
    const bool posted =
        !posted_.empty() && (timer == nullptr || std::tie(posted_.front().due, posted_.front().sequence) <
                                                     std::tie(timer->due_, timer->sequence_));
    if (posted) {
        if (posted_.front().due > limit || posted_.front().sequence >= before) {
            return false;
        }
        std::pop_heap(posted_.begin(), posted_.end(), kLater);
        const Action action = std::move(posted_.back().action);
        posted_.pop_back();
        action();
        return true;
    }
    if (timer == nullptr || timer->due_ > limit) {
        return false;
    }
    timer->fire();
    return true;
}

void Schedule::add(Timer& timer) {
    assert(std::find(running_.begin(), running_.end(), &timer) == running_.end());
    running_.push_back(&timer);
}

void Schedule::remove(Timer& timer) {
    std::erase(running_, &timer);
}

Timer* Schedule::firstTimer() const {
    Timer* first = nullptr;
    for (Timer* timer : running_) {
        // A tick that runs the event loop itself is not entered a second time.
        if (timer->interval_ <= 0 || timer->inTick_) {
            continue;
        }
        if (first == nullptr ||
            std::tie(timer->due_, timer->sequence_) < std::tie(first->due_, first->sequence_)) {
            first = timer;
        }
    }
    return first;
}

Timer::Timer(Schedule& schedule, Schedule::Action tick, std::string_view name)
    : schedule_(schedule), tick_(std::move(tick)), name_(name) {}

Timer::~Timer() {
    if (gone_ != nullptr) {
        *gone_ = true;
    }
    schedule_.remove(*this);
}

void Timer::start(int interval) {
    stop();
    interval_ = std::max(interval, 0);
    run();
}

void Timer::run() {
    if (!running_) {
        running_ = true;
        schedule_.add(*this);
        beginPeriod();
    }
}

void Timer::stop() {
    if (running_) {
        running_ = false;
        schedule_.remove(*this);
    }
}

void Timer::setRunning(bool running) {
    if (running) {
        run();
    } else {
        stop();
    }
}

void Timer::setInterval(int interval) {
    interval_ = std::max(interval, 0);
    if (running_) {
        beginPeriod();
    }
}

void Timer::beginPeriod() {
    due_ = schedule_.now() + interval_;
    sequence_ = schedule_.nextSequence_++;
}

void Timer::fire() {
    assert(running_ && !inTick_);
    // The next period begins when this one was due, so lateness does not add up; what was missed is not made
    // up for.
    due_ += interval_;
    if (due_ <= schedule_.now()) {
        due_ = schedule_.now() + interval_;
    }
    if (!tick_) {
        return;
    }
    // Also when the tick ends with a fault the timer must be able to fire again.
    struct Tick {
        explicit Tick(Timer& owner) : timer(owner) {
            timer.gone_ = &gone;
            timer.inTick_ = true;
        }
        ~Tick() {
            if (!gone) {
                timer.inTick_ = false;
                timer.gone_ = nullptr;
            }
        }
        Tick(const Tick&) = delete;
        Tick& operator=(const Tick&) = delete;

        Timer& timer;
        bool gone = false;
    };
    const Tick tick(*this);
    schedule_.handlers_.run({Cause::Kind::Timer, name_}, tick_);
}

} // namespace quillon
