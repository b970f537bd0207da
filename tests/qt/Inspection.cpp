#include "tests/qt/Inspection.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <iterator>

#include <QFontMetrics>

#include "qt/AccessibleWords.h"
#include "qt/ControlView.h"
#include "qt/Convert.h"
#include "qt/Keypad.h"
#include "qt/RecordsKey.h"
#include "qt/StatusBar.h"

namespace quillon {

namespace {

constexpr int kSmallestLetters = 8; ///< pixels; on a panel of 640 x 480 they are 2.5 mm

constexpr double kLampCapitals = 3; ///< mm

using Findings = std::vector<std::string>;
using Tell = std::function<void(const Control&, const std::string&)>;

/// How much light a colour gives to the eye, 0 to 1.
double luminance(const QColor& colour) {
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

std::string rectText(const QRect& place) {
    return std::to_string(place.width()) + " x " + std::to_string(place.height());
}

/// `box`: an editor, which neither wraps nor shrinks; `capitals`: how high they are at least on one line.
void inspectWords(const Words& words, bool box, double capitals,
                  const std::function<void(std::string)>& tell) {
    if (words.text.isEmpty()) {
        return;
    }
    const std::string text = QStringLiteral("\"%1\"").arg(words.text).toStdString();
    const Fit fit = box ? Fit{words.font, true} : fitWords(words);
    const QFontMetrics metrics(fit.font);
    if (!fit.whole || (box && (metrics.horizontalAdvance(words.text) > words.place.width() ||
                               metrics.height() > words.place.height()))) {
        tell(text + " is clipped in " + rectText(words.place));
    } else if (words.oneLine && metrics.capHeight() < capitals) {
        tell(text + " has capitals of " + std::to_string(metrics.capHeight()));
    } else if (fit.font.pixelSize() < kSmallestLetters) {
        tell(text + " shrinks to " + std::to_string(fit.font.pixelSize()) + " pixels");
    }
    if (contrast(words.ink, words.background) < kReadable) {
        tell(text + " has a contrast of " + std::to_string(contrast(words.ink, words.background)));
    }
}

void inspectText(const ControlView& view, const Tell& tell) {
    if (const auto words = view.words()) {
        inspectWords(*words, view.editor() != nullptr, panelPixels(kLampCapitals, view.window()->size()),
                     [&](const std::string& what) { tell(view.control(), what); });
    }
    for (const Words& note : view.notes()) {
        inspectWords(note, false, 0, [&](const std::string& what) { tell(view.control(), what); });
    }
}

/// The open keypad: its words, where it is, and what it covers.
void inspectKeypad(const Screen& screen, const Tell& tell) {
    const Keypad& pad = *screen.keypad();
    if (pad.box() == nullptr) {
        return;
    }
    for (const PadKey* key : pad.keys()) {
        inspectWords(key->words(), false, 0, [&](const std::string& what) { tell(*pad.box(), what); });
    }
    const ControlView* box = screen.view(*pad.box());
    const QRect shown(box->mapTo(box->window(), QPoint()), box->size());
    const QRect form(0, 0, box->window()->width(),
                     static_cast<const FormWindow*>(box->window())->foot().top());
    if (pad.geometry().intersects(shown) || !form.contains(pad.geometry())) {
        tell(*pad.box(), "has a keypad in the wrong place");
    }
}

bool mayLieOver(const Control& upper, const Control& lower, const QRect& above, const QRect& below) {
    // Dialogs come over what is there, a dialog's frame and the rest picture are backdrops.
    return above.contains(below) || lower.kind() == Kind::Picture || upper.kind() == Kind::User;
}

void inspectPlaces(const Screen& screen, const ControlView& view, const Tell& tell) {
    std::vector<const ControlView*> shown;
    for (const Control* child : view.control().stack()) {
        if (const ControlView* inner = screen.view(*child); inner != nullptr && child->visible()) {
            shown.push_back(inner);
        }
    }
    const auto caption = view.control().kind() == Kind::Frame ? view.words() : std::nullopt;
    for (auto at = shown.begin(); at != shown.end(); ++at) {
        const QRect place = (*at)->geometry();
        const Control& control = (*at)->control();
        if (!view.rect().adjusted(0, 0, 1, 1).contains(place)) { // both are rounded to pixels
            tell(control, "leaves " + view.control().name());
        }
        if (caption && caption->place.intersects(place)) {
            tell(control, "lies over the caption of " + view.control().name());
        }
        for (auto upper = std::next(at); upper != shown.end(); ++upper) {
            const QRect above = (*upper)->geometry();
            if (above.intersects(place) && !mayLieOver((*upper)->control(), control, above, place)) {
                tell(control, "lies half under " + (*upper)->control().name());
            }
        }
    }
}

void walk(const Screen& screen, const Control& control,
          const std::function<void(const ControlView&)>& visit) {
    const ControlView* view = screen.view(control);
    if (view == nullptr || !control.visible()) {
        return;
    }
    visit(*view);
    for (const Control* child : control.stack()) {
        walk(screen, *child, visit);
    }
}

/// The key to the records: its words, its size, and that it lies over nothing.
Findings inspectRecordsKey(const Screen& screen, const Control& form, int finger) {
    const RecordsKey& key = *screen.recordsKey();
    Findings findings;
    if (!key.isVisible()) {
        return findings;
    }
    const auto tell = [&findings](const std::string& what) {
        findings.push_back("the records' key " + what);
    };
    inspectWords(key.words(), false, 0, tell);
    if (std::min(key.width(), key.height()) < finger) {
        tell("is " + std::to_string(key.width()) + " x " + std::to_string(key.height()));
    }
    walk(screen, form, [&](const ControlView& view) {
        const Control& control = view.control();
        const bool holds = control.kind() == Kind::Form || control.kind() == Kind::User;
        if (!holds && QRect(view.mapTo(view.window(), QPoint()), view.size()).intersects(key.geometry())) {
            tell("lies over " + pathOf(control));
        }
    });
    return findings;
}

/// How far a finger may be from a control's middle and still be on it, from side to side and up and down;
/// empty where it is covered.
QSize touchedArea(const Screen& screen, const ControlView& view) {
    const QPoint middle = view.mapTo(view.window(), view.rect().center());
    if (&screen.controlAt(middle) != &view.control()) {
        return {};
    }
    const QRect shown(view.mapTo(view.window(), QPoint()), view.size());
    const auto beyond = [&](QPoint at, QPoint step) {
        int pixels = 0;
        while (&screen.controlAt(at += step) == &view.control()) {
            ++pixels;
        }
        return pixels;
    };
    return {beyond({shown.left(), middle.y()}, {-1, 0}) + shown.width() +
                beyond({shown.right(), middle.y()}, {1, 0}),
            beyond({middle.x(), shown.top()}, {0, -1}) + shown.height() +
                beyond({middle.x(), shown.bottom()}, {0, 1})};
}

} // namespace

double contrast(const QColor& a, const QColor& b) {
    const auto [dark, bright] = std::minmax({luminance(a), luminance(b)});
    return (bright + 0.05) / (dark + 0.05);
}

std::string pathOf(const Control& control) {
    std::string path;
    for (const Control* at = &control; at != nullptr; at = at->container()) {
        const std::string index = at->index() ? "(" + std::to_string(*at->index()) + ")" : "";
        path.insert(0, (at->container() == nullptr ? "" : "/") + at->name() + index);
    }
    return path;
}

Findings inspect(Screen& screen, const Control& form) {
    screen.flush();
    Findings findings;
    const Tell tell = [&findings](const Control& control, const std::string& what) {
        findings.push_back(pathOf(control) + " " + what);
    };
    walk(screen, form, [&](const ControlView& view) {
        inspectText(view, tell);
        inspectPlaces(screen, view, tell);
    });
    if (const SummaryView* summary = screen.summary()) {
        for (const Words& words : summary->words()) {
            inspectWords(words, false, 0, [&](const std::string& what) { tell(form, what); });
        }
    }
    inspectKeypad(screen, tell);
    const Findings ofKey = inspectRecordsKey(screen, form, 0);
    findings.insert(findings.end(), ofKey.begin(), ofKey.end());
    const Findings inBar = inspectBar(screen);
    findings.insert(findings.end(), inBar.begin(), inBar.end());
    return findings;
}

Findings inspectBar(Screen& screen) {
    screen.flush();
    Findings findings;
    for (const Words& words : screen.bar()->words()) {
        inspectWords(words, false, 0, [&](const std::string& what) { findings.push_back("bar " + what); });
    }
    return findings;
}

Findings smallTargets(Screen& screen, const Control& form, int finger) {
    screen.flush();
    Findings findings = inspectRecordsKey(screen, form, finger);
    walk(screen, form, [&](const ControlView& view) {
        const Control& control = view.control();
        const bool typed = control.kind() == Kind::TextBox && !control.readOnly();
        const bool touched = control.kind() == Kind::Button || control.kind() == Kind::List ||
                             control.kind() == Kind::Slider || typed;
        bool behind = false; // of a panel: nobody is to touch it
        for (const Control* at = &control; at != nullptr; at = at->container()) {
            behind = behind || at->locked();
        }
        const QSize reach = touched && !behind ? touchedArea(screen, view) : QSize();
        if (!reach.isEmpty() && std::min(reach.width(), reach.height()) < finger) {
            findings.push_back(pathOf(control) + " is " + std::to_string(reach.width()) + " x " +
                               std::to_string(reach.height()));
        }
    });
    if (screen.keypad()->box() != nullptr) {
        for (const PadKey* key : screen.keypad()->keys()) {
            if (std::min(key->width(), key->height()) < finger) {
                findings.push_back("a key of the keypad is " + std::to_string(key->width()));
            }
        }
    }
    return findings;
}

std::vector<ShownText> textsOn(Screen& screen, const Control& form) {
    screen.flush();
    std::vector<ShownText> texts{{pathOf(form), screen.window().windowTitle().toStdString()}};
    walk(screen, form, [&texts](const ControlView& view) {
        if (const auto words = view.words()) {
            texts.push_back({pathOf(view.control()), words->text.toStdString()});
        }
        for (const Words& note : view.notes()) {
            texts.push_back({pathOf(view.control()), note.text.toStdString()});
        }
        for (const auto& told : {accessibleName, accessibleDescription}) {
            texts.push_back({pathOf(view.control()), told(view.control(), view.indicators()).toStdString()});
        }
    });
    std::vector<Words> beside = screen.bar()->words();
    if (const SummaryView* summary = screen.summary()) {
        const std::vector<Words> words = summary->words();
        beside.insert(beside.end(), words.begin(), words.end());
    }
    texts.push_back({pathOf(form), screen.recordsKey()->name().toStdString()});
    for (const PadKey* key : screen.keypad()->keys()) {
        texts.push_back({pathOf(form), key->name().toStdString()});
    }
    for (const Words& words : beside) {
        texts.push_back({pathOf(form), words.text.toStdString()});
    }
    return texts;
}

std::string textOn(Screen& screen, const Control& form) {
    std::string all;
    for (const ShownText& shown : textsOn(screen, form)) {
        all.append(shown.text).append("\n");
    }
    return all;
}

} // namespace quillon
