#include <set>

#include <QAccessible>
#include <QPlainTextEdit>

#include "Bench.h"
#include "qt/ListView.h"
#include "screenshots/Scenes.h"

namespace quillon {
namespace {

class AccessibleTest : public WindowTest {
protected:
    AccessibleTest() { form.setVisible(true); }

    [[nodiscard]] static QAccessibleInterface* node(QObject& object) {
        return QAccessible::queryAccessibleInterface(&object);
    }
    [[nodiscard]] QAccessibleInterface* node(const Control& control) {
        ControlView& view = *screen.view(control);
        return node(view.editor() != nullptr ? *view.editor() : static_cast<QObject&>(view));
    }
    /// What is listed below the window, by name and in order.
    [[nodiscard]] std::string listed() {
        turn();
        std::string all;
        QAccessibleInterface* window = node(static_cast<QObject&>(screen.window()));
        for (int i = 0; i < window->childCount(); ++i) {
            EXPECT_EQ(window->indexOfChild(window->child(i)), i);
            all += fromQt(window->child(i)->text(QAccessible::Name)) + ", ";
        }
        return all;
    }
    static void press(QAccessibleInterface* node) {
        node->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        rest(10);
    }
};

TEST_F(AccessibleTest, WhatIsHiddenOrCoveredIsNotListed) {
    Control& label = add(Kind::Label, "label", {0, 0, 1500, 300});
    Control& up = add(Kind::Button, "up", {0, 300, 1500, 600});
    Control& frame = add(Kind::Frame, "frame", {1500, 0, 1500, 1500});
    Control& inner = add(Kind::Button, "inner", {0, 0, 1500, 750}, &frame);
    label.setCaption("kVp");
    up.setArt("up");
    inner.setCaption("Store");
    EXPECT_EQ(listed(), "kVp, kVp +, Store, ");
    Control& panel = add(Kind::Frame, "panel", {1200, 0, 3000, 2000});
    panel.setCaption("Panel");
    EXPECT_EQ(listed(), "kVp, kVp +, Panel, ");
    // Pressed where nothing lies on it, and not at all once it is covered.
    record(up);
    record(panel);
    press(node(up));
    EXPECT_EQ(takeLog(), "up press, up release, up click, ");
    node(up)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    panel.setPlace({0, 0, 6000, 4500});
    EXPECT_EQ(listed(), "Panel, ");
    rest(10);
    EXPECT_EQ(takeLog(), "");
    panel.setVisible(false);
    up.setEnabled(false);
    EXPECT_EQ(listed(), "kVp, kVp +, Store, ");
    EXPECT_TRUE(node(up)->state().disabled);
    const auto actions = [&](const Control& key) {
        return node(key)->actionInterface()->actionNames().size();
    };
    EXPECT_EQ(actions(up), 0);
    EXPECT_EQ(actions(inner), 1);
    input.boxOpened();
    EXPECT_EQ(actions(inner), 0);
    input.boxClosed();
    input.blocks = [](const Control&) { return true; };
    EXPECT_EQ(actions(inner), 1) << "it is told why";
    press(node(inner));
    EXPECT_EQ(takeLog(), "");
}

TEST_F(AccessibleTest, AMenuThatIsShutOffIsNotListed) {
    Control& menu = add(Kind::Frame, "menu", {0, 0, 3000, 1000});
    Control& entry = add(Kind::Button, "entry", {0, 300, 1500, 600}, &menu);
    menu.setCaption("Menu");
    entry.setCaption("Comm");
    EXPECT_EQ(listed(), "Menu, ");
    entry.setEnabled(false);
    EXPECT_EQ(listed(), "Menu, ") << "some of its keys may come back";
    menu.setEnabled(false);
    EXPECT_EQ(listed(), "");
    add(Kind::Label, "label", {1500, 300, 1500, 600}, &menu).setCaption("405");
    EXPECT_EQ(listed(), "Menu, ") << "it tells something";
}

TEST_F(AccessibleTest, ValuesAreWrittenAsByHand) {
    Control& list = add(Kind::List, "list", {0, 0, 1500, 750});
    Control& slider = add(Kind::Slider, "slider", {1500, 0, 1500, 750});
    Control& box = add(Kind::TextBox, "box", {0, 750, 3000, 750});
    list.setItems({"Tube 1", "Tube 2"});
    slider.setMaximum(1023);
    box.setText("400");
    Phrases phrases;
    phrases.replace("Tube", "Bulb");
    phrases.replace("400", "no word");
    form.setPhrases(&phrases);
    for (Control* control : {&list, &slider, &box}) {
        record(*control);
    }
    turn();
    EXPECT_EQ(node(list)->childCount(), 0);
    press(node(list));
    ASSERT_EQ(node(list)->childCount(), 2);
    EXPECT_EQ(node(list)->child(1)->text(QAccessible::Name), QStringLiteral("Bulb 2"));
    press(node(list)->child(1));
    EXPECT_EQ(list.text(), "Tube 2");
    EXPECT_EQ(node(list)->text(QAccessible::Value), QStringLiteral("Bulb 2"));
    EXPECT_EQ(node(box)->text(QAccessible::Value), QStringLiteral("400"));
    EXPECT_EQ(node(list)->childCount(), 0);
    node(slider)->valueInterface()->setCurrentValue(511);
    node(box)->editableTextInterface()->replaceText(1, 2, QStringLiteral("57"));
    rest(10);
    EXPECT_EQ(slider.value(), 511);
    EXPECT_EQ(box.text(), "4570");
    EXPECT_EQ(takeLog(), "list click, slider change, slider release, box change, ");
    box.setReadOnly(true);
    input.blocks = [&slider](const Control& control) { return &control == &slider; };
    turn();
    node(box)->editableTextInterface()->insertText(0, QStringLiteral("9"));
    node(slider)->valueInterface()->setCurrentValue(3);
    rest(10);
    EXPECT_EQ(takeLog(), "");
    EXPECT_EQ(box.text() + fromQt(node(box)->textInterface()->text(0, -1)), "45704570");
}

/// A control of a scene as a screen reader finds it.
QAccessibleInterface* nodeIn(Stage& stage, std::string_view name) {
    stage.screen().flush();
    return QAccessible::queryAccessibleInterface(stage.screen().view(stage.control(name)));
}

TEST(AccessibleScenes, WhatHasNoLabelOfItsOwnIsToldByWhatItBelongsTo) {
    const struct {
        const char* scene;
        const char* control;
        const char* name;
        const char* description;
    } rows[] = {
        {"autocal-focus", "AutocalSelFocusOrParameter.cmbOKFocus", "OK",
         "Select focus for mA auto calibration"},
        {"autocal-focus", "AutocalSelFocusOrParameter.cmbOKParameter", "OK",
         "Or extended memory location for auto calibration"},
        {"autocal-focus", "AutocalSelFocusOrParameter.cmbCancel", "Cancel", ""},
        {"remote", "LblParam1", "PT1. 405", "Parameter"},
        {"remote", "LblValue4", "PT4. 4095", "ADC"},
        {"page-fluoro", "link.cmbFlPPSNext", "Next", "PPS"},
        {"page-fluoro", "link.cmdFlResetTime", "Reset", "Time"},
        {"page-rad", "link.cmbTM(3)", "3P", "Technique"},
        {"page-fluoro", "link.cmbFlContinuous", "Continuous", "PPS"},
        {"remote", "txtRemoteSID", "SID", "keys: 100 to 2000"},
        {"remote", "lblURSWHCalib1lbl", "PT1, 0 to 50", ""},
        {"remote", "cmdMultiRoom", "MultiRoom Calibration", "lit, back"},
        {"remote", "cmbClose", "Close", "hold for 1 s to end the program"},
        {"orla-longitudinal", "txtOTCLongMinus", "Ceiling Suspension Longitudinal Position -", "1 to 999"},
        {"orla-longitudinal", "cmdSetOTCLongPlus", "Set", "Ceiling Suspension Longitudinal Position +"},
        {"silence", "link.txtMACal", "0100", "mA, old"},
        // A unit that touches the value on its right names it.
        {"user-mode-exposure", "lblActKVP", "81", "kVp"},
        {"user-mode-exposure", "lblActMA", "500", "mA"},
        {"user-mode-exposure", "lblActMS", "125", "ms"},
        {"user-mode-exposure", "lblActMAS", "62.5", "mAs"},
    };
    for (const auto& row : rows) {
        const auto stage = sceneNamed(row.scene).staged(QSize(1012, 756));
        const QAccessibleInterface* node = nodeIn(*stage, row.control);
        EXPECT_EQ(fromQt(node->text(QAccessible::Name)), row.name) << row.control;
        EXPECT_EQ(fromQt(node->text(QAccessible::Description)), row.description) << row.control;
    }
}

TEST(AccessibleScenes, AKeyIsCheckedThatIsAChoiceOrASwitchAndNotOneThatIsLitForTheEye) {
    const struct {
        const char* scene;
        const char* key;
        QAccessible::Role role;
        bool checked;
    } rows[] = {
        {"configuration", "cmbConfiguration", QAccessible::RadioButton, true},
        {"configuration", "cmbManualCalibration", QAccessible::RadioButton, false},
        {"configuration", "link.cmbWS(2)", QAccessible::RadioButton, true},
        {"configuration", "link.cmbWS(3)", QAccessible::RadioButton, false},
        {"configuration", "link.cmbAECFieldLeft(1)", QAccessible::CheckBox, true},
        {"configuration", "link.cmbAECFieldRight(1)", QAccessible::CheckBox, false},
        {"page-fluoro", "link.cmbToggleABS", QAccessible::CheckBox, true},
        {"page-fluoro", "link.cmbFlMag(1)", QAccessible::RadioButton, true},
        {"autocal-confirm", "cmbResetError", QAccessible::PushButton, false},
        {"autocal-confirm", "link.cmbAutocalConfirm", QAccessible::PushButton, false},
    };
    for (const auto& row : rows) {
        const auto stage = sceneNamed(row.scene).staged(QSize(1012, 756));
        const QAccessibleInterface* node = nodeIn(*stage, row.key);
        EXPECT_EQ(node->role(), row.role) << row.key;
        EXPECT_EQ(bool(node->state().checkable), row.role != QAccessible::PushButton) << row.key;
        EXPECT_EQ(bool(node->state().checked), row.checked) << row.key;
    }
}

TEST(AccessibleScenes, AValueThatIsEmptyIsToldToBeSo) {
    const auto stage = sceneNamed("page-not-reported").staged(QSize(1012, 756));
    const auto told = [&stage](const char* name) {
        QAccessibleInterface* node = nodeIn(*stage, name);
        EXPECT_GE(node->parent()->indexOfChild(node), 0) << name;
        return fromQt(node->text(QAccessible::Name) + ": " + node->text(QAccessible::Description));
    };
    EXPECT_EQ(told("link.txtFlKVP"), "empty: kVp");
    EXPECT_EQ(told("link.txtFlKVPTracking"), "off: KVP Tracking");
    EXPECT_EQ(told("link.cmbFlContinuous"), "Continuous: PPS, Not known");
    EXPECT_EQ(told("link.cmbFlKVPTracking"), "KVP Tracking: ");
}

TEST(AccessibleScenes, AKeyThatAWarningDarkensForAMomentStaysChecked) {
    const auto stage = sceneNamed("page-rad").staged(QSize(1012, 756));
    stage->report("TM3 WN16");
    const Control& key = stage->control("link.cmbTM(3)");
    std::set<Colour> colours;
    for (int i = 0; i < 20; ++i, stage->wait(300)) {
        colours.insert(key.backColour());
        EXPECT_TRUE(nodeIn(*stage, "link.cmbTM(3)")->state().checked) << i;
    }
    EXPECT_EQ(colours.size(), 2U) << "it does blink";
    stage->report("TM3 WN16");
    while (!key.darkened()) {
        stage->wait(100);
    }
    stage->report("TM2");
    EXPECT_FALSE(nodeIn(*stage, "link.cmbTM(3)")->state().checked);
}

TEST(AccessibleScenes, TheKeyboardEntersThePanelInFrontAndIsToldThere) {
    for (const auto& [scene, key] :
         {std::pair{"workstation", "SelWSCal.cmbWSUp"},
          std::pair{"autocal-focus", "AutocalSelFocusOrParameter.cmbAutocalSmallFocus"}}) {
        const auto stage = sceneNamed(scene).staged(QSize(1012, 756));
        stage->screen().flush();
        EXPECT_FALSE(nodeIn(*stage, key)->state().focused) << "nobody has chosen it yet";
        QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
        QCoreApplication::sendEvent(stage->screen().window().windowHandle(), &tab);
        EXPECT_TRUE(nodeIn(*stage, key)->state().focused) << scene;
    }
}

TEST(AccessibleScenes, TheFlashOfTheResetKeyIsNoChangeOfState) {
    const auto stage = sceneNamed("error").staged(QSize(1012, 756));
    std::set<Colour> colours;
    for (int i = 0; i < 4; ++i, stage->wait(300)) {
        colours.insert(stage->control("cmbResetError").backColour());
        EXPECT_FALSE(nodeIn(*stage, "cmbResetError")->state().checked);
    }
    EXPECT_EQ(colours.size(), 2U) << "it does flash";
}

} // namespace
} // namespace quillon
