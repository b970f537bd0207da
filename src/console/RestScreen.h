#pragma once

#include <functional>

#include "console/ConsoleContext.h"
#include "console/Standing.h"
#include "runtime/Signal.h"
#include "ui/ControlLock.h"

namespace quillon {

/// What a row of the table puts on the screen: the working area with the page and the screens that lie in it,
/// keys on show and lit, words.
class RestScreen {
public:
    explicit RestScreen(ConsoleContext& context) : context_(context), screen_(context) {}

    /// All of the row but the keys that it gives. `laysOut`: which keys are on show goes by it, too.
    void show(const StandingRow& row, bool laysOut);
    /// The words of a row.
    void say(Says words);
    void caption(Caption caption);
    void paint(Keys keys, Colour colour);

    void showLinkControl();
    /// In it.
    void showPage(Page page);
    void showPicture();
    /// Behind the link control, where the machine is with its users.
    void showPictureBehind();
    void hidePicture();
    /// Where no positioner is installed but its switch was given, the key goes for good, and an open screen
    /// with it.
    void showPositionerKey(bool visible);

    /// A screen of its own, which `wayBack` opens and closes, takes these keys away. One screen at a time;
    /// `close` is called when it goes, whatever takes it away.
    void openScreen(Keys keys, const Control& wayBack, std::function<void()> close);
    void closeScreen();
    /// The key that closes the screen of its own; empty while none is open.
    [[nodiscard]] const Control* wayBack() const { return wayBack_; }

    Signal<> screenChanged; ///< one has opened or closed

private:
    void showArea(const StandingRow& row);

    ConsoleContext& context_;
    ConsoleScreen screen_;
    ControlLock screenLock_;
    std::function<void()> screenClose_;
    const Control* wayBack_ = nullptr;
    bool positionerKeyAway_ = false;
};

} // namespace quillon
