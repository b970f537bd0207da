#include "console/RestScreen.h"

#include <cassert>
#include <string>
#include <utility>
#include <vector>

namespace quillon {

namespace {

constexpr int kCloseHold = 1000; // ms; the key is where other screens have their way back

} // namespace

void RestScreen::show(const StandingRow& row, bool laysOut) {
    constexpr Keys kLaidOut = kModeKeys | Key::GoToUserMode;
    showArea(row);
    if (laysOut) {
        screen_.show(row.shown);
        screen_.hide(kLaidOut.without(row.shown));
    }
    paint(kLaidOut.without(row.lit), context_.state.ButtonOffColor);
    paint(row.lit, context_.state.ButtonOnColor);
    caption(row.caption);
    say(row.words);
    if (row.positioner == Offer::Hidden || (row.positioner == Offer::Shown && positionerKeyAway_)) {
        showPositionerKey(row.positioner == Offer::Shown);
    }
}

void RestScreen::showArea(const StandingRow& row) {
    if (row.area == Area::Picture) {
        showPicture();
        return;
    }
    if (row.stand != Stand::WithUsers) { // there the report of Ready has put it behind the link control
        hidePicture();
    }
    showPage(row.page);
    if (!context_.console["fraTorvaneSerial"].visible() && !context_.console.timer("tmrDelay").running()) {
        showLinkControl();
    }
}

void RestScreen::showPage(Page page) {
    switch (page) {
    case Page::AsLeft:
        break;
    case Page::Main:
        context_.link.showMainMenu();
        break;
    case Page::Configuration:
        context_.link.showServicePage(0);
        break;
    case Page::Calibration:
        context_.link.showServicePage(1);
        break;
    }
}

void RestScreen::say(Says words) {
    const ConsoleTexts& texts = context_.texts;
    const auto lines = [](std::string_view first, std::string_view second) {
        return std::string(first).append(kLineBreak).append(second);
    };
    switch (words) {
    case Says::None:
        screen_.clearPrompt();
        break;
    case Says::Lost:
        screen_.prompt(Role::Alarm, texts.sCommError);
        break;
    case Says::Question:
        screen_.prompt(Role::Prompt, lines(texts.sPressConfirm, texts.sPressDismiss));
        break;
    case Says::Expose:
        screen_.prompt(Role::Prompt, texts.sPressPrepExpose);
        break;
    case Says::ResultError:
        screen_.prompt(Role::Alarm, lines(texts.sAutocal, texts.sAutocalERROR));
        break;
    case Says::ResultOk:
        screen_.prompt(Role::Good, lines(texts.sAutocal, texts.sAutocalOK));
        break;
    case Says::AsLeft:
    case Says::PoweringUp: // written with the report, and shown elsewhere
        break;
    }
}

void RestScreen::caption(Caption caption) {
    if (caption != Caption::Stays) {
        context_.console["cmbClose"].setCaption(caption == Caption::Exit ? context_.texts.m_ExitCaption
                                                                         : context_.texts.scmbClose);
    }
}

void RestScreen::paint(Keys keys, Colour colour) {
    keys.each([&](Key key) { context_.console[nameOf(key)].setBackColour(colour); });
}

void RestScreen::showLinkControl() {
    hidePicture();
    context_.link.setVisible(true);
    screen_.show({"fraTorvaneSerial"});
    context_.link.UserControl_Show();
    context_.console.timer("tmrDelay").stop();
    closeScreen(); // its key goes, too
    showPositionerKey(false);
}

void RestScreen::showPicture() {
    context_.console.timer("tmrDelay").stop();
    context_.link.setVisible(false);
    screen_.hide({"fraTorvaneSerial"});
    showPictureBehind();
}

void RestScreen::showPictureBehind() {
    screen_.show({"lblQuillonConsole"});
    if (context_.state.GeneratorVisible) {
        screen_.show({"imgQuillonConsole"});
    }
}

void RestScreen::hidePicture() {
    screen_.hide({"lblQuillonConsole", "imgQuillonConsole"});
}

void RestScreen::showPositionerKey(bool visible) {
    positionerKeyAway_ = !visible;
    ShowCalibrationButton(context_, visible);
    if (!context_.console["cmdOrla"].visible() && !context_.console["cmdMultiRoom"].visible()) {
        closeScreen();
    }
}

void RestScreen::openScreen(Keys keys, const Control& wayBack, std::function<void()> close) {
    assert(!screenClose_ && wayBack_ == nullptr); // one at a time
    std::vector<Control*> taken;
    keys.each([&](Key key) { taken.push_back(&context_.console[nameOf(key)]); });
    screenLock_ = ControlLock(std::move(taken));
    screenClose_ = std::move(close);
    wayBack_ = &wayBack;
    context_.console[nameOf(Key::Close)].setHoldTime(kCloseHold);
    screenChanged.raise();
}

void RestScreen::closeScreen() {
    screenLock_.release();
    wayBack_ = nullptr;
    context_.console[nameOf(Key::Close)].setHoldTime(0);
    if (const auto close = std::exchange(screenClose_, {})) {
        close();
        screenChanged.raise();
    }
}

} // namespace quillon
