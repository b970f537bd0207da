#pragma once

#include <cassert>
#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

#include "ui/Control.h"

namespace quillon {

/// What the operator does to a control.
enum class Gesture : std::uint8_t { Press, Release, Type, Select, Slide };

/// It is the ground, or lies on it, in however many frames.
[[nodiscard]] bool liesOn(const Control* control, const Control& ground);

/// Pointer and keyboard of the operator, and the rules of what they can reach. Every front end uses this, so
/// a test presses exactly as a finger does.
class Input {
public:
    /// True when the control and everything around it is visible, enabled and not locked, and no message box
    /// is up.
    [[nodiscard]] bool reachable(const Control& control) const;

    /// A press of it is handed on: it can be reached, and nothing keeps it back.
    [[nodiscard]] bool takes(const Control& control) const {
        return reachable(control) && !(blocks && blocks(control));
    }
    /// Set by a front end: whether a control that can be reached would do nothing. Such a control is not
    /// pressed, and one that was pressed before is let go without a click.
    std::function<bool(const Control& control)> blocks;

    // Each does its work only on a control that can be reached, and says whether it did.
    bool press(Control& control);
    bool click(Control& control);
    bool type(Control& control, std::string_view text);
    bool select(Control& control, std::string_view entry);
    /// Moves a slider to the value and lets it go.
    bool slide(Control& control, std::int32_t value);
    /// Moves a slider without letting it go.
    bool drag(Control& control, std::int32_t value);

    /// Lets go of a control that was pressed, whatever has happened to it. What its press began is ended; a
    /// control without a press handler runs its release handler only if the pointer is still `over` it. Then
    /// comes the click, if the pointer is over it and the control could be clicked all the time, otherwise
    /// `abandon`. Nothing if this control was not pressed.
    void release(Control& control, bool over = true);
    /// The program is about to end: lets go of everything that is held, without a click.
    void releaseAll();
    /// Breaks every hold off: neither release nor what follows it.
    void cancel();

    /// A message box breaks off what is held and keeps everything else away until it closes.
    void boxOpened();
    void boxClosed() {
        assert(boxes_ > 0);
        --boxes_;
    }

    /// The control whose gesture is being handled; empty between gestures, and while a message box is up.
    [[nodiscard]] const Control* gestureOwner() const {
        return boxes_ > 0 || hands_.empty() ? nullptr : hands_.back();
    }

    /// A control that goes away is neither held any more nor the one whose gesture is handled.
    void forget(const Control& control);

    /// Told of each gesture that does its work, before it does it; `value` is the text, the entry or the
    /// number, and "outside" when the pointer had left what it lets go. A slider on the move is no gesture
    /// until it is let go.
    std::function<void(Gesture gesture, const Control& control, std::string_view value)> onGesture;

private:
    void run(const Control& control, const std::function<void()>& handler);
    void tell(Gesture gesture, const Control& control, std::string_view value = {}) const;
    [[nodiscard]] bool reachableSlider(const Control& control) const;

    struct Held {
        Control* control;
        unsigned timesTaken; ///< at the press
    };
    std::vector<Held> held_;            // fingers may overlap: a key can be pressed before the last is let go
    std::vector<const Control*> hands_; // whose handlers run, the innermost last; empty where it went away
    int boxes_ = 0;
};

} // namespace quillon
