#include "runtime/Signal.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillon {
namespace {

using testing::ElementsAre;

class SignalTest : public testing::Test {
protected:
    [[nodiscard]] Signal<int>::Listener note(const std::string& name) {
        return [this, name](int value) { heard.push_back(name + std::to_string(value)); };
    }

    Signal<int> signal;
    std::vector<std::string> heard;
};

TEST_F(SignalTest, AnObserverHearsBeforeAllOthers) {
    signal.connect(note("listener"));
    signal.observe(note("observer"));
    signal.raise(1);
    EXPECT_THAT(heard, ElementsAre("observer1", "listener1"));
}

TEST_F(SignalTest, ListenersMayComeAndGoWhileItIsRaised) {
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

TEST_F(SignalTest, AListenerMayTakeItselfOffInANestedRaise) {
    Signal<int>::Connection self = 0;
    self = signal.connect([&](int value) {
        note("self")(value);
        signal.disconnect(self);
        signal.raise(value + 1);
        note("still here")(value);
    });
    signal.connect(note("other"));
    signal.raise(1);
    EXPECT_THAT(heard, ElementsAre("self1", "other2", "still here1", "other1"));
}

} // namespace
} // namespace quillon
