#include "runtime/Schedule.h"

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

#include "base/Fault.h"
#include "runtime/MemoryPlatform.h"
#include "runtime/Signal.h"

namespace quillon {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ScheduleTest : public testing::Test {
protected:
    [[nodiscard]] Schedule::Action note(const std::string& name) {
        return [this, name] { happened.push_back(name + "@" + std::to_string(time.now())); };
    }

    VirtualTime time;
    Schedule& schedule = time.schedule();
    std::vector<std::string> happened;
};

TEST_F(ScheduleTest, EqualDueTimesComeInTheOrderInWhichTheyWereSetGoing) {
    Timer late(schedule, note("late"));
    Timer early(schedule, note("early"));
    late.setInterval(20);
    schedule.post(10, note("post"));
    early.start(10);
    late.run();
    schedule.post(20, note("last"));
    time.advance(20);
    // In its second period "early" keeps its place in front of what was set going later.
    EXPECT_THAT(happened, ElementsAre("post@10", "early@10", "early@20", "late@20", "last@20"));
}

TEST_F(ScheduleTest, ATimerGoesOnUntilItIsStopped) {
    Timer timer(schedule, note("t"));
    timer.start(100);
    time.advance(250);
    timer.stop();
    time.advance(1000);
    EXPECT_THAT(happened, ElementsAre("t@100", "t@200"));
    timer.setInterval(0);
    timer.run();
    time.advance(1000);
    timer.start(-1);
    time.advance(1000);
    EXPECT_EQ(happened.size(), 2U) << "an interval of 0 never fires";
}

TEST_F(ScheduleTest, RunKeepsAPeriodAndStartBeginsOne) {
    Timer timer(schedule, note("t"));
    timer.start(100);
    time.advance(60);
    timer.run();
    time.advance(40);
    timer.stop();
    timer.start(100);
    time.advance(60);
    timer.start(100);
    time.advance(60);
    timer.setInterval(50);
    time.advance(50);
    EXPECT_THAT(happened, ElementsAre("t@100", "t@270"));
}

TEST_F(ScheduleTest, WhatWasMissedFiresOnceAndLatenessDoesNotAddUp) {
    VirtualClock clock;
    Schedule slow(clock);
    int ticks = 0;
    Timer timer(slow, [&ticks] { ++ticks; });
    timer.start(100);
    clock.set(130);
    slow.runDue();
    EXPECT_EQ(slow.nextDue(), 200);
    clock.set(550);
    slow.runDue();
    slow.runDue();
    EXPECT_EQ(ticks, 2);
    EXPECT_EQ(slow.nextDue(), 650);
}

TEST_F(ScheduleTest, ATickMayStopRestartOrDestroyItsTimer) {
    auto timer = std::make_unique<Timer>(schedule);
    timer->setTick([&] {
        note("tick")();
        if (happened.size() == 1) {
            timer->start(30);
        } else {
            timer.reset();
        }
    });
    timer->start(10);
    time.advance(1000);
    EXPECT_THAT(happened, ElementsAre("tick@10", "tick@40"));
    EXPECT_EQ(schedule.nextDue(), std::nullopt);
}

TEST_F(ScheduleTest, ATickThatServesEventsIsNotEnteredAgain) {
    VirtualClock clock;
    Schedule slow(clock);
    Timer inner(slow, note("inner"));
    Timer outer(slow);
    outer.setTick([&] {
        note("outer")();
        clock.set(clock.now() + 25);
        slow.runDue();
        note("outer ends")();
    });
    outer.start(10);
    inner.start(30);
    clock.set(10);
    slow.runOne();
    EXPECT_THAT(happened, ElementsAre("outer@0", "inner@0", "outer ends@0"));
    slow.runOne();
    EXPECT_EQ(happened.size(), 6U) << "it is due again once it has ended";
}

TEST_F(ScheduleTest, WhatIsPostedMeanwhileWaitsForTheNextTurn) {
    schedule.post(0, [this] { schedule.post(-5, note("second")); });
    schedule.runDue();
    EXPECT_THAT(happened, IsEmpty());
    schedule.runDue();
    EXPECT_THAT(happened, ElementsAre("second@0"));
}

TEST(Signal, ListenersMayComeAndGoWhileItIsRaised) {
    Signal<int> signal;
    std::vector<std::string> heard;
    const auto note = [&heard](const std::string& name) {
        return [&heard, name](int value) { heard.push_back(name + std::to_string(value)); };
    };
    Signal<int>::Connection second = 0;
    const auto first = signal.connect([&](int value) {
        note("first")(value);
        signal.disconnect(second);
        signal.connect(note("new"));
    });
    second = signal.connect(note("second"));
    signal.raise(1);
    signal.disconnect(first);
    signal.raise(2);
    EXPECT_THAT(heard, ElementsAre("first1", "new2"));
}

TEST(Signal, AFaultOfAListenerLeavesItWhole) {
    Signal<> signal;
    const auto token = std::make_shared<int>();
    Signal<>::Connection faulty = 0;
    faulty = signal.connect([&signal, &faulty, token] {
        signal.disconnect(faulty);
        throw Fault(Fault::kOverflow);
    });
    EXPECT_THROW(signal.raise(), Fault);
    EXPECT_EQ(token.use_count(), 1) << "it was taken off";
}

} // namespace
} // namespace quillon
