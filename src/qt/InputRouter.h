#pragma once

#include <map>

#include <QElapsedTimer>
#include <QObject>
#include <QPoint>

#include "ui/ControlHost.h"
#include "ui/Input.h"

class QKeyEvent;
class QTouchEvent;

namespace quillon {

class ControlView;
class Screen;

/// Brings mouse, fingers and keyboard to the controls, as far as a press comes to something. It sits in front
/// of the window, so a release reaches what was pressed even when that has been hidden, disabled or covered
/// meanwhile.
class InputRouter final : public QObject {
public:
    InputRouter(Screen& screen, ControlHost& form, Input& input);

    /// A control that goes away is neither held nor under the keyboard any more.
    void forget(const Control& control);

    bool eventFilter(QObject* window, QEvent* event) override;

private:
    /// Each says whether the event is used up; a text box sees it as well.
    bool press(int finger, QPoint place);
    bool move(int finger, QPoint place);
    bool release(int finger, QPoint place);
    bool touch(const QTouchEvent& event);
    bool keyPressed(const QKeyEvent& event);
    bool keyReleased(const QKeyEvent& event);

    /// A finger that is down, and the control that it has pressed.
    struct Held {
        Control* control = nullptr;
        QElapsedTimer since;
        int x = 0;                ///< of the window, where it has gripped a slider's handle
        std::int32_t gripped = 0; ///< the slider's value then
        bool moved = false;       ///< and has given it another one
        bool opened = false;      ///< the keypad, by a touch of its box
    };

    void hold(int finger, Control& control);
    /// `over`: the finger is still on what it pressed, so that a click may follow.
    void letGo(int finger, bool over);
    void letGoOfAll();

    /// The key that refuses what is asked; empty where nothing is asked, or more than one thing.
    [[nodiscard]] Control* refusingKey() const;
    bool escapePressed(const QKeyEvent& event);
    void moveFocus(int step);
    /// Only moves: a key is pressed by those that press. Says whether there was anything to move to.
    bool moveInGroup(std::ptrdiff_t step);
    void setFocus(Control* control, bool byKeyboard);
    /// A box that can be typed in was touched.
    void openKeypad(int finger, const Control& box);
    void grip(int finger, Control& slider, QPoint place);
    void dragTo(Held& held, QPoint place);
    void letGoOfSlider(const Held& held);
    [[nodiscard]] bool longEnough(const Held& held) const;

    Screen& screen_;
    ControlHost& form_;
    Input& input_;
    std::map<int, Held> held_; // by finger; the mouse and two kinds of keys count as one each
    int pressing_ = 0;         // the key that holds what is in focus
    Control* focus_ = nullptr;
    bool focusMarked_ = false;
};

} // namespace quillon
