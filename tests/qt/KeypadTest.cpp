#include <QAccessible>
#include <QKeyEvent>

#include "console/ctrQuillonConsole.h"
#include "qt/Keypad.h"
#include "screenshots/Scenes.h"
#include "tests/qt/Bench.h"

namespace quillon {
namespace {

constexpr QSize kWindow(1012, 756);

void strike(Stage& stage, int code) {
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, code, Qt::NoModifier);
        QCoreApplication::sendEvent(stage.screen().window().windowHandle(), &event);
    }
    stage.screen().flush();
}

/// A remote positioner's screen on which the box of the SID was touched.
std::unique_ptr<Stage> touched() {
    auto stage = sceneNamed("remote").staged(kWindow);
    stage->touch("txtRemoteSID");
    return stage;
}

TEST(Keypad, TypesIntoTheBoxThatWasTouchedAsAKeyboardDoes) {
    const auto stage = touched();
    const Keypad& pad = *stage->screen().keypad();
    const Control& box = stage->control("txtRemoteSID");
    ASSERT_EQ(pad.box(), &box);
    EXPECT_TRUE(pad.isVisible());
    std::vector<std::string> typed;
    stage->application().input().onGesture = [&typed](Gesture gesture, const Control&,
                                                      std::string_view text) {
        typed.push_back(gesture == Gesture::Type ? std::string(text) : "other");
    };
    stage->touchKeypad("13<40");
    EXPECT_THAT(typed, testing::ElementsAre("1", "13", "1", "14", "140")) << "what stood there is replaced";
    EXPECT_EQ(box.text(), "140");
    stage->touch("txtRemoteSID");
    stage->touchKeypad("5");
    EXPECT_EQ(box.text().size(), 4U) << "another touch only places the cursor";
    stage->touchKeypad(".");
    EXPECT_EQ(pad.box(), nullptr);
    EXPECT_FALSE(pad.isVisible());
    stage->touch("txtRemoteSID");
    EXPECT_EQ(pad.box(), &box) << "and opens it again";
}

TEST(Keypad, GoesWithItsBox) {
    const std::pair<const char*, std::function<void(Stage&)>> rows[] = {
        {"Escape", [](Stage& stage) { strike(stage, Qt::Key_Escape); }},
        {"Tab", [](Stage& stage) { strike(stage, Qt::Key_Tab); }},
        {"another key", [](Stage& stage) { stage.touch("cmdUPSid"); }},
        {"the background", [](Stage& stage) { stage.touch("lblTitleWBCalib"); }},
        {"the screen closes",
         [](Stage& stage) { stage.application().input().click(stage.control("cmdMultiRoom")); }},
        {"a message box", [](Stage& stage) { stage.application().input().boxOpened(); }},
        {"a lock", [](Stage& stage) { stage.control("fraRemote").setEnabled(false); }},
        {"something in front",
         [](Stage& stage) {
             stage.control("fraOrla").setVisible(true);
             stage.control("fraOrla").bringToFront();
         }},
    };
    for (const auto& [what, happens] : rows) {
        const auto stage = touched();
        ASSERT_NE(stage->screen().keypad()->box(), nullptr);
        happens(*stage);
        stage->screen().flush();
        EXPECT_EQ(stage->screen().keypad()->box(), nullptr) << what;
    }
}

TEST(Keypad, ComesToAFingerAloneAndToABoxThatTakesText) {
    const auto stage = sceneNamed("remote").staged(kWindow);
    const Keypad& pad = *stage->screen().keypad();
    bool reached = false;
    for (int i = 0; i < 20; ++i) {
        strike(*stage, Qt::Key_Tab);
        reached = reached || stage->screen().view(stage->control("txtRemoteSID"))->focusMark();
        EXPECT_EQ(pad.box(), nullptr);
    }
    EXPECT_TRUE(reached);
    stage->touch("TxtStoredSID");
    EXPECT_EQ(pad.box(), nullptr);
}

TEST(Keypad, IsFoundAndPressedByAScreenReader) {
    const auto stage = touched();
    QAccessibleInterface* window = QAccessible::queryAccessibleInterface(&stage->screen().window());
    std::map<QString, QAccessibleInterface*> found;
    for (int i = 0; i < window->childCount(); ++i) {
        if (window->child(i)->role() == QAccessible::Button) {
            found[window->child(i)->text(QAccessible::Name)] = window->child(i);
        }
    }
    for (const char* name : {"7", "0"}) {
        ASSERT_TRUE(found.contains(name));
        found[name]->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        rest(10);
    }
    EXPECT_EQ(stage->control("txtRemoteSID").text(), "70");
    ASSERT_TRUE(found.contains("Erase") && found.contains("Done"));
    stage->touchKeypad(".");
    EXPECT_EQ(window->indexOfChild(found["7"]), -1);
}

} // namespace
} // namespace quillon
