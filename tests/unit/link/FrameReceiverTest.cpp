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
