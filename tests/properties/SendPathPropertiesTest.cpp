#include <cstdint>
#include <deque>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "link/SendPath.h"
#include "link/SendQueue.h"
#include "runtime/MemoryPlatform.h"
#include "ui/ControlHost.h"

namespace quillon {
namespace {

/// The send path alone, and a list of what it accepted and has not given up yet.
class SendPathProperties : public testing::TestWithParam<std::uint32_t> {
protected:
    struct Accepted {
        std::string text;
        bool acknowledged;
        int sent = 0;
    };

    SendPathProperties() {
        state.Handshaking = true;
        events.WrongPhase.connect([this](const std::string&) { ++refused; });
        machine.port.onWritten = [this](std::string_view bytes) {
            left(std::string(bytes.substr(0, bytes.size() - 3)));
        };
        machine.port.open(1, "");
    }

    static ControlHost& withDebugView(ControlHost& host) {
        host.add(Kind::Frame, "fraDebug");
        host.add(Kind::Frame, "fraStatus");
        host.add(Kind::TextBox, "txtDebugComm");
        return host;
    }

    /// A frame is on the line: it must be the one that has waited longest.
    void left(const std::string& text) {
        ++transmissions;
        settle();
        if (text.empty()) {
            EXPECT_TRUE(waiting.empty()) << "the empty message instead of " << waiting.front().text;
            return;
        }
        ASSERT_FALSE(waiting.empty()) << text << " was never accepted, or had been given up";
        ASSERT_EQ(text, waiting.front().text);
        EXPECT_LE(++waiting.front().sent, waiting.front().acknowledged ? state.numretries : 1);
        if (!waiting.front().acknowledged) {
            waiting.pop_front();
        }
    }

    /// What has left the queue without a sign has had all its tries.
    void settle() {
        while (waiting.size() > static_cast<std::size_t>(send.queueCount())) {
            EXPECT_TRUE(waiting.front().acknowledged && waiting.front().sent == state.numretries)
                << waiting.front().text << " is lost after " << waiting.front().sent << " transmissions";
            waiting.pop_front();
        }
    }

    void ask(std::int16_t phases, bool acknowledged, bool immediately) {
        const std::string text = "M" + std::to_string(next++);
        const int before = refused;
        const std::int16_t count = send.queueCount();
        send.SendMessage(text, phases, acknowledged, static_cast<std::int16_t>(50 + 150 * (next % 5)),
                         immediately);
        const bool allowed = (state.m_PhaseMask & phases) == state.m_PhaseMask;
        EXPECT_EQ(refused, before + (allowed ? 0 : 1));
        if (!allowed) {
            EXPECT_EQ(send.queueCount(), count) << "a refused message changed the queue";
            return;
        }
        if (immediately) {
            waiting.clear();
        }
        if (immediately || count < SendQueue::kCapacity) {
            waiting.push_back({text, acknowledged && !tmrAutoRepeat.running()});
        }
        EXPECT_EQ(static_cast<std::size_t>(send.queueCount()), waiting.size());
    }

    void acknowledge() {
        const std::int16_t count = send.queueCount();
        send.fmessMessageAcknowledge();
        if (send.queueCount() < count) {
            EXPECT_GT(transmissions, counted) << "an acknowledgement without a transmission took a message";
            waiting.pop_front();
        }
        counted = transmissions;
        send.messageHeard();
    }

    MemoryPlatform machine;
    ControlHost host{Kind::User, "Line", machine.time.schedule()};
    Timer& tmrProtocolHandshaking = host.addTimer("tmrProtocolHandshaking");
    Timer& tmrWaitAfterRx = host.addTimer("tmrWaitAfterRx");
    Timer& tmrAutoRepeat = host.addTimer("tmrAutoRepeat");
    Timer& timerStatusUpdate = host.addTimer("timerStatusUpdate");
    LinkState state;
    LinkEvents events;
    CommunicationLog log{withDebugView(host), machine.folder, machine.desktop};
    SendPath send{state,
                  events,
                  machine.port,
                  log,
                  {tmrProtocolHandshaking, tmrWaitAfterRx, tmrAutoRepeat, timerStatusUpdate}};
    std::deque<Accepted> waiting;
    int next = 0;
    int refused = 0;
    int transmissions = 0;
    int counted = 0; ///< transmissions up to the last acknowledgement
};

TEST_P(SendPathProperties, NothingIsLostOrReorderedButByTheRules) {
    std::mt19937 random(GetParam());
    const auto below = [&random](std::uint32_t limit) { return random() % limit; };
    int fullest = 0;
    for (int i = 0; i < 6000 && !HasFailure(); ++i) {
        switch (below(12)) {
        case 0:
            state.m_PhaseMask = maskOf(Phase{static_cast<std::int32_t>(1 + below(14))});
            break;
        case 1:
            acknowledge();
            break;
        case 2:
            send.messageHeard();
            break;
        case 3:
            tmrAutoRepeat.setRunning(below(4) == 0);
            break;
        case 4:
            ask(16383, below(2) == 0, below(6) == 0);
            break;
        case 5: // many at once, as held keys bring them
            for (std::uint32_t j = below(8) == 0 ? 120 : 0; j > 0; --j) {
                ask(16383, below(3) == 0, false);
            }
            break;
        case 6:
        case 7:
        case 8:
            ask(static_cast<std::int16_t>(below(16384)), below(2) == 0, below(40) == 0);
            break;
        default:
            machine.time.advance(below(900));
        }
        settle();
        fullest = std::max<int>(fullest, send.queueCount());
        ASSERT_LE(send.queueCount(), SendQueue::kCapacity);
    }
    EXPECT_EQ(fullest, SendQueue::kCapacity) << "the queue was never full";
    // A line that nobody disturbs comes to rest.
    machine.time.advance(Milliseconds{100} * 4 * 700 + 2000);
    settle();
    EXPECT_EQ(send.queueCount(), 0);
    EXPECT_TRUE(waiting.empty());
    EXPECT_FALSE(tmrProtocolHandshaking.running());
    EXPECT_FALSE(tmrWaitAfterRx.running());
}

INSTANTIATE_TEST_SUITE_P(Seeds, SendPathProperties, testing::Range(1U, 9U));

} // namespace
} // namespace quillon
