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

TEST(Control, ListsSelectByTextAndByIndex) {
    Control list(Kind::List, "lst");
    list.setItems({"1", "2", "2"});
    EXPECT_EQ(list.listIndex(), -1);
    list.setText("2");
    EXPECT_EQ(list.listIndex(), 1);
    EXPECT_EQ(faultOf([&] { list.setListIndex(3); }), Fault::kSubscript);
    list.setText("9");
    EXPECT_EQ(list.listIndex(), -1);
    EXPECT_EQ(list.text(), "");
}

TEST(Control, ASliderStaysWithinItsRange) {
    Control slider(Kind::Slider, "sld");
    slider.setValue(99);
    EXPECT_EQ(slider.value(), 10);
    slider.setMaximum(4);
    EXPECT_EQ(slider.value(), 4);
    slider.setValue(-1);
    EXPECT_EQ(slider.value(), 0);
}

TEST(Control, IsShownOnlyWithEverythingAroundIt) {
    TestScreen screen;
    EXPECT_TRUE(screen.key.shown());
    screen.frame.setVisible(false);
    EXPECT_FALSE(screen.key.shown());
    EXPECT_TRUE(screen.key.visible());
}

TEST(Control, TheFrontStandsLastInTheStack) {
    TestScreen screen;
    Control& second = screen.user.add(Kind::Button, "second", std::nullopt, &screen.frame);
    EXPECT_EQ(second.zOrder(), 1);
    screen.key.bringToFront();
    EXPECT_THAT(screen.frame.stack(), ElementsAre(&second, &screen.key));
    screen.key.sendToBack();
    EXPECT_EQ(screen.key.zOrder(), 0);
    EXPECT_EQ(screen.user.controls().back().get(), &second) << "the enumeration does not follow";
}

TEST(ControlHost, FindsByNameAndIndexWithoutCase) {
    TestScreen screen;
    constexpr std::array kRows{
        ControlRow{Kind::Frame, "fraMenu", 1, "", {1, 2, 3, 4}, 9, "Menu"},
        ControlRow{Kind::TextBox, "txt", 2, "fraMenu(1)", {5, 6, 7, 8}, 10, "T", false},
        ControlRow{Kind::TextBox, "txt", 0, "", {}, 8, ""},
    };
    addControls(screen.user, kRows);
    Control& text = screen.user.at("TXT", 2);
    EXPECT_EQ(text.container(), screen.user.find("fraMenu", 1));
    EXPECT_EQ(text.place(), (Place{5, 6, 7, 8}));
    EXPECT_EQ(text.text(), "T");
    EXPECT_FALSE(text.visible());
    EXPECT_THAT(screen.user.all("txt"), ElementsAre(screen.user.find("txt", 0), &text));
    EXPECT_EQ(screen.user.find("txt"), nullptr);
    EXPECT_EQ(faultOf([&] { (void)screen.user["missing"]; }), Fault::kNoSuchName);
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
