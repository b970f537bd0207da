#include "qt/AccessibleWords.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string_view>

#include <QStringList>

#include "console/ConsoleTexts.h"
#include "console/KeyReasons.h"
#include "console/PendingKeys.h"
#include "console/StatusLine.h"
#include "qt/Convert.h"

namespace quillon {

namespace {

using T = ConsoleTexts;

struct ArtName {
    std::string_view art;
    std::string T::*name;
};
constexpr std::array kLampArt{ArtName{"preparation", &T::sStatePreparation},
                              ArtName{"exposure", &T::sStateExposure}};

QString oneLine(std::string_view text) {
    return toQtLines(text).simplified();
}

/// In the words that the screen uses.
QString captionOf(const Control& control) {
    return oneLine(control.onScreen(control.caption()));
}

bool isArrow(const Control& control) {
    return control.kind() == Kind::Button && (control.art() == "up" || control.art() == "down");
}

/// "+" and "-" on a key, which mean the same as arrows.
bool isStep(const Control& control) {
    return isArrow(control) ||
           (control.kind() == Kind::Button && (control.caption() == "+" || control.caption() == "-"));
}

bool isSubject(const Control& control) {
    return control.kind() == Kind::Label && !control.caption().empty() && control.role() == Role::Plain;
}

bool overlaps(Twips start, Twips length, Twips otherStart, Twips otherLength) {
    const Twips common = std::min(start + length, otherStart + otherLength) - std::max(start, otherStart);
    return common * 2 > std::min(length, otherLength);
}

/// Controls beside it on the same background, the nearest first.
std::vector<const Control*> neighbours(const Control& control, bool column, bool before) {
    std::vector<const Control*> found;
    const auto start = [column](const Control& one) { return column ? one.top() : one.left(); };
    for (const Control* one : control.container()->stack()) {
        const bool beside = column ? overlaps(one->left(), one->width(), control.left(), control.width())
                                   : overlaps(one->top(), one->height(), control.top(), control.height());
        if (one != &control && one->visible() && beside &&
            (before ? start(*one) < start(control) : start(*one) > start(control))) {
            found.push_back(one);
        }
    }
    std::sort(found.begin(), found.end(), [&](const Control* a, const Control* b) {
        return before ? start(*a) > start(*b) : start(*a) < start(*b);
    });
    return found;
}

bool isValue(const Control& control) {
    return control.kind() == Kind::TextBox ||
           (control.kind() == Kind::Label && control.role() == Role::Field) ||
           (control.kind() == Kind::Label && control.caption().empty());
}

bool isField(const Control& control) {
    return control.kind() == Kind::Label && control.role() == Role::Field;
}

/// The unit behind a value, which touches it.
const Control* unitOf(const Control& value) {
    constexpr Twips kTouching = 30;
    for (const Control* one : neighbours(value, false, false)) {
        if (isSubject(*one) && std::abs(one->left() - value.left() - value.width()) <= kTouching) {
            return one;
        }
    }
    return nullptr;
}

/// The label above it, or before it in its row, with nothing but what belongs to it between.
const Control* labelOf(const Control& control) {
    if (control.role() == Role::Field) {
        if (const Control* unit = unitOf(control)) {
            return unit;
        }
    }
    const bool steps = !control.lamp() && (isStep(control) || control.kind() != Kind::Button);
    for (const bool column : {true, false}) {
        for (const Control* one : neighbours(control, column, true)) {
            if (isSubject(*one)) {
                return one;
            }
            if (!isValue(*one) && !(steps && isStep(*one))) {
                break;
            }
        }
    }
    return nullptr;
}

/// The heading of its part, in an area of several parts. A key that refuses belongs to no part.
const Control* headingOf(const Control& control) {
    const auto isTitle = [](const Control* one) { return one->role() == Role::Title && one->visible(); };
    const std::vector<Control*>& all = control.container()->stack();
    if (control.role() == Role::Decline || std::count_if(all.begin(), all.end(), isTitle) < 2) {
        return nullptr;
    }
    const std::vector<const Control*> above = neighbours(control, true, true);
    const auto found = std::find_if(above.begin(), above.end(), isTitle);
    return found == above.end() ? nullptr : *found;
}

/// The label of the value that stands before the key in its row: a key that does something with it.
const Control* labelOfValueBefore(const Control& key) {
    const std::vector<const Control*> before = neighbours(key, false, true);
    const bool value = !before.empty() && isValue(*before.front());
    return value ? labelOf(*before.front()) : nullptr;
}

/// The caption of the nearest frame around it that has one.
QString frameOf(const Control& control) {
    for (const Control* at = control.container(); at->kind() == Kind::Frame; at = at->container()) {
        if (QString caption = captionOf(*at); !caption.isEmpty()) {
            return caption;
        }
    }
    return {};
}

/// A label without a letter, such as "+" for the far end of an axis, tells nothing by itself.
QString subjectBy(const Control& label) {
    const QString words = captionOf(label);
    const bool tells = std::any_of(words.begin(), words.end(), [](QChar one) { return one.isLetter(); });
    return tells ? words : (frameOf(label) + QLatin1Char(' ') + words).trimmed();
}

/// The words beside the control that say what it is about.
QString subjectOf(const Control& control) {
    if (control.container() == nullptr) {
        return {};
    }
    if (control.kind() == Kind::Button && !control.note().empty()) {
        return oneLine(control.onScreen(control.note()));
    }
    if (const Control* label = labelOf(control)) {
        return subjectBy(*label);
    }
    if (const Control* heading = headingOf(control)) {
        return captionOf(*heading);
    }
    if (control.kind() == Kind::Button && !isStep(control)) {
        const Control* label = labelOfValueBefore(control);
        return label != nullptr ? subjectBy(*label) : QString();
    }
    for (const Control* one : neighbours(control, true, false)) {
        if (one->kind() == Kind::Button && !isStep(*one)) {
            return captionOf(*one);
        }
        if (!isValue(*one) && !isStep(*one)) {
            break;
        }
    }
    return frameOf(control);
}

QString keyName(const Control& key, const Indicators* indicators) {
    for (const ArtName& lamp : kLampArt) {
        if (key.art() == lamp.art) {
            return indicators != nullptr ? oneLine(indicators->texts.*lamp.name) : toQt(lamp.art);
        }
    }
    const QString sign = key.art() == "up"     ? QStringLiteral("+")
                         : key.art() == "down" ? QStringLiteral("-")
                                               : captionOf(key);
    return isStep(key) ? (subjectOf(key) + QLatin1Char(' ') + sign).trimmed() : sign;
}

/// An empty value is announced as well.
QString labelName(const Control& label, const Indicators* indicators) {
    QString words = captionOf(label);
    if (words.isEmpty() && isField(label) && indicators != nullptr) {
        words = oneLine(label.saysOff() ? indicators->texts.sOff : indicators->texts.sMarkEmpty);
    }
    const QString note = oneLine(label.note());
    return note.isEmpty()                ? words
           : label.role() == Role::Plain ? words + QStringLiteral(", ") + note
                                         : note + QStringLiteral(". ") + words;
}

/// A panel's name is its title, or the first words on it that are highlighted.
QString panelName(const Control& panel) {
    QString first;
    for (const Control* one : panel.stack()) {
        if (one->kind() != Kind::Label || !one->visible() || one->caption().empty()) {
            continue;
        }
        if (one->role() == Role::Title) {
            return captionOf(*one);
        }
        if (first.isEmpty() && one->role() != Role::Field) {
            first = captionOf(*one);
        }
    }
    return first;
}

std::string T::*rankOf(Role role) {
    switch (role) {
    case Role::Prompt:
        return &T::sMarkPrompt;
    case Role::Radiation:
        return &T::sMarkRadiation;
    case Role::Good:
        return &T::sMarkGood;
    case Role::Warning:
        return &T::sMarkWarning;
    case Role::Interlock:
    case Role::Alarm:
        return &T::sMarkAlarm;
    default:
        return nullptr;
    }
}

/// A value, or a lit key, that was not reported since the silence or since what was sent.
bool isOld(const Control& control, const Indicators& indicators) {
    const bool value = control.kind() == Kind::TextBox ? control.readOnly() && !control.text().empty()
                       : control.kind() == Kind::Label ? isField(control) && !control.caption().empty()
                                                       : isLit(control) && PendingKeys::isReported(control);
    return value && (control.old() || indicators.pending.outdated(control));
}

/// The state of the control that is shown otherwise than by its words.
QStringList marksOf(const Control& control, const Indicators& indicators) {
    QStringList all;
    const auto add = [&](std::string T::*text) { all << oneLine(indicators.texts.*text); };
    if (const auto rank = rankOf(control.role())) {
        add(rank);
    }
    const bool wayBack = indicators.status.wayBack() == &control;
    if ((control.lamp() && isLit(control)) || wayBack) {
        add(&T::sMarkLit);
    }
    if (wayBack) {
        add(&T::sMarkBack);
    }
    if (indicators.reasons.blocks(control)) {
        all << oneLine(indicators.reasons.why(control));
    }
    if (control.kind() == Kind::Button) {
        all << oneLine(indicators.reasons.whyHeld(control));
    }
    if (indicators.pending.waits(control)) {
        add(&T::sMarkPending);
    }
    if (PendingKeys::isUnknown(control)) {
        add(&T::sStateNotKnown);
    }
    if (isOld(control, indicators)) {
        add(&T::sMarkOld);
    }
    return all;
}

} // namespace

bool isLit(const Control& control) {
    return control.kind() == Kind::Button && control.role() != Role::Decline &&
           (control.backColour() != kNormalColour || control.darkened());
}

QString accessibleName(const Control& control, const Indicators* indicators) {
    switch (control.kind()) {
    case Kind::Form:
    case Kind::Frame:
        return captionOf(control);
    case Kind::User: {
        // The console and the link control are the whole screen, and no panel on it.
        const bool panel = control.container() != nullptr && control.container()->kind() == Kind::User;
        return panel ? panelName(control) : QString();
    }
    case Kind::Button:
        return keyName(control, indicators);
    case Kind::Label:
        return labelName(control, indicators);
    case Kind::TextBox:
    case Kind::List:
    case Kind::Slider: {
        const QString subject = subjectOf(control);
        const QString name = subject.isEmpty() ? oneLine(control.onScreen(control.note())) : subject;
        return name.isEmpty() ? toQt(control.name()) : name;
    }
    case Kind::Picture:
        return oneLine(control.note());
    case Kind::Timer:
    case Kind::Images:
        break;
    }
    return {};
}

QString accessibleDescription(const Control& control, const Indicators* indicators) {
    QStringList all;
    const bool key = control.kind() == Kind::Button;
    if ((key && !isStep(control) && !control.lamp()) ||
        (control.kind() == Kind::Label && control.role() == Role::Field)) {
        all << subjectOf(control);
    }
    if (control.kind() == Kind::TextBox && control.container() != nullptr) {
        if (const Control* label = labelOf(control)) {
            all << oneLine(label->note()); // what may stand in it
        }
    }
    if (indicators != nullptr) {
        all << marksOf(control, *indicators);
    }
    all.removeAll(QString());
    return all.join(QStringLiteral(", "));
}

} // namespace quillon
