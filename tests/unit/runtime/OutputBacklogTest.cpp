#include "runtime/OutputBacklog.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace quillon {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class OutputBacklogTest : public testing::Test {
protected:
    void add(std::string_view frame) { backlog.add(frame, now); }
    /// Looks every 5 ms until that time.
    void until(Milliseconds end) {
        for (; now <= end; now += 5) {
            backlog.pass(now, [this](std::string_view frame) { return device(frame); });
        }
        now = end;
    }
    bool device(std::string_view frame) {
        if (fails) {
            backlog.clear();
            return false;
        }
        if (room == 0) {
            return false;
        }
        --room;
        line += frame;
        return true;
    }
    std::vector<std::string> takeTold() { return std::exchange(told, {}); }

    OutputBacklog backlog{[this](std::string_view frame, bool sent) {
        told.push_back(std::to_string(now) + (sent ? " sent " : " lost ") + std::string(frame));
    }};
    Milliseconds now = 0;
    int room = 0; // frames that the device takes
    bool fails = false;
    std::string line;
    std::vector<std::string> told;
};

TEST_F(OutputBacklogTest, AFarEndThatReadsAgainGetsNothingOlderThanTwoSeconds) {
    for (const char* poll : {"ST;", "HU;", "CF1;", "ST;", "HU;"}) {
        add(poll);
        until(now + 700);
    }
    EXPECT_THAT(takeTold(), ElementsAre("2005 lost ST;", "2705 lost HU;", "3405 lost CF1;"));
    room = 1;
    until(4000);
    EXPECT_THAT(takeTold(), ElementsAre("3500 sent ST;")) << "the rest waits until this is out";
    room = 9;
    until(4100);
    EXPECT_THAT(takeTold(), ElementsAre("4000 sent HU;")) << "1200 ms old";
    EXPECT_EQ(line, "ST;HU;");
    EXPECT_EQ(backlog.lost(), 3U);
    EXPECT_TRUE(backlog.empty());
}

TEST_F(OutputBacklogTest, WhatDoesNotFitIsLostWhole) {
    add(std::string(OutputBacklog::kCapacity - 3, 'x'));
    add("long");
    add("ST;");
    add("HU;");
    EXPECT_EQ(backlog.size(), OutputBacklog::kCapacity);
    EXPECT_THAT(takeTold(), ElementsAre("0 lost long", "0 lost HU;"));
    room = 9;
    until(0);
    EXPECT_TRUE(line.ends_with("xST;"));
    EXPECT_EQ(backlog.size(), 0U);
}

TEST_F(OutputBacklogTest, ADeviceThatGoesTakesAllThatWaitsWithIt) {
    add("RX0;");
    add("RX1;");
    fails = true;
    until(0);
    EXPECT_THAT(takeTold(), ElementsAre("0 lost RX0;", "0 lost RX1;"));
    EXPECT_TRUE(backlog.empty());
    fails = false;
    room = 9;
    until(1000);
    EXPECT_THAT(takeTold(), IsEmpty());
    EXPECT_EQ(line, "");
}

} // namespace
} // namespace quillon
