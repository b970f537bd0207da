#pragma once

#include <functional>

#include "console/ConsoleContext.h"
#include "console/Standing.h"
#include "runtime/Signal.h"
#include "ui/ControlLock.h"

namespace quillon {

/// Puts a row of the table on the screen: the working area with its page and screens, keys that are shown and
/// lit, words.
class RestScreen {
public:
    explicit RestScreen(ConsoleContext& context) : context_(context), screen_(context) {}

    /// All of the row except the keys that it gives. `laysOut`: it also decides which keys are shown.
    void show(const StandingRow& row, bool laysOut);
    /// The words of a row.
    void say(Says words);
    void caption(Caption caption);
    void paint(Keys keys, Colour colour);

    void showLinkControl();
    /// Shown in the working area.
    void showPage(Page page);
    void showPicture();
    /// Behind the link control, where the machine is with its users.
    void showPictureBehind();
    void hidePicture();
    /// If only the switch offered the positioner, its key is hidden for good, and an open screen is closed.
    void showPositionerKey(bool visible);

    /// A screen, which the key `wayBack` opens and closes, disables these keys. One screen at a time; `close`
    /// is called when it is closed, whatever closes it.
    void openScreen(Keys keys, const Control& wayBack, std::function<void()> close);
    void closeScreen();
    /// The key that closes the open screen; null while none is open.
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
