#include "tests/unit/flows/Flow.h"

namespace quillon {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

class CountersTest : public FlowTest {
protected:
    CountersTest() { start(); }

    void read() {
        click("cmbReadExposureCounters");
        wait(6500);
        report("TC27");
        wait(2000);
        ASSERT_TRUE(control("fraExposureCounters").visible());
        forget();
    }
};

TEST_F(CountersTest, AProtocolErrorEndsTheReadingAtTheNextTick) {
    click("cmbReadExposureCounters");
    wait(2500);
    events().MessageProtocolError.raise();
    wait(1500);
    EXPECT_EQ(message(), "Protocol Error");
    EXPECT_THAT(busyReports, ElementsAre(1, 0));
    EXPECT_FALSE(running("tmrReadExposureCounters"));
    EXPECT_EQ(control("cmbClose").caption(), "Close");
    forget();
    wait(6000);
    EXPECT_THAT(sent, Not(Contains("TC1")));
    EXPECT_THAT(sent, Contains("ST"));
    // The next reading is not spoiled by it.
    click("Error", "cmbOK");
    wait(10000);
    read();
}

TEST_F(CountersTest, ThePollGoesOnWithoutTheLastAnswerAndBehindAFailureWithTheScreenOpen) {
    click("cmbReadExposureCounters");
    wait(12'000);
    forget();
    wait(4000);
    EXPECT_THAT(sent, Contains("ST"));
    start();
    click("cmbReadExposureCounters");
    wait(2500);
    report("TC27");
    ASSERT_TRUE(control("fraExposureCounters").visible());
    events().MessageProtocolError.raise();
    wait(2500);
    EXPECT_EQ(message(), "Protocol Error");
    forget();
    wait(4000);
    EXPECT_THAT(sent, Contains("ST"));
}

TEST_F(CountersTest, WhatWaitsIsServedBetweenResetAndReading) {
    read();
    press("cmdResetT1");
    wait(10000);
    release("cmdResetT1");
    bool served = false;
    machine.time.schedule().post(0, [&] { served = true; });
    click("cmdResetCounterYes");
    EXPECT_TRUE(served);
}

TEST_F(CountersTest, TheGeneratorsWishForABeepSoundsOnce) {
    report("BEEP1");
    report("BEEPX");
    EXPECT_EQ(machine.desktop.beeps(), 1);
}

TEST_F(CountersTest, EachResetKeyAsksForItsOwnCounter) {
    read();
    report("TC34");
    struct Row {
        const char* key;
        const char* question;
        const char* reset;
        const char* again;
    };
    // clang-format off
    for (const Row& row : {
             Row{"cmdResetT1",     "Do you really want to reset RAD exposure counter for tube 1?", "TCR0", "TC0"},
             Row{"cmdResetT2",     "Do you really want to reset RAD exposure counter for tube 2?", "TCR1", "TC1"},
             Row{"cmdResetFluoro", "Do you really want to reset fluoro time exposure counter?",    "TCR2", "TC2"},
             Row{"cmdResetT3",     "Do you really want to reset RAD exposure counter for tube 3?", "TCR3", "TC3"}}) {
        // clang-format on
        forget();
        press(row.key);
        wait(10000);
        release(row.key);
        EXPECT_EQ(control("lblResetRADCounter").caption(), row.question);
        click("cmdResetCounterYes");
        wait(2000);
        EXPECT_THAT(sent, Contains(row.reset));
        EXPECT_THAT(sent, Contains(row.again));
    }
}

TEST_F(CountersTest, APollThatStoppedIsBackHalfAMinuteLaterWhateverIsReportedMeanwhile) {
    start();
    application->link().timer("timerStatusUpdate").stop();
    report("ST3");
    wait(20'000);
    report("ST4");
    wait(9'999);
    EXPECT_FALSE(application->link().polls());
    wait(1);
    EXPECT_TRUE(application->link().polls());
}

} // namespace
} // namespace quillon
