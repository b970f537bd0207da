#include "console/ConsoleContext.h"

namespace quillon {

void ConsoleScreen::setVisible(Names names, bool visible) const {
    for (const ConsoleControl name : names) {
        console_[name].setVisible(visible);
    }
}

void ConsoleScreen::setVisible(Keys keys, bool visible) const {
    keys.each([&](Key key) { console_[nameOf(key)].setVisible(visible); });
}

void ConsoleScreen::off(Names names) const {
    for (const ConsoleControl name : names) {
        console_[name].setBackColour(context_.state.ButtonOffColor);
    }
}

void ConsoleScreen::on(Names names) const {
    for (const ConsoleControl name : names) {
        console_[name].setBackColour(context_.state.ButtonOnColor);
    }
}

void ConsoleScreen::prompt(Role rank, std::string_view text) const {
    writePrompt(rank, text);
    console_["lblHelp"].setVisible(true);
}

void ConsoleScreen::writePrompt(Role rank, std::string_view text) const {
    console_["lblHelp"].setRole(rank);
    console_["lblHelp"].setCaption(text);
}

void ConsoleScreen::clearPrompt() const {
    console_["lblHelp"].setCaption("");
    console_["lblHelp"].setVisible(false);
}

void ConsoleScreen::setError(std::string_view number) const {
    console_["lblError"].setCaption(number);
    kBlockedByError.each([&](Key key) { console_[nameOf(key)].setBlocked(!number.empty()); });
}

bool ConsoleScreen::errorOnShow() const {
    return !console_["lblError"].caption().empty();
}

void ConsoleScreen::clearActualExposure() const {
    for (const ConsoleControl label : Names{"lblActKVP", "lblActMA", "lblActMS", "lblActMAS"}) {
        console_[label].setCaption("");
    }
}

namespace {

/// The key that opens a positioner's screen.
ConsoleControl keyOf(PositionerKind positioner) {
    switch (positioner) {
    case PositionerKind::Orla:
        return "cmdOrla";
    case PositionerKind::Remote:
        return "cmdMultiRoom";
    case PositionerKind::None:
        break;
    }
    return {};
}

} // namespace

void ShowCalibrationButton(ConsoleContext& context, bool visible) {
    const PositionerKind positioner =
        context.positionerToCalibrate ? context.positionerToCalibrate() : PositionerKind::None;
    const ConsoleControl shown = keyOf(positioner);
    for (const ConsoleControl key : {ConsoleControl("cmdOrla"), ConsoleControl("cmdMultiRoom")}) {
        context.console[key].setVisible(visible && key == shown);
    }
}

} // namespace quillon
