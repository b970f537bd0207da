#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "base/Text.h"
#include "tests/unit/layout/Screens.h"

namespace quillon {
namespace {

using Names = std::initializer_list<std::string_view>;

bool isOneOf(const Control& control, Names names) {
    return std::any_of(names.begin(), names.end(),
                       [&control](std::string_view name) { return equalsNoCase(control.name(), name); });
}

/// Never on show, or drawn behind or over all others.
bool liesApart(const Control& control) {
    return isOneOf(control, {"pctLogo", "cmdSoftwareUpgrade", "lstExtendedPosition", "Iconized", "Shape1"});
}

/// Two that take turns on one place.
bool takeTurns(const Control& a, const Control& b) {
    for (const Names turns :
         {Names{"fraMainMenuItem", "fraServiceMenuItem"}, Names{"fraMainMenu", "fraServiceMenu"},
          Names{"fraStatus", "fraDebug"}, Names{"cmbAutocalibration", "cmbGoToUserMode"},
          Names{"lblHelp", "lblErrorDescription", "lblSoftwareVersion"},
          Names{"fraLong", "fraTray", "fraAlfa", "fraBeta", "fraSID"}}) {
        if (isOneOf(a, turns) && isOneOf(b, turns)) {
            return true;
        }
    }
    const Names covering{"fraTorvaneSerial", "fraRemote", "fraOrla"};
    const Names content{"fraTorvaneSerial",  "fraRemote",         "fraOrla",
                        "imgQuillonConsole", "lblQuillonConsole", "fraExposureCounters"};
    return (isOneOf(a, covering) && isOneOf(b, content)) || (isOneOf(b, covering) && isOneOf(a, content));
}

bool overlap(const Place& a, const Place& b) {
    return a.left < b.left + b.width && b.left < a.left + a.width && a.top < b.top + b.height &&
           b.top < a.top + a.height;
}

std::string label(const Control& control) {
    return control.name() + (control.index() ? "(" + std::to_string(*control.index()) + ")" : "");
}

/// Checks what lies on a control and on the frames below it.
void expectOrderly(const Control& holder, double smallestFont) {
    // A caption takes one line at the top of a frame: its letters and what a font adds above and below them.
    const bool captioned = holder.kind() == Kind::Frame && !holder.caption().empty();
    const double captionLine = captioned ? holder.fontSize() * 20 * 1.17 : 0;
    const auto& stack = holder.stack();
    for (auto at = stack.begin(); at != stack.end(); ++at) {
        const Control& control = **at;
        const Place& place = control.place();
        EXPECT_GE(place.left, 0) << label(control);
        EXPECT_GE(place.top, captionLine) << label(control);
        EXPECT_LE(place.left + place.width, holder.width()) << label(control);
        EXPECT_LE(place.top + place.height, holder.height()) << label(control);
        EXPECT_GT(place.width, 0) << label(control);
        EXPECT_GT(place.height, 0) << label(control);
        if (control.has(Property::Font)) {
            EXPECT_GE(control.fontSize(), smallestFont) << label(control);
            EXPECT_GE(place.height, control.fontSize() * 20 * 1.17)
                << label(control) << " is lower than its text";
        }
        for (auto other = std::next(at); other != stack.end(); ++other) {
            if (!liesApart(control) && !liesApart(**other) && !takeTurns(control, **other)) {
                EXPECT_FALSE(overlap(place, (*other)->place()))
                    << label(control) << " and " << label(**other);
            }
        }
        if (control.kind() == Kind::Frame) {
            expectOrderly(control, smallestFont);
        }
    }
}

TEST(ScreenGeometry, ControlsStayInTheirContainersAndOffEachOther) {
    Screens screens;
    expectOrderly(screens.console(), 9);
    ControlHost surface(Kind::User, "panel", screens.panel().schedule());
    surface.setPlace({0, 0, kPanelDesignWidth, kPanelDesignHeight});
    addPanelControls(surface);
    expectOrderly(surface, 8);
    expectOrderly(screens.dialog(kWarningRows, kModalSize), 10);
    expectOrderly(screens.dialog(kSelectFocusRows, kModalSize), 10);
    expectOrderly(screens.dialog(kSelectWorkstationRows, kModalSize), 10);
    expectOrderly(screens.dialog(kErrorRows, kErrorSize), 10);
}

TEST(ScreenGeometry, ThePanelStartsWithItsFirstPageAndDarkLamps) {
    Screens screens;
    const ControlHost& panel = screens.panel();
    for (const auto& control : panel.controls()) {
        if ((control->name().starts_with("txt") && control->name().ends_with("Warning")) ||
            control->name().ends_with("MenuItem")) {
            EXPECT_EQ(control->visible(), control->name() == "fraMainMenuItem" && control->index() == 0)
                << label(*control);
        }
    }
    for (const auto* name : {"fraServiceMenu", "fraDebug", "Iconized", "lstExtendedPosition"}) {
        EXPECT_FALSE(panel[name].visible()) << name;
    }
    EXPECT_TRUE(panel["fraMainMenu"].visible() && panel["fraStatus"].visible());
    EXPECT_EQ(panel["comboReadExposureCounter"].text(), "Tube1 RAD");
    EXPECT_FALSE(panel.timer("timerStatusUpdate").running());
}

TEST(ScreenGeometry, DialogsLieOnTheirFrame) {
    Screens screens;
    for (ControlHost* dialog :
         {&screens.dialog(kWarningRows, kModalSize), &screens.dialog(kSelectFocusRows, kModalSize),
          &screens.dialog(kSelectWorkstationRows, kModalSize), &screens.dialog(kErrorRows, kErrorSize)}) {
        EXPECT_EQ(dialog->at("Shape1").zOrder(), 0);
        EXPECT_EQ(dialog->at("Shape1").art(), "frame");
    }
    EXPECT_LE(kErrorSize.width, screens.console().at("fraTorvaneSerial").width() * 0.788)
        << "the error dialog keeps its size in the smallest window";
}

TEST(ScreenGeometry, WhatFollowsTheSameSpotSharesItsPlace) {
    Screens screens;
    const ControlHost& console = screens.console();
    EXPECT_EQ(console.at("cmbGoToUserMode").place(), console.at("cmbAutocalibration").place());
    EXPECT_EQ(console.at("lblHelp").place(), console.at("lblErrorDescription").place());
    EXPECT_EQ(console.at("lblHelp").place(), console.at("lblSoftwareVersion").place());
    for (const auto* name : {"fraTray", "fraAlfa", "fraBeta", "fraSID"}) {
        EXPECT_EQ(console.at(name).place(), console.at("fraLong").place()) << name;
    }
    const Control& frame = console.at("fraTorvaneSerial");
    EXPECT_EQ(screens.panel().place(), (Place{0, 0, frame.width(), frame.height()}));
    EXPECT_EQ(screens.panel().at("fraDebug").place(), screens.panel().at("fraStatus").place());
    const Control& help = console.at("lblHelp");
    EXPECT_GE(help.height(), 3 * help.fontSize() * 20 * 1.3) << "the prompt needs three lines";
}

TEST(ScreenGeometry, KeysAreAFingerWideOnTheTouchPanel) {
    constexpr Twips kFinger = 45 * 15; // 9 mm on a panel of 10 inches with 1024 x 768 pixels
    Screens screens;
    screens.resize(1024, 768);
    for (ControlHost* host : {&screens.console(), &screens.panel()}) {
        for (const auto& control : host->controls()) {
            if (control->kind() == Kind::Button || control->kind() == Kind::List ||
                control->kind() == Kind::Slider ||
                (control->kind() == Kind::TextBox && !control->readOnly())) {
                EXPECT_GE(control->width(), kFinger) << label(*control);
                EXPECT_GE(control->height(), kFinger) << label(*control);
            }
        }
    }
    for (const auto& control : screens.dialog(kErrorRows, kErrorSize).controls()) {
        if (control->kind() == Kind::Button) {
            EXPECT_GE(std::min(control->width(), control->height()), kFinger) << label(*control);
        }
    }
}

} // namespace
} // namespace quillon
