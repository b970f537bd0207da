#include "link/SendPath.h"

#include <gtest/gtest.h>

#include <string>

#include "link/SendQueue.h"
#include "tests/unit/link/Line.h"

namespace quillon {
namespace {

TEST(SendPath, RepeatsAnUnacknowledgedMessageAndDropsItAfterItsLastTry) {
    Line line;
    line.open();
    line.send("CF1", 16383, true);
    line.send("KV+");
    line.wait(5000);
    EXPECT_EQ(line.takeSent(),
              (Sends{{350, "CF1"}, {700, "CF1"}, {1050, "CF1"}, {1400, "CF1"}, {2100, "KV+"}}));
    // With nothing behind it, the empty message follows the one that was dropped.
    line.send("CF1", 16383, true);
    line.wait(5000);
    EXPECT_EQ(line.takeSent(),
              (Sends{{5350, "CF1"}, {5700, "CF1"}, {6050, "CF1"}, {6400, "CF1"}, {7100, ""}}));
}

TEST(SendPath, AMessageHeardHoldsTheNextTransmissionBack) {
    Line line;
    line.open();
    line.send("CF1", 16383, true);
    line.wait(400); // sent at 350
    line.hear("HE10");
    line.wait(749);
    EXPECT_EQ(line.takeSent(), (Sends{{350, "CF1"}}));
    line.wait(1);
    EXPECT_EQ(line.takeSent(), (Sends{{1150, "CF1"}})); // 750 after the last message heard
    line.hear("AK");
    line.wait(5000);
    EXPECT_TRUE(line.takeSent().empty());
}

TEST(SendPath, WaitsTheRestOfALongTimeoutAfterAMessageHeard) {
    for (const auto& [timeout, next] : {std::pair{1000, 1000}, {405, 805}, {410, 410}}) {
        Line line;
        line.open();
        line.link.call("SendMessage", {std::string("CF1"), 16383, true, timeout});
        line.wait(timeout);
        line.hear("HE10");
        line.takeSent();
        line.wait(next);
        EXPECT_EQ(line.takeSent(), (Sends{{timeout + next, "CF1"}})) << timeout;
    }
}

TEST(SendPath, OneAcknowledgementCountsPerTransmission) {
    Line line;
    line.open();
    line.send("CF1", 16383, true);
    line.send("CF0", 16383, true);
    line.send("CFD", 16383, true);
    line.wait(350);
    line.hear("AK");
    line.hear("AK");
    line.wait(750);
    EXPECT_EQ(line.takeSent(), (Sends{{350, "CF1"}, {1100, "CF0"}}));
    line.hear("AK");
    line.wait(2000);
    EXPECT_EQ(line.takeSent().front(), (Sent{1850, "CFD"}));
}

TEST(SendPath, ALateAcknowledgementTakesWhateverStandsAtTheHead) {
    Line line;
    line.open();
    line.send("CF1", 16383, true);
    line.wait(1750); // four tries, dropped
    line.send("CF0", 16383, true);
    line.hear("AK");
    line.wait(3000);
    for (const Sent& sent : line.takeSent()) {
        EXPECT_NE(sent.text, "CF0");
    }
}

TEST(SendPath, DropsDuplicatesUnlessTheyDifferInTimeout) {
    Line line;
    line.open();
    line.send("KV?");
    line.send("KV?");
    line.link.call("SendMessage", {std::string("KV?"), 16383, false, 500});
    for (const char* text : {"a", "b", "c"}) {
        line.send(text);
    }
    line.wait(5000);
    EXPECT_EQ(line.takeSent(), (Sends{{350, "KV?"}, {700, "KV?"}, {1200, "a"}, {1550, "b"}, {1900, "c"}}));
}

TEST(SendPath, RefusesWhatThePhaseDoesNotAllow) {
    Line line;
    line.open();
    line.send("KV+", 0); // before the first phase report everything passes
    line.hear("ST5");
    line.takeEvents();
    line.send("RF", 2);
    EXPECT_EQ(line.takeEvents(), Names{"WrongPhase(RF)"});
    line.send("KV+", 18);
    line.wait(2000);
    EXPECT_EQ(line.takeSent(), (Sends{{350, "KV+"}, {700, "KV+"}}));
}

TEST(SendPath, AnImmediateMessageThrowsAwayTheQueueAndIsNotHeldBack) {
    Line line;
    line.open();
    for (const char* text : {"a", "b", "c", "d", "e"}) {
        line.send(text);
    }
    line.link.call("SendMessage", {std::string("CAU1"), 16383, true, 1000, true});
    line.wait(1000);
    line.hear("HE10");
    line.wait(1000);
    EXPECT_EQ(line.takeSent(), (Sends{{1000, "CAU1"}, {2000, "CAU1"}}));
}

TEST(SendPath, TheQueueIsBoundedAndNothingOfItSurvivesAClosedPort) {
    Line line;
    line.open();
    for (int i = 0; i < 150; ++i) {
        line.send("m" + std::to_string(i));
    }
    line.wait(60000);
    EXPECT_EQ(line.sent.size(), 100u);
    EXPECT_EQ(line.takeSent().back().text, "m99");

    line.link.setPortOpen(false);
    line.send("lost");
    line.send("lost too");
    line.wait(5000);
    line.open();
    line.send("new");
    line.wait(5000);
    EXPECT_EQ(line.takeSent(), (Sends{{65350, "new"}}));
}

TEST(SendPath, ATimeoutOfNothingCountsAsTheUsualOne) {
    Line line;
    line.open();
    line.link.call("SendMessage", {std::string("a"), 16383, false, 0});
    line.link.call("SendMessage", {std::string("b"), 16383, false, -5});
    line.wait(1000);
    EXPECT_EQ(line.takeSent(), (Sends{{350, "a"}, {700, "b"}}));
}

TEST(SendQueue, SearchesOnlyWhileTheTailHasNotWrapped) {
    SendQueue queue;
    const auto message = [](const std::string& text) { return QueuedMessage{text, 2, 350, false}; };
    for (int i = 0; i < 99; ++i) {
        queue.enqueue(message("x"));
        queue.dequeue();
    }
    queue.enqueue(message("a")); // index 99: the tail is 0 now, below the head
    EXPECT_FALSE(queue.isQueued(message("a")));
    queue.enqueue(message("b"));
    queue.dequeue();
    EXPECT_TRUE(queue.isQueued(message("b")));
    EXPECT_EQ(queue.front().Message, "b");
    queue.dequeue();
    EXPECT_EQ(queue.front().Message, "");
    EXPECT_EQ(queue.front().Timeout, 0);
}

} // namespace
} // namespace quillon
