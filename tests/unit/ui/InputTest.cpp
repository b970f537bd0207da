#include "ui/Input.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "runtime/MemoryPlatform.h"
#include "ui/ControlHost.h"
#include "ui/ControlLock.h"

namespace quillon {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A form with a user control that holds a frame with a key in it.
struct TestScreen {
    VirtualTime time;
    ControlHost form{Kind::Form, "frm", time.schedule()};
    ControlHost& user = form.adopt(std::make_unique<ControlHost>(Kind::User, "usr", time.schedule()));
    Control& frame = user.add(Kind::Frame, "fra");
    Control& key = user.add(Kind::Button, "key", std::nullopt, &frame);
};

class InputTest : public testing::Test {
protected:
    InputTest() { watch(screen.key); }

    void watch(Control& control) {
        const auto note = [this, &control](const char* what) {
            return [this, &control, what] { happened.push_back(control.name() + " " + what); };
        };
        control.on = {note("press"),   note("release"), note("click"),
                      note("abandon"), note("cancel"),  note("change")};
    }

    TestScreen screen;
    Input input;
    std::vector<std::string> happened;
};

TEST_F(InputTest, NothingReachesWhatIsHiddenDisabledOrBehindABox) {
    const auto refused = [this] { return !input.press(screen.key) && !input.click(screen.key); };
    screen.frame.setEnabled(false);
    EXPECT_TRUE(refused());
    screen.frame.setEnabled(true);
    screen.user.setVisible(false);
    EXPECT_TRUE(refused());
    screen.user.setVisible(true);
    input.boxOpened();
    EXPECT_TRUE(refused());
    input.boxClosed();
    EXPECT_THAT(happened, IsEmpty());
    EXPECT_TRUE(input.press(screen.key));
}

TEST_F(InputTest, AReleaseReachesWhatWasPressedButTheClickDoesNot) {
    input.press(screen.key);
    screen.key.setEnabled(false);
    input.release(screen.key);
    input.release(screen.key);
    EXPECT_THAT(happened, ElementsAre("key press", "key release", "key abandon"));
    screen.key.setEnabled(true);
    happened.clear();
    std::vector<std::string> told;
    input.onGesture = [&told](Gesture, const Control&, std::string_view value) { told.emplace_back(value); };
    input.press(screen.key);
    input.release(screen.key, false);
    EXPECT_THAT(happened, ElementsAre("key press", "key release", "key abandon")) << "it slid off";
    EXPECT_THAT(told, ElementsAre("", "outside"));
    screen.key.on.press = {};
    happened.clear();
    for (const bool over : {false, true}) {
        input.press(screen.key);
        input.release(screen.key, over);
    }
    EXPECT_THAT(happened, ElementsAre("key abandon", "key release", "key click")) << "nothing was begun";
}

TEST_F(InputTest, AFaultInOneKeyLeavesTheOtherToBeLetGo) {
    Control& other = screen.user.add(Kind::Button, "other");
    watch(other);
    screen.key.on.cancel = [] { throw Fault(Fault::kOverflow); };
    input.press(screen.key);
    input.press(other);
    EXPECT_THROW(input.cancel(), Fault);
    EXPECT_EQ(input.gestureOwner(), nullptr);
    input.release(screen.key);
    input.release(other);
    EXPECT_THAT(happened, ElementsAre("key press", "other press", "other release", "other click"));
}

TEST_F(InputTest, AControlThatGoesLeavesItsLock) {
    auto gone = std::make_unique<Control>(Kind::Button, "gone");
    ControlLock lock({gone.get(), &screen.key});
    EXPECT_FALSE(input.press(screen.key));
    gone.reset();
    lock.release();
    EXPECT_TRUE(input.press(screen.key));
}

TEST_F(InputTest, OnlyTheOperatorsHandCallsTheHandlers) {
    Control& text = screen.user.add(Kind::TextBox, "txt");
    Control& list = screen.user.add(Kind::List, "lst");
    Control& slider = screen.user.add(Kind::Slider, "sld");
    list.setItems({"a", "b"});
    for (Control* control : {&text, &list, &slider}) {
        watch(*control);
    }
    text.setText("model");
    list.setText("b");
    slider.setValue(3);
    EXPECT_THAT(happened, IsEmpty());

    EXPECT_TRUE(input.type(text, "hand"));
    EXPECT_TRUE(input.select(list, "a"));
    EXPECT_FALSE(input.select(list, "c"));
    EXPECT_TRUE(input.slide(slider, 99));
    text.setReadOnly(true);
    EXPECT_FALSE(input.type(text, "again"));
    EXPECT_THAT(happened, ElementsAre("txt change", "lst click", "sld change", "sld release"));
    EXPECT_EQ(text.text(), "hand");
    EXPECT_EQ(list.listIndex(), 0);
    EXPECT_EQ(slider.value(), 10);
}

} // namespace
} // namespace quillon
