#include "console/KeyReasons.h"
#include "console/CloseAction.h"
#include "console/PhaseTable.h"
#include "console/ServiceModes.h"

#include <algorithm>
#include <array>

#include "link/LinkSilence.h"
#include "panel/KeyNeeds.h"

namespace quillon {

namespace {

using T = ConsoleTexts;

struct HindranceText {
    Hindrance hindrance;
    std::string T::*text;
};
constexpr std::array kHindranceTexts{
    HindranceText{Hindrance::NoAction, &T::sWhyNoAction},
    HindranceText{Hindrance::NotDigital, &T::sWhyNotDigital},
    HindranceText{Hindrance::NoField, &T::sWhyNoField},
    HindranceText{Hindrance::NoDensity, &T::sWhyNoDensity},
    HindranceText{Hindrance::NoBrightness, &T::sWhyNoBrightness},
    HindranceText{Hindrance::FixedKVP, &T::sWhyFixedKVP},
    HindranceText{Hindrance::NoNumber, &T::sWhyNoNumber},
};

/// A press of the control sends something.
bool isKey(const Control& control) {
    return (control.kind() == Kind::Button && !control.lamp()) || control.kind() == Kind::Slider;
}

} // namespace

bool KeyReasons::shutOff(const Control& key) {
    for (const Control* at = &key; at != nullptr; at = at->container()) {
        if (at->locked()) {
            return true;
        }
    }
    return false;
}

/// The command with which the key begins in this mode; empty where it does nothing.
std::string_view KeyReasons::asks(Key key, Phase mode) {
    struct Row {
        Key key;
        Phase mode;
        std::string_view asks;
    };
    static constexpr std::array kOthers{
        Row{Key::ReadCounters, Phase::NormalOperation, "TC"},
        Row{Key::GoToUserMode, Phase::Calibration, "CA"},
        Row{Key::Close, Phase::NormalOperation, "CA"}, // back from the users
    };
    const ServiceMode* here = serviceModeOf(mode);
    if (here != nullptr && (key == here->key || key == Key::Close)) {
        return here->exit;
    }
    const auto enters = std::ranges::find(serviceModes(), key, &ServiceMode::key);
    if (mode == Phase::NormalOperation && enters != serviceModes().end()) {
        return enters->entry;
    }
    const auto other = std::ranges::find_if(
        kOthers, [key, mode](const Row& row) { return row.key == key && row.mode == mode; });
    return other == kOthers.end() ? std::string_view() : other->asks;
}

/// In this mode the key does something, if its first command is allowed.
bool KeyReasons::allowsInMode(Key key) const {
    const Phase mode = session_.mode();
    const std::string_view command = asks(key, mode);
    if (command.empty()) {
        return false;
    }
    // A calibration that asks, or reports a result, is left by the command of the autocalibration.
    const bool byAutocalibration = mode == Phase::Calibration && kAsksOrTells.has(session_.lastPhase());
    return context_.link.allows(byAutocalibration ? "CAU" : command);
}

bool KeyReasons::consoleKeyIsDead(const Control& key) const {
    const auto name = std::find(kKeyNames.begin(), kKeyNames.end(), key.name());
    if (name == kKeyNames.end() || *name == nameOf(Key::LinkControl)) {
        return session_.is(Run::Closing);
    }
    switch (const Key known{static_cast<std::uint8_t>(name - kKeyNames.begin())}) {
    case Key::Close:
        return closeIsDead();
    case Key::ResetError: // in configuration it only clears an error that is shown
        return session_.lastPhase() == Phase::Configuration && context_.console["lblError"].caption().empty();
    case Key::ReadCounters:
        return session_.is(Run::Closing) || !(session_.countersActive() || allowsInMode(known));
    case Key::ManualCalibration:
    case Key::GoToUserMode:
        return session_.is(Run::Closing) || session_.is(Run::EnteringAutocalibration) || !allowsInMode(known);
    default:
        return session_.is(Run::Closing) || !allowsInMode(known);
    }
}

/// A mode is left by a command; when the generator does not answer, the press counts without it.
bool KeyReasons::closeIsDead() const {
    switch (closeActionOf(session_)) {
    case CloseAction::Nothing:
        return true;
    case CloseAction::GivesUp:
    case CloseAction::HidesCounters:
    case CloseAction::Closes:
        return false;
    case CloseAction::LeavesMode:
    case CloseAction::TakesMachineBack:
        return !session_.generator().isLost() && !allowsInMode(Key::Close);
    }
    return true;
}

/// The key of a choice begins an entry, and the entry's command would be refused now.
bool KeyReasons::entryIsRefused(const Control& key) const {
    struct Row {
        std::string_view panel;
        std::string_view key;
    };
    static constexpr std::array kRows{Row{"SelWSCal", "cmdOK"}, Row{"AutocalWarning", "cmbAutocalYes"}};
    const bool enters = std::any_of(kRows.begin(), kRows.end(), [this, &key](const Row& row) {
        return key.name() == row.key && key.host() == context_.console.keyed(row.panel);
    });
    return enters && session_.generator().canEnter() && !context_.link.allows("CA");
}

Hindrance KeyReasons::hindrance(const Control& key) const {
    if (key.host() == &context_.link) {
        return context_.link.hindrance(key);
    }
    if (key.host() != &context_.console) {
        return entryIsRefused(key) ? Hindrance::Phase : Hindrance::None;
    }
    return consoleKeyIsDead(key) ? Hindrance::Phase : context_.needs.of(key);
}

bool KeyReasons::blocks(const Control& key) const {
    return isKey(key) && key.offered() && (key.blocked() || hindrance(key) != Hindrance::None);
}

std::string KeyReasons::whyPhase() const {
    const PhaseMeaning meaning = meaningOf(session_.lastPhase());
    return meaning.why == nullptr ? std::string() : context_.texts.*meaning.why;
}

/// The words for a hindrance; empty for one that has none.
std::string KeyReasons::whyOf(Hindrance hindrance) const {
    const auto row =
        std::find_if(kHindranceTexts.begin(), kHindranceTexts.end(),
                     [hindrance](const HindranceText& each) { return each.hindrance == hindrance; });
    return row == kHindranceTexts.end() ? std::string() : context_.texts.*row->text;
}

std::string KeyReasons::whyState(const Control& key) const {
    const ConsoleTexts& texts = context_.texts;
    if (session_.generator().isLost() || context_.link.silence().quiet() ||
        !context_.link.silence().everHeard()) {
        return texts.sWhyUnheard;
    }
    if (session_.generator().poweringUp()) {
        return texts.sPoweringUp;
    }
    if (session_.is(Run::Closing)) {
        return texts.sClosing;
    }
    if (session_.waits()) {
        return texts.sPleaseWait;
    }
    if (std::string phase = whyPhase(); !phase.empty()) {
        return phase;
    }
    if (context_.console.timer("tmrWaitRefresh").running() ||
        context_.console.timer("tmrWaitStartGenerator").running()) {
        return texts.sReadingSettings;
    }
    if (std::string own = whyOf(hindrance(key)); !own.empty()) {
        return own;
    }
    if (const ServiceMode* mode = serviceModeOf(session_.mode())) {
        return ConsoleTexts::filled(key.host() == &context_.link ? texts.sWhyNotIn : texts.sWhyMode,
                                    {std::string_view(context_.console[nameOf(mode->key)].caption())});
    }
    return texts.sWhyNotNow;
}

std::string KeyReasons::whyHeld(const Control& key) const {
    const ConsoleTexts& texts = context_.texts;
    const bool ends = key.name() == nameOf(Key::Close);
    return key.holdTime() == 0
               ? std::string()
               : ConsoleTexts::filled(ends ? texts.sWhyHoldToEnd : texts.sWhyHold, {key.holdTime() / 1000});
}

std::string KeyReasons::why(const Control& key) const {
    if (!isKey(key)) {
        return {};
    }
    if (shutOff(key)) {
        return context_.texts.sWhyPanel;
    }
    if (key.blocked()) {
        return context_.texts.sWhyError;
    }
    for (const Control* at = &key; at != nullptr; at = at->container()) {
        if (at->has(Property::Enabled) && !at->enabled()) {
            return whyState(key);
        }
    }
    const Hindrance hindrance = this->hindrance(key);
    if (hindrance == Hindrance::None) {
        return {};
    }
    const std::string own = whyOf(hindrance);
    return !own.empty()                            ? own
           : key.name() == nameOf(Key::ResetError) ? context_.texts.sWhyNoError
                                                   : whyState(key);
}

} // namespace quillon
