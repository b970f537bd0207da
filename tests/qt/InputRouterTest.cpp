#include <QPointingDevice>
#include <QTouchEvent>

#include "Bench.h"
#include "qt/ListView.h"

namespace quillon {
namespace {

class InputRouterTest : public WindowTest {
protected:
    InputRouterTest() {
        for (Control* control : {&first, &second}) {
            record(*control);
        }
        turn();
    }

    void touch(QEvent::Type type, const QList<QEventPoint>& points) {
        QTouchEvent event(type, &panel, Qt::NoModifier, points);
        QCoreApplication::sendEvent(screen.window().windowHandle(), &event);
    }

    static QEventPoint finger(int id, QEventPoint::State state, QPoint place) {
        return {id, state, QPointF(place), QPointF(place)};
    }

    QPointingDevice panel{"panel",
                          1,
                          QInputDevice::DeviceType::TouchScreen,
                          QPointingDevice::PointerType::Finger,
                          QInputDevice::Capability::Position,
                          5,
                          0};
    Control& first = add(Kind::Button, "first", {0, 0, 1500, 750});
    Control& second = add(Kind::Button, "second", {1500, 0, 1500, 750});
    const QPoint onFirst{50, 25};
    const QPoint onSecond{150, 25};
    const QPoint nowhere{350, 280};
};

TEST_F(InputRouterTest, MousePressesAndReleases) {
    mouse(QEvent::MouseButtonPress, onFirst);
    EXPECT_EQ(takeLog(), "first press, ");
    EXPECT_TRUE(screen.view(first)->pressed());
    mouse(QEvent::MouseButtonRelease, onFirst);
    EXPECT_EQ(takeLog(), "first release, first click, ");
    EXPECT_FALSE(screen.view(first)->pressed());

    // A quick second tap is a tap; what Qt adds to it is not a third one.
    mouse(QEvent::MouseButtonPress, onFirst);
    mouse(QEvent::MouseButtonDblClick, onFirst);
    mouse(QEvent::MouseButtonRelease, onFirst);
    EXPECT_EQ(takeLog(), "first press, first release, first click, ");
}

TEST_F(InputRouterTest, AReleaseAlwaysReachesWhatWasPressed) {
    QFocusEvent focusLost(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
    QEvent hidden(QEvent::Hide);
    QEvent blocked(QEvent::WindowBlocked);
    const auto send = [this](QEvent& event) {
        QCoreApplication::sendEvent(screen.window().windowHandle(), &event);
    };
    const auto pressWhile = [this](const std::function<void()>& meanwhile, QPoint end) {
        mouse(QEvent::MouseButtonPress, onFirst);
        meanwhile();
        turn();
        mouse(QEvent::MouseButtonRelease, end);
        EXPECT_FALSE(screen.view(first)->pressed());
        first.setVisible(true);
        first.setEnabled(true);
        turn();
        return takeLog();
    };
    const std::pair<std::function<void()>, QPoint> rows[]{{[&] { first.setVisible(false); }, onFirst},
                                                          {[&] { first.setEnabled(false); }, onFirst},
                                                          {[&] { send(focusLost); }, onFirst},
                                                          {[&] { send(hidden); }, onFirst},
                                                          {[&] { send(blocked); }, onFirst},
                                                          {[] {}, onSecond},
                                                          {[] {}, nowhere}};
    for (const auto& [meanwhile, end] : rows) {
        EXPECT_EQ(pressWhile(meanwhile, end), "first press, first release, first abandon, ");
    }
    const auto backAgain = [this] {
        mouse(QEvent::MouseMove, nowhere);
        mouse(QEvent::MouseMove, onFirst);
    };
    EXPECT_EQ(pressWhile(backAgain, onFirst), "first press, first release, first click, ");
    const auto openBox = [&] {
        input.boxOpened();
        send(blocked);
        input.boxClosed();
    };
    EXPECT_EQ(pressWhile(openBox, onFirst), "first press, first cancel, ") << "a box breaks a hold off";
}

TEST_F(InputRouterTest, FingersMayOverlap) {
    touch(QEvent::TouchBegin, {finger(1, QEventPoint::Pressed, onFirst)});
    touch(QEvent::TouchUpdate,
          {finger(1, QEventPoint::Stationary, onFirst), finger(2, QEventPoint::Pressed, onSecond)});
    touch(QEvent::TouchUpdate,
          {finger(1, QEventPoint::Released, onFirst), finger(2, QEventPoint::Stationary, onSecond)});
    EXPECT_EQ(takeLog(), "first press, second press, first release, first click, ");
    touch(QEvent::TouchCancel, {});
    EXPECT_EQ(takeLog(), "second release, second abandon, ");
}

TEST_F(InputRouterTest, TheKeyboardWalksInTheOrderOfEnumerationAndPressesWithSpace) {
    add(Kind::Label, "lblPlain", {0, 1500, 1500, 600});
    add(Kind::Button, "hidden", {0, 3000, 1500, 600}).setVisible(false);
    Control& third = add(Kind::Button, "third", {3000, 0, 1500, 750});
    record(third);
    third.sendToBack(); // the order on the screen is another matter
    turn();
    const auto space = [this] {
        strike(Qt::Key_Space);
        return takeLog();
    };
    EXPECT_EQ(space(), "") << "the keyboard is nowhere yet";
    std::string walk;
    for (int i = 0; i < 4; ++i) {
        key(QEvent::KeyPress, Qt::Key_Tab);
        walk += space().substr(0, 6) + "|";
    }
    EXPECT_EQ(walk, "first |second|third |first |");
    key(QEvent::KeyPress, Qt::Key_Backtab);
    EXPECT_EQ(space(), "third press, third release, third click, ");

    key(QEvent::KeyPress, Qt::Key_Space);
    key(QEvent::KeyRelease, Qt::Key_Space, true);
    key(QEvent::KeyPress, Qt::Key_Space, true);
    EXPECT_EQ(takeLog(), "third press, ");
    key(QEvent::KeyPress, Qt::Key_Tab);
    EXPECT_EQ(takeLog(), "third release, third abandon, ") << "nobody keeps a key down that he has left";

    key(QEvent::KeyPress, Qt::Key_Backtab);
    key(QEvent::KeyPress, Qt::Key_Space);
    strike(Qt::Key_Escape);
    key(QEvent::KeyRelease, Qt::Key_Space);
    EXPECT_EQ(takeLog(), "third press, third release, third abandon, ") << "Escape takes the press back";
}

TEST_F(InputRouterTest, TabTakesAGroupAsOneStopAndArrowsMoveInIt) {
    std::vector<Control*> keys{&add(Kind::Button, "cmbWS1", {0, 3000, 600, 600}),
                               &add(Kind::Button, "cmbWS2", {600, 3000, 600, 600}),
                               &add(Kind::Button, "cmbWS3", {1200, 3000, 600, 600}),
                               &add(Kind::Button, "cmbTubeDown", {1800, 3000, 600, 600}),
                               &add(Kind::Button, "cmbTubeUp", {2400, 3000, 600, 600}),
                               &add(Kind::Button, "cmbDoorDown", {3000, 3000, 600, 600}),
                               &add(Kind::Button, "cmdDownSID", {3600, 3000, 600, 600}),
                               &add(Kind::TextBox, "txtSID", {4200, 3000, 600, 600}),
                               &add(Kind::Button, "cmdUPSid", {4800, 3000, 600, 600})};
    for (int i = 0; i < 3; ++i) {
        keys[i]->setRole(Role::Choice);
    }
    for (Control* each : keys) {
        record(*each);
    }
    keys[1]->setBackColour(kActiveColour);
    turn();
    std::string walk;
    const std::array strokes{Qt::Key_Tab,  Qt::Key_Tab,   Qt::Key_Tab,   Qt::Key_Right,   Qt::Key_Right,
                             Qt::Key_Left, Qt::Key_Up,    Qt::Key_Up,    Qt::Key_Tab,     Qt::Key_Down,
                             Qt::Key_Down, Qt::Key_Tab,   Qt::Key_Right, Qt::Key_Backtab, Qt::Key_Tab,
                             Qt::Key_Tab,  Qt::Key_Right, Qt::Key_Tab,   Qt::Key_Tab};
    for (const Qt::Key stroke : strokes) {
        key(QEvent::KeyPress, stroke);
        for (const auto& control : form.controls()) {
            const ControlView* view = screen.view(*control);
            walk += view != nullptr && view->focusMark() ? control->name() + " " : "";
        }
    }
    EXPECT_EQ(walk, "first second cmbWS2 cmbWS3 cmbWS3 cmbWS2 cmbWS1 cmbWS1 cmbTubeDown cmbTubeUp cmbTubeUp "
                    "cmbDoorDown cmbDoorDown cmbTubeDown cmbDoorDown cmdDownSID cmdUPSid txtSID first ");
    EXPECT_EQ(takeLog(), "") << "moving presses nothing";
}

TEST_F(InputRouterTest, EnterPressesWhatIsInFocusAndEscapeTheOneKeyThatRefuses) {
    strike(Qt::Key_Return);
    strike(Qt::Key_Escape);
    EXPECT_EQ(takeLog(), "") << "no key is pressed that nobody chose";
    key(QEvent::KeyPress, Qt::Key_Tab);
    for (const int code : {Qt::Key_Return, Qt::Key_Enter}) {
        strike(code);
        EXPECT_EQ(takeLog(), "first press, first release, first click, ");
    }
    key(QEvent::KeyPress, Qt::Key_Return);
    key(QEvent::KeyPress, Qt::Key_Return, true);
    strike(Qt::Key_Space);
    EXPECT_EQ(takeLog(), "first press, ") << "one finger is on it";
    second.setRole(Role::Decline);
    key(QEvent::KeyPress, Qt::Key_Escape);
    key(QEvent::KeyPress, Qt::Key_Escape, true);
    EXPECT_EQ(takeLog(), "first release, first abandon, ") << "what is held comes first";
    key(QEvent::KeyRelease, Qt::Key_Escape);
    key(QEvent::KeyPress, Qt::Key_Escape);
    EXPECT_TRUE(screen.view(second)->pressed());
    key(QEvent::KeyRelease, Qt::Key_Escape);
    EXPECT_EQ(takeLog(), "second press, second release, second click, ");
    first.setRole(Role::Decline);
    strike(Qt::Key_Escape);
    EXPECT_EQ(takeLog(), "") << "two questions at a time";
    first.setEnabled(false);
    second.setEnabled(false);
    strike(Qt::Key_Escape);
    EXPECT_EQ(takeLog(), "") << "out of reach";
}

TEST_F(InputRouterTest, ASlidersHandleIsDraggedAndToldWhenItIsLetGo) {
    Control& slider = add(Kind::Slider, "slider", {0, 1500, 3000, 750});
    slider.setMaximum(4000);
    slider.setValue(2000);
    record(slider);
    turn();
    const auto drag = [&](int from, int to) {
        mouse(QEvent::MouseButtonPress, {from, 125});
        mouse(QEvent::MouseMove, {to, 125});
        mouse(QEvent::MouseButtonRelease, {to, 125});
        return slider.value();
    };
    EXPECT_EQ(drag(30, 30), 2000) << "beside the handle";
    EXPECT_EQ(drag(102, 102), 2000) << "touched and not moved";
    EXPECT_THAT(takeLog(), testing::Not(testing::HasSubstr("release")));
    EXPECT_EQ(drag(102, 108), 2003) << "fine near by";
    EXPECT_EQ(takeLog(), "slider change, slider change, slider release, ");
    EXPECT_EQ(drag(102, 500), 4000);
    key(QEvent::KeyPress, Qt::Key_Tab);
    key(QEvent::KeyPress, Qt::Key_Backtab);
    strike(Qt::Key_Left);
    EXPECT_EQ(slider.value(), 3999);
    EXPECT_THAT(takeLog(), testing::EndsWith("slider release, "));
}

TEST_F(InputRouterTest, WhatIsKeptBackIsHandedOnFromNoFingerAndNoKeyButLetGo) {
    Control& slider = add(Kind::Slider, "slider", {0, 1500, 3000, 750});
    record(slider);
    first.setRole(Role::Decline);
    turn();
    bool kept = true;
    input.blocks = [&kept](const Control&) { return kept; };
    tap(onFirst);
    touch(QEvent::TouchBegin, {finger(1, QEventPoint::Pressed, onSecond)});
    touch(QEvent::TouchEnd, {finger(1, QEventPoint::Released, onSecond)});
    mouse(QEvent::MouseButtonPress, {13, 125});
    mouse(QEvent::MouseMove, {60, 125});
    mouse(QEvent::MouseButtonRelease, {60, 125});
    for (int stop = 0; stop < 3; ++stop) {
        key(QEvent::KeyPress, Qt::Key_Tab);
        strike(Qt::Key_Space);
        strike(Qt::Key_Right);
    }
    strike(Qt::Key_Escape);
    EXPECT_EQ(takeLog(), "");

    kept = false;
    mouse(QEvent::MouseButtonPress, onFirst);
    kept = true;
    mouse(QEvent::MouseButtonRelease, onFirst);
    EXPECT_EQ(takeLog(), "first press, first release, first abandon, ");
}

TEST_F(InputRouterTest, AKeyThatHasToBeHeldDoesNothingWhenItIsLetGoBefore) {
    first.setHoldTime(150);
    tap(onFirst);
    EXPECT_EQ(takeLog(), "first press, first release, first abandon, ");
    mouse(QEvent::MouseButtonPress, onFirst);
    rest(200);
    mouse(QEvent::MouseButtonRelease, onFirst);
    EXPECT_EQ(takeLog(), "first press, first release, first click, ");
}

TEST_F(InputRouterTest, AListOpensAndTakesOneEntry) {
    Control& list = add(Kind::List, "list", {0, 1500, 1500, 600});
    list.setItems({"9600", "19200"});
    record(list);
    turn();
    auto* view = dynamic_cast<ListView*>(screen.view(list));
    ASSERT_NE(view, nullptr);
    const auto open = [&] {
        tap({50, 120});
        return view->popup();
    };
    const auto strikeIn = [view](int code) {
        QKeyEvent event(QEvent::KeyPress, code, Qt::NoModifier);
        QCoreApplication::sendEvent(view->popup(), &event);
        turn();
    };
    ASSERT_NE(open(), nullptr);
    EXPECT_GE(view->popup()->height(), 2 * 38) << "as high as a finger";
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        const QPointF lower(20, view->popup()->height() - 10);
        QMouseEvent event(type, lower, lower, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(view->popup(), &event);
    }
    turn();
    EXPECT_EQ(list.text(), "19200");
    EXPECT_EQ(view->popup(), nullptr);

    ASSERT_NE(open(), nullptr);
    strikeIn(Qt::Key_Up);
    const QImage shown = view->popup()->grab().toImage();
    EXPECT_NE(shown.pixelColor(20, 10), shown.pixelColor(20, 50)) << "the marked entry looks different";
    strikeIn(Qt::Key_Return);
    ASSERT_NE(open(), nullptr);
    strikeIn(Qt::Key_Down);
    strikeIn(Qt::Key_Escape);
    EXPECT_EQ(view->popup(), nullptr);
    EXPECT_EQ(list.text(), "9600");

    ASSERT_NE(open(), nullptr);
    list.setVisible(false); // what goes off the screen takes its entries with it
    turn();
    EXPECT_EQ(view->popup(), nullptr);
    EXPECT_EQ(takeLog(), "list click, list click, ") << "one by the finger and one by a key, and no more";
}

} // namespace
} // namespace quillon
