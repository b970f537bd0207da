#include "link/SendPath.h"

#include "link/SendQueue.h"
#include "tests/unit/model/LinkFixture.h"

namespace quillon {
namespace {

using Names = std::vector<std::string>;

class SendPathTest : public LinkTest {
protected:
    void send(std::string_view text, std::int16_t phases = 16383, bool acknowledged = false) {
        link.SendMessage(text, phases, acknowledged);
    }
};

TEST_F(SendPathTest, RepeatsAnUnacknowledgedMessageAndDropsItAfterItsLastTry) {
    send("CF1", 16383, true);
    send("KV+");
    advance(5000);
    EXPECT_EQ(takeTimeline(), (Names{"350 CF1", "700 CF1", "1050 CF1", "1400 CF1", "2100 KV+"}));
    // With nothing behind it, the empty message follows the one that was dropped.
    send("CF1", 16383, true);
    advance(5000);
    EXPECT_EQ(takeTimeline(), (Names{"5350 CF1", "5700 CF1", "6050 CF1", "6400 CF1", "7100 "}));
}

TEST_F(SendPathTest, AMessageHeardHoldsTheNextTransmissionBack) {
    send("CF1", 16383, true);
    advance(400); // sent at 350
    msg("HE10");
    advance(749);
    EXPECT_EQ(takeTimeline(), (Names{"350 CF1"}));
    advance(1);
    EXPECT_EQ(takeTimeline(), (Names{"1150 CF1"})); // 750 after the last message heard
    msg("AK");
    advance(5000);
    EXPECT_TRUE(takeTimeline().empty());
}

TEST_F(SendPathTest, WaitsTheRestOfALongTimeoutAfterAMessageHeard) {
    for (const auto& [timeout, next] : {std::pair{1000, 1000}, {409, 809}, {410, 410}}) {
        settle();
        forget();
        call("SendMessage", {std::string("CF1"), 16383, true, timeout});
        advance(timeout);
        msg("HE10");
        takeTimeline();
        advance(next);
        EXPECT_EQ(takeTimeline(), (Names{decimalText(timeout + next) + " CF1"})) << timeout;
    }
}

TEST_F(SendPathTest, OneAcknowledgementCountsPerTransmission) {
    send("CF1", 16383, true);
    send("CF0", 16383, true);
    send("CFD", 16383, true);
    link.timer("timerStatusUpdate").start(100000);
    advance(350);
    msg("AK");
    msg("AK");
    EXPECT_FALSE(link.timer("timerStatusUpdate").running()) << "nothing is asked while something waits";
    advance(750);
    EXPECT_EQ(takeTimeline(), (Names{"350 CF1", "1100 CF0"}));
    msg("AK");
    advance(750);
    EXPECT_EQ(takeTimeline(), Names{"1850 CFD"});
    msg("AK");
    EXPECT_TRUE(link.timer("timerStatusUpdate").running());
}

TEST_F(SendPathTest, WhatIsQueuedInTheSilenceWaitsForItsEnd) {
    for (const bool discarded : {false, true}) {
        settle();
        forget();
        send("CF1", 16383, true);
        advance(350);
        msg("AK");
        send("KV+");
        if (discarded) {
            link.discardWaiting();
        }
        advance(5000);
        EXPECT_EQ(takeTimeline(), discarded ? Names{"350 CF1"} : (Names{"350 CF1", "1100 KV+"}));
    }
}

TEST_F(SendPathTest, DropsDuplicatesUnlessTheyDifferInTimeout) {
    send("KV?");
    send("KV?");
    call("SendMessage", {std::string("KV?"), 16383, false, 500});
    call("SendMessage", {std::string("a"), 16383, false, 0}); // no timeout counts as the usual one
    call("SendMessage", {std::string("b"), 16383, false, -5});
    call("SendMessage", {std::string("c"), 16383, false, 1});
    send("d");
    advance(5000);
    EXPECT_EQ(takeTimeline(), (Names{"350 KV?", "700 KV?", "1200 a", "1550 b", "1900 c", "1901 d"}));
}

TEST_F(SendPathTest, TheStepsOfAHeldKeyAreAllSentAndWaitForNoAcknowledgement) {
    link.timer("tmrAutoRepeat").start(100'000);
    send("KV+", 16383, true);
    send("KV+", 16383, true);
    advance(2000);
    EXPECT_EQ(takeTimeline(), (Names{"350 KV+", "700 KV+"}));
}

TEST_F(SendPathTest, RefusesWhatThePhaseDoesNotAllow) {
    send("KV+", 0); // before the first phase report everything passes
    msg("ST5");
    takeEvents();
    send("RF", 2);
    EXPECT_EQ(takeEvents(), Names{"WrongPhase(\"RF\")"});
    send("KV+", 18);
    advance(2000);
    EXPECT_EQ(takeTimeline(), (Names{"350 KV+", "700 KV+"}));
}

TEST_F(SendPathTest, AnImmediateMessageThrowsAwayTheQueueAndIsNotHeldBack) {
    for (const char* text : {"a", "b", "c", "d", "e"}) {
        send(text);
    }
    call("SendMessage", {std::string("CAU1"), 16383, true, 1000, true});
    advance(1500);
    msg("HE10");
    advance(500);
    EXPECT_EQ(takeTimeline(), (Names{"1000 CAU1", "2000 CAU1"}));
    // Dropped after its last try or with a closed port, it leaves the next one to be held back.
    for (const bool closed : {false, true}) {
        advance(6000);
        if (closed) {
            call("SendMessage", {std::string("CAU1"), 16383, true, 1000, true});
            link.setPortOpen(false);
            link.setPortOpen(true);
        }
        forget();
        send("CF1", 16383, true);
        advance(400);
        msg("HE10");
        advance(749);
        EXPECT_EQ(takeTimeline(), (Names{"350 CF1"})) << closed;
    }
}

TEST_F(SendPathTest, TheQueueIsBoundedAndNothingOfItSurvivesAClosedPort) {
    for (int i = 0; i < 150; ++i) {
        send("m" + std::to_string(i));
    }
    advance(60000);
    EXPECT_EQ(timeline.size(), 100u);
    EXPECT_EQ(sent.back(), "m99");

    takeTimeline();
    link.setPortOpen(false);
    send("lost");
    send("lost too");
    advance(5000);
    link.setPortOpen(true);
    send("new");
    advance(5000);
    EXPECT_EQ(takeTimeline(), (Names{"65350 new"}));
}

TEST_F(SendPathTest, WhatBecameOfEachMessageIsToldOnce) {
    std::vector<std::uint32_t> queued;
    std::map<std::uint32_t, bool> left;
    link.setSendNotices(
        {[&](std::uint32_t ticket) { queued.push_back(ticket); },
         [&](std::uint32_t ticket, bool done) { EXPECT_TRUE(left.emplace(ticket, done).second) << ticket; }});
    for (int i = 0; i < 105; ++i) { // five find no room, and share the end of the last
        send("m" + std::to_string(i));
    }
    advance(60000);
    send("RX0", 16383, true); // sent without an acknowledgement when the line is left
    advance(350);
    send("RX1");
    link.leavePort();
    for (const std::uint32_t ticket : queued) {
        EXPECT_EQ(left[ticket], ticket != 101) << ticket;
    }
    EXPECT_EQ(left.size(), 102U);
}

TEST_F(SendPathTest, AnAcknowledgementOfWhatWasThrownAwayTakesNothingElse) {
    for (const bool closed : {false, true}) {
        settle();
        forget();
        send("CF1", 16383, true);
        advance(400);
        link.discardWaiting();
        if (closed) {
            link.setPortOpen(false);
            link.setPortOpen(true);
        }
        send("CF0", 16383, true);
        msg("AK");
        advance(350);
        EXPECT_EQ(takeTimeline(), (Names{"350 CF1", "750 CF0"})) << closed;
        msg("AK");
    }
}

TEST_F(SendPathTest, WhatWaitsGoesOutOnceAndInOrderWhenTheLineIsLeft) {
    struct Row {
        Milliseconds at; // 350 is the first transmission
        const char* answer;
        Names sent;
    };
    for (const Row& row : {Row{349, nullptr, {"349 RX0", "349 RX1", "349 ST"}},
                           Row{350, nullptr, {"350 RX0", "350 RX1", "350 ST"}},
                           Row{700, nullptr, {"350 RX0", "700 RX0", "700 RX1", "700 ST"}},
                           Row{360, "AK", {"350 RX0", "360 RX1", "360 ST"}},
                           Row{360, "HE10", {"350 RX0", "360 RX1", "360 ST"}}}) {
        forget();
        send("RX0", 16383, true);
        send("RX1", 16383, true);
        send("ST");
        advance(row.at);
        if (row.answer != nullptr) {
            msg(row.answer);
        }
        link.leavePort();
        EXPECT_FALSE(platform.port.isOpen());
        link.setPortOpen(true);
        advance(3000);
        EXPECT_EQ(takeTimeline(), row.sent) << row.at;
    }
    // The last word is said once, whatever the phase.
    for (const int reported : {1, 2}) {
        phase(reported);
        for (const char* rays : {"RX1", "RX0", "RX1"}) {
            send(rays);
        }
        link.leavePort();
        EXPECT_EQ(takeTimeline(), (Names{"0 RX1", "0 RX0", "0 RX1"})) << reported;
        EXPECT_TRUE(takeEvents().empty()) << reported;
        link.setPortOpen(true);
    }
    link.setPortOpen(false);
    send("RX1");
    link.leavePort();
    EXPECT_TRUE(takeTimeline().empty()) << "a line that is closed takes nothing";
}

TEST(SendQueue, SearchesOnlyWhileTheTailHasNotWrapped) {
    SendQueue queue;
    const auto message = [](const std::string& text) { return QueuedMessage{text, 2, 350, false, 7}; };
    for (int i = 0; i < 99; ++i) {
        queue.enqueue(message("x"));
        queue.dequeue(true);
    }
    queue.enqueue(message("a")); // index 99: the tail is 0 now, below the head
    EXPECT_EQ(queue.queued(message("a")), 0U);
    queue.enqueue(message("b"));
    queue.dequeue(true);
    EXPECT_EQ(queue.queued(message("b")), 7U);
    EXPECT_EQ(queue.front().Message, "b");
    queue.dequeue(true);
    EXPECT_EQ(queue.front().Message, "");
    EXPECT_EQ(queue.front().Timeout, 0);
}

} // namespace
} // namespace quillon
