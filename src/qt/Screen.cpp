#include "qt/Screen.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include <QMetaObject>
#include <QWindow>

#include "console/Exposures.h"
#include "console/GeneratorSummary.h"
#include "console/KeyReasons.h"
#include "console/PendingKeys.h"
#include "console/StatusLine.h"
#include "qt/AccessibilityNotifier.h"
#include "qt/AccessibleWords.h"
#include "qt/Convert.h"
#include "qt/InputRouter.h"
#include "qt/KeyView.h"
#include "qt/Keypad.h"
#include "qt/RecordsKey.h"
#include "qt/StatusBar.h"

namespace quillon {

namespace {

/// Every control below, itself first.
void walk(Control& control, const std::function<void(Control&)>& visit) {
    visit(control);
    for (Control* child : control.stack()) {
        walk(*child, visit);
    }
}

/// Every control on show below, with its place on the window.
void eachShown(const Control& container, QPoint origin,
               const std::function<void(Control&, const QRect&)>& visit) {
    for (Control* child : container.stack()) {
        if (child->visible()) {
            const QRect shown = toPixels(child->place()).translated(origin);
            visit(*child, shown);
            eachShown(*child, shown.topLeft(), visit);
        }
    }
}

/// A text box is left out: the platform places the cursor in it.
bool takesFinger(const Control& control) {
    return control.kind() == Kind::List || control.kind() == Kind::Slider ||
           (control.kind() == Kind::Button && !control.lamp());
}

constexpr double kFinger = 9; // mm

} // namespace

Screen::Screen(ControlHost& form, Input& input, FormWindow::Requests requests,
               std::optional<Indicators> indicators)
    : form_(form), input_(input), indicators_(indicators),
      window_(std::make_unique<FormWindow>(form, std::move(requests), indicators.has_value())),
      router_(std::make_unique<InputRouter>(*this, form, input)),
      news_(new AccessibilityNotifier(*this, input)) {
    views_.emplace(&form, window_.get());
    window_->windowHandle()->installEventFilter(router_.get());
    markAll(form);
    if (indicators_) {
        connectSigns();
    }
}

void Screen::connectSigns() {
    bar_ = new StatusBar(indicators_->status, window_.get());
    records_ = new RecordsKey(*this, indicators_->texts.records);
    keypad_ = new Keypad(*this, input_, indicators_->texts);
    bar_->onSecond = [this] { post(); };
    input_.blocks = [this](const Control& control) { return indicators_->reasons.blocks(control); };
    pendingChanged_ = indicators_->pending.changed.connect([this](const Control* key) {
        if (ControlView* shown = view(*key)) {
            mark(shown->control());
            news_->look();
        }
    });
    refused_ = indicators_->refused.connect(
        [this](const Control* box, const std::string& bounds) { tellWhy(*box, bounds); });
    statusChanged_ = indicators_->status.changed.connect([this] { post(); });
    const auto showGlance = [this] {
        if (summary_ != nullptr) {
            summary_->settle();
            summary_->update();
        }
    };
    exposuresChanged_ = indicators_->exposures.changed.connect(showGlance);
    glanceChanged_ = indicators_->summary.changed.connect(showGlance);
}

Screen::~Screen() {
    if (indicators_) {
        input_.blocks = nullptr;
        indicators_->pending.changed.disconnect(pendingChanged_);
        indicators_->refused.disconnect(refused_);
        indicators_->status.changed.disconnect(statusChanged_);
        indicators_->exposures.changed.disconnect(exposuresChanged_);
        indicators_->summary.changed.disconnect(glanceChanged_);
    }
    window_->windowHandle()->removeEventFilter(router_.get());
}

ControlView* Screen::view(const Control& control) const {
    const auto entry = views_.find(&control);
    return entry == views_.end() ? nullptr : entry->second;
}

void Screen::controlChanged(Control& control) {
    if (control.lamp() && control.kind() == Kind::Button) {
        if (auto* lamp = static_cast<KeyView*>(view(control))) {
            lamp->keepLit(); // it may be dark again before it is painted
        }
    }
    mark(control);
}

bool Screen::admits(const Control& control) {
    if (bar_ != nullptr) {
        tellWhy(control, indicators_->reasons.why(control));
        post(); // what a hold counts begins now
    }
    return input_.takes(control);
}

void Screen::tellHold(const Control& control) {
    if (bar_ != nullptr) {
        tellWhy(control, indicators_->reasons.whyHeld(control));
    }
}

void Screen::tellNothing() {
    if (bar_ != nullptr) {
        bar_->tellWhy({});
    }
}

void Screen::tell(const QString& words) {
    if (bar_ != nullptr) {
        bar_->tellWhy(words);
    }
}

void Screen::lookAgain() {
    news_->look();
}

void Screen::tellHandle(const Control& control) {
    if (bar_ != nullptr) {
        tellWhy(control, indicators_->texts.sWhyHandle);
    }
}

void Screen::tellWhy(const Control& control, const std::string& why) {
    if (!why.empty() && onRefused) {
        onRefused(control, why);
    }
    const QString key = accessibleName(control, &*indicators_);
    bar_->tellWhy(why.empty() || key.isEmpty() ? toQt(why) : key + QStringLiteral(": ") + toQt(why));
}

void Screen::controlAdded(Control& control) {
    markAll(control);
    if (control.container() != nullptr) {
        mark(*control.container());
    }
}

void Screen::controlRemoved(Control& control) {
    router_->forget(control);
    ControlView* gone = view(control);
    walk(control, [this](Control& below) {
        views_.erase(&below);
        changed_.erase(&below);
        reordered_.erase(&below);
    });
    if (gone != nullptr) {
        gone->hide();
        gone->deleteLater(); // it may be handling the very event that took its control away
    }
}

void Screen::mark(Control& control) {
    if (!control.has(Property::Geometry)) {
        return;
    }
    changed_.insert(&control);
    if (!control.stack().empty()) {
        reordered_.insert(&control);
    }
    post();
}

void Screen::post() {
    if (!posted_) {
        posted_ = true;
        // An event of Qt's own kinds it may take for one of its own, and read what is not in it.
        QMetaObject::invokeMethod(this, &Screen::flush, Qt::QueuedConnection);
    }
}

void Screen::markAll(Control& control) {
    walk(control, [this](Control& below) { mark(below); });
}

void Screen::flush() {
    // The form comes last: a window that is about to be shown has all its content then.
    const bool form = changed_.erase(&form_) > 0;
    while (!changed_.empty()) {
        Control& control = **changed_.begin();
        changed_.erase(changed_.begin());
        if (ControlView* shown = make(control)) {
            shown->sync();
        }
    }
    while (!reordered_.empty()) {
        const Control& container = **reordered_.begin();
        reordered_.erase(reordered_.begin());
        restack(container);
    }
    posted_ = false;
    makeGlance();
    if (summary_ != nullptr) {
        summary_->settle();
    }
    if (form) {
        window_->sync();
    }
    if (bar_ != nullptr) {
        bar_->setGeometry(window_->foot());
        bar_->sync();
        for (const auto& [control, shown] : views_) {
            shown->reconsider();
        }
        records_->settle();
        keypad_->settle();
    }
    news_->look();
}

void Screen::makeGlance() {
    const auto* console = dynamic_cast<const ControlHost*>(form_.find("Quillon"));
    ControlView* background = !indicators_ || console == nullptr ? nullptr : view(*console);
    if (summary_ != nullptr || background == nullptr) {
        return;
    }
    summary_ = new SummaryView(*indicators_, *console, background);
    summary_->setStart(start_);
}

void Screen::setStart(QDateTime start) {
    start_ = std::move(start);
    if (summary_ != nullptr) {
        summary_->setStart(start_);
    }
}

ControlView* Screen::make(Control& control) {
    if (ControlView* present = view(control)) {
        return present;
    }
    ControlView* parent = control.container() == nullptr ? nullptr : make(*control.container());
    if (parent == nullptr) {
        return nullptr;
    }
    ControlView* made = makeView(control, input_, indicators_ ? &*indicators_ : nullptr, parent);
    if (made != nullptr) {
        views_.emplace(&control, made);
    }
    return made;
}

void Screen::restack(const Control& container) const {
    const ControlView* parent = view(container);
    if (parent == nullptr) {
        return;
    }
    std::vector<ControlView*> wanted;
    for (const Control* child : container.stack()) {
        if (ControlView* shown = view(*child)) {
            wanted.push_back(shown);
        }
    }
    std::vector<ControlView*> present;
    for (QObject* child : parent->children()) {
        auto* shown = dynamic_cast<ControlView*>(child);
        if (shown != nullptr && view(shown->control()) == shown) {
            present.push_back(shown);
        }
    }
    if (present != wanted) {
        for (ControlView* shown : wanted) {
            shown->raise();
        }
    }
}

Control& Screen::controlAt(QPoint place) const {
    if (window_->foot().contains(place) || (keypad_ != nullptr && keypad_->covers(place)) ||
        (records_ != nullptr && records_->covers(place))) {
        return form_;
    }
    Control& front = frontMost(place);
    if (takesFinger(front) || front.kind() == Kind::TextBox) {
        return front;
    }
    const int finger = static_cast<int>(std::ceil(panelPixels(kFinger, window_->size())));
    Control* nearest = &front;
    int distance = finger;
    eachShown(form_, {}, [&](Control& control, const QRect& shown) {
        if (!takesFinger(control)) {
            return;
        }
        const int wide = std::max(0, (finger - shown.width() + 1) / 2);
        const int high = std::max(0, (finger - shown.height() + 1) / 2);
        if (!shown.adjusted(-wide, -high, wide, high).contains(place)) {
            return;
        }
        const QPoint edge(std::clamp(place.x(), shown.left(), shown.right()),
                          std::clamp(place.y(), shown.top(), shown.bottom()));
        const int away = (place - edge).manhattanLength();
        // What lies under something else is not in reach beside it.
        if (away < distance && &frontMost(edge) == &control) {
            nearest = &control;
            distance = away;
        }
    });
    return *nearest;
}

Control& Screen::frontMost(QPoint place) const {
    Control* at = &form_;
    for (;;) {
        Control* inner = nullptr;
        for (auto child = at->stack().rbegin(); child != at->stack().rend() && inner == nullptr; ++child) {
            if ((*child)->visible() && toPixels((*child)->place()).contains(place)) {
                inner = *child;
            }
        }
        if (inner == nullptr) {
            return *at;
        }
        place -= toPixels(inner->place()).topLeft();
        at = inner;
    }
}

} // namespace quillon
