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

} // namespace
} // namespace quillon
