#include "link/FrameReceiver.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillon {
namespace {

struct Receiver {
    LinkEvents events;
    std::vector<std::string> frames;
    std::vector<std::string> values;
    FrameReceiver receiver{events, [this](std::string_view frame) { frames.emplace_back(frame); }};

    Receiver() {
        events.KVPCINEChangeValue.connect([this](const std::string& v) { values.push_back("kVp " + v); });
        events.MSDSIChangeValue.connect([this](const std::string& v) { values.push_back("ms " + v); });
    }
};

using Texts = std::vector<std::string>;

TEST(FrameReceiver, CutsFramesAtTheFirstEndByte) {
    struct Row {
        Texts chunks;
        Texts frames;
    };
    const Row rows[] = {
        {{"ST2\r\n\x03"}, {"ST2\r", ""}},
        {{"ST2\rHE10\r\x03"}, {"ST2\rHE10\r"}},
        {{"ST", "2\r", "\n"}, {"ST2\r"}},
        {{"\n\x03"}, {"", ""}},
        {{"half"}, {}},
        {{"Kt\x01\xFF\r\n"}, {"Kt\x01\xFF\r"}},
    };
    for (const Row& row : rows) {
        Receiver line;
        for (const std::string& chunk : row.chunks) {
            line.receiver.receive(chunk);
        }
        EXPECT_EQ(line.frames, row.frames) << row.chunks.front();
    }
}

TEST(FrameReceiver, TakesTheBytesOfReducedCommandsOutOfTheText) {
    struct Row {
        std::string bytes;
        Texts values;
        std::string frame;
    };
    const Row rows[] = {
        {"ST2K\xE6\n", {"kVp 130"}, "ST2\xE6"},    {"K\x64\n", {}, "K\x64"},
        {"ST2t\x01\x02\n", {"ms 258"}, "ST2\x02"}, {"ST2t\x7F\xFF\n", {"ms 32767"}, "ST2\xFF"},
        {"ST2t\x80\x01\n", {}, "ST2\x01"},         {"t\x01\x02\n", {"ms 258"}, "\x02"},
    };
    for (const Row& row : rows) {
        Receiver line;
        line.receiver.setReducedCommandCineAndDSI(true);
        line.receiver.receive(row.bytes);
        EXPECT_EQ(line.values, row.values) << row.bytes;
        EXPECT_EQ(line.frames, Texts{row.frame}) << row.bytes;
    }
}

TEST(FrameReceiver, LosesOneByteInEvery512WithoutAnEnd) {
    Receiver line;
    std::string bytes(600, 'a');
    bytes[511] = 'x';
    line.receiver.receive(bytes + "\n");
    EXPECT_EQ(line.frames, Texts{std::string(599, 'a')});
    // An end byte at that place is lost like any other.
    line.receiver.receive(std::string(511, 'b') + "\n" + "c\n");
    EXPECT_EQ(line.frames.back(), std::string(511, 'b') + "c");
}

TEST(FrameReceiver, GivesAFrameWithoutEndUpAndTakesTheNext) {
    Receiver line;
    for (int i = 0; i < 70; ++i) {
        line.receiver.receive(std::string(512, 'a'));
    }
    line.receiver.receive("\nST2\r\n");
    EXPECT_EQ(line.frames, Texts{"ST2\r"});
}

TEST(FrameReceiver, ServesBytesThatArriveInsideAHandlerBehindThoseItHas) {
    LinkEvents events;
    Texts frames;
    FrameReceiver* self = nullptr;
    FrameReceiver receiver(events, [&](std::string_view frame) {
        frames.emplace_back(frame);
        if (frame == "a") {
            self->receive("d\n");
        }
    });
    self = &receiver;
    receiver.receive("a\nb\nc\n");
    EXPECT_EQ(frames, (Texts{"a", "b", "c", "d"}));
}

} // namespace
} // namespace quillon
