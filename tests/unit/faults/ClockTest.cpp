#include <gtest/gtest.h>

#include "FaultyMachine.h"

namespace quillon {
namespace {

/// A clock that a test moves either way; the schedule is served as a front end does it.
class ClockTest : public testing::Test {
protected:
    void pass(Milliseconds ms) {
        for (const Milliseconds end = clock.now() + ms; clock.now() < end; clock.set(clock.now() + 10)) {
            schedule.runDue();
        }
    }

    VirtualClock clock;
    Schedule schedule{clock};
    int ticks = 0;
    Timer timer{schedule, [this] { ++ticks; }};
};

TEST_F(ClockTest, AfterAStepBackATimerWaitsAndGoesOn) {
    clock.set(100'000);
    timer.start(1000);
    pass(5500);
    EXPECT_EQ(ticks, 5);
    clock.set(clock.now() - 3000);
    pass(2900);
    EXPECT_EQ(ticks, 5) << "no tick twice";
    pass(5000);
    EXPECT_GE(ticks, 9);
    EXPECT_LE(ticks, 11);
}

/// The machine's time for an application that is served late.
struct SleepingLoop final : EventLoop {
    explicit SleepingLoop(Schedule& served) : schedule(served) {}
    void processEvents() override { schedule.runDue(); }
    Schedule& schedule;
};

// A PC that slept for a night has one poll to make up for, not a night of them: the generator is not lost.
TEST_F(ClockTest, APcThatSleptFindsTheGeneratorWhereItWas) {
    MemoryPlatform machine;
    SleepingLoop loop(schedule);
    Application application(
        {schedule, loop, machine.port, machine.store, machine.folder, machine.desktop, machine.power}, "");
    application.start();
    machine.port.receive("ST2\r\n");
    pass(15'000);
    (void)machine.port.takeWritten();
    clock.set(clock.now() + 8 * 3'600'000);
    pass(3000);
    EXPECT_FALSE(application.console()["lblHelp"].visible());
    EXPECT_TRUE(application.console()["cmbConfiguration"].enabled());
    EXPECT_LE(machine.port.takeWritten().size(), 5 * std::string_view("ST\r\n\x03").size());
}

} // namespace
} // namespace quillon
