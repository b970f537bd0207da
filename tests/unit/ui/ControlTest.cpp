#include "ui/Control.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/unit/base/Faults.h"
#include "tests/unit/ui/Screen.h"
#include "ui/ControlHost.h"
#include "ui/ControlTable.h"

namespace quillon {
namespace {

using testing::ElementsAre;

TEST(Control, RefusesAPropertyThatItsKindLacks) {
    Control label(Kind::Label, "lbl");
    Control slider(Kind::Slider, "sld");
    Control text(Kind::TextBox, "txt");
    TestScreen screen;
    TimerControl timer("tmr", screen.time.schedule());
    const std::initializer_list<std::function<void()>> refused{
        [&] { label.setText("x"); },           [&] { (void)label.value(); },
        [&] { (void)slider.fontSize(); },      [&] { slider.setBackColour(1); },
        [&] { text.setCaption("x"); },         [&] { (void)text.items(); },
        [&] { timer.setVisible(true); },       [&] { timer.setPlace({}); },
        [&] { (void)screen.form.fontSize(); }, [&] { (void)screen.user.enabled(); }};
    for (const auto& access : refused) {
        EXPECT_EQ(faultOf(access), Fault::kPropertyRefused);
    }
}

TEST(ControlHost, PanelsComeAndGoByKey) {
    TestScreen screen;
    ControlFactory factory;
    factory.add("Quillon.ctrSelWS",
                [&] { return std::make_unique<ControlHost>(Kind::User, "made", screen.time.schedule()); });
    ControlHost& panel = screen.user.addByClass("QUILLON.ctrselws", "SelWSCal", factory);
    EXPECT_FALSE(panel.visible());
    EXPECT_EQ(panel.name(), "SelWSCal");
    EXPECT_EQ(screen.user.keyed("selwscal"), &panel);
    EXPECT_EQ(screen.user.find("SelWSCal"), &panel);
    EXPECT_EQ(faultOf([&] { screen.user.addByClass("Quillon.ctrSelWS", "SELWSCAL", factory); }), 457);
    EXPECT_EQ(faultOf([&] { screen.user.addByClass("ctrOther", "Other", factory); }), Fault::kNoSuchName);

    EXPECT_TRUE(screen.user.removeKeyed("SelWSCal"));
    EXPECT_FALSE(screen.user.removeKeyed("SelWSCal"));
    EXPECT_EQ(screen.user.find("SelWSCal"), nullptr);
    EXPECT_EQ(panel.container(), nullptr) << "it lives until its own handler has ended";
    screen.time.processEvents();
    EXPECT_NO_THROW(screen.user.addByClass("Quillon.ctrSelWS", "SelWSCal", factory));
}

} // namespace
} // namespace quillon
