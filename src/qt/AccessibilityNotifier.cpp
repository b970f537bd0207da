#include "qt/AccessibilityNotifier.h"

#include <utility>

#include <QCoreApplication>
#include <QInputMethodEvent>
#include <QMouseEvent>
#include <QWindow>

#include "qt/AccessibleNode.h"
#include "qt/ControlView.h"
#include "qt/Screen.h"

namespace quillon {

namespace {

// A timer and not a queued call, as the recorder updates its time at timers.
constexpr int kMoment = 1;    // ms
constexpr int kTogether = 50; // ms, within which several changes are told together

void tapOn(QWindow& window, QPoint place) {
    const QPointF at(place);
    const QPointF global(window.mapToGlobal(place));
    QMouseEvent down(QEvent::MouseButtonPress, at, at, global, Qt::LeftButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&window, &down);
    QMouseEvent up(QEvent::MouseButtonRelease, at, at, global, Qt::LeftButton, Qt::NoButton, {});
    QCoreApplication::sendEvent(&window, &up);
}

void tellOf(QWidget& widget, QAccessible::Event what) {
    QAccessibleEvent event(&widget, what);
    QAccessible::updateAccessibility(&event);
}

void tellState(QWidget& widget, const QAccessible::State& before, const QAccessible::State& now) {
    QAccessible::State changed;
    changed.disabled = before.disabled != now.disabled;
    changed.checked = before.checked != now.checked;
    changed.expanded = before.expanded != now.expanded;
    if (changed.disabled || changed.checked || changed.expanded) {
        QAccessibleStateChangeEvent event(&widget, changed);
        QAccessible::updateAccessibility(&event);
    }
}

/// The entries of a list that has opened.
void tellEntries(QWidget& list) {
    const QAccessibleInterface* node = QAccessible::queryAccessibleInterface(&list);
    for (int i = 0; i < node->childCount(); ++i) {
        QAccessibleEvent event(node->child(i), QAccessible::ObjectCreated);
        QAccessible::updateAccessibility(&event);
    }
}

} // namespace

AccessibilityNotifier::AccessibilityNotifier(Screen& screen, Input& input)
    : QObject(&screen.window()), screen_(screen), input_(input) {
    soon_.setSingleShot(true);
    connect(&soon_, &QTimer::timeout, this, [this] { tell(); });
}

AccessibilityNotifier* AccessibilityNotifier::of(const QWidget& widget) {
    for (QObject* child : widget.window()->children()) {
        if (auto* news = dynamic_cast<AccessibilityNotifier*>(child)) {
            return news;
        }
    }
    return nullptr;
}

void AccessibilityNotifier::look() {
    if (QAccessible::isActive() && !soon_.isActive()) {
        soon_.start(kTogether);
    }
}

bool AccessibilityNotifier::reaches(const ControlView& view) const {
    return input_.reachable(view.control());
}

void AccessibilityNotifier::press(ControlView& view) {
    QTimer::singleShot(kMoment, &view, [this, &view] {
        const QRect place = seenPlace(view);
        if (!place.isEmpty()) {
            tapOn(*screen_.window().windowHandle(), place.center());
            look();
        }
    });
}

void AccessibilityNotifier::tap(QWidget& key) {
    QTimer::singleShot(kMoment, &key, [this, &key] {
        if (key.isVisible()) {
            tapOn(*screen_.window().windowHandle(), key.mapTo(key.window(), key.rect().center()));
            look();
        }
    });
}

void AccessibilityNotifier::slide(ControlView& view, int value) {
    QTimer::singleShot(kMoment, &view, [this, &view, value] {
        if (!seenPlace(view).isEmpty() && screen_.admits(view.control())) {
            input_.slide(view.control(), value);
        }
    });
}

void AccessibilityNotifier::type(ControlView& view, int start, int length, const QString& text) {
    QTimer::singleShot(kMoment, &view, [this, &view, start, length, text] {
        if (seenPlace(view).isEmpty() || !input_.reachable(view.control())) {
            return;
        }
        const int cursor = view.editor()->inputMethodQuery(Qt::ImCursorPosition).toInt();
        QInputMethodEvent typed;
        typed.setCommitString(text, start - cursor, length);
        QCoreApplication::sendEvent(view.editor(), &typed);
    });
}

void AccessibilityNotifier::gather(const QWidget& above, std::map<const QWidget*, Told>& found) const {
    for (QWidget* widget : listedBelow(above)) {
        QAccessibleInterface* node = QAccessible::queryAccessibleInterface(widget);
        if (node == nullptr) {
            continue;
        }
        Told now{
            widget, listedAbove(*widget), node->text(QAccessible::Name), node->text(QAccessible::Description),
            {},     node->state()};
        if (QAccessibleValueInterface* value = node->valueInterface()) {
            now.value = value->currentValue();
        }
        found.emplace(widget, std::move(now));
        gather(*widget, found);
    }
}

void AccessibilityNotifier::tell() {
    std::map<const QWidget*, Told> now;
    gather(screen_.window(), now);
    std::swap(now, told_);
    const std::map<const QWidget*, Told>& before = now;
    for (const auto& [widget, old] : before) {
        const auto still = told_.find(widget);
        if (old.widget != nullptr && (still == told_.end() || still->second.above != old.above)) {
            tellOf(*old.widget, QAccessible::ObjectDestroyed);
        }
    }
    for (const auto& [widget, shown] : told_) {
        const auto known = before.find(widget);
        if (known == before.end() || known->second.widget == nullptr || known->second.above != shown.above) {
            tellOf(*shown.widget, QAccessible::ObjectCreated);
            continue;
        }
        const Told& old = known->second;
        if (old.name != shown.name) {
            tellOf(*shown.widget, QAccessible::NameChanged);
        }
        if (old.description != shown.description) {
            tellOf(*shown.widget, QAccessible::DescriptionChanged);
        }
        if (old.value != shown.value) {
            QAccessibleValueChangeEvent event(shown.widget, shown.value);
            QAccessible::updateAccessibility(&event);
        }
        tellState(*shown.widget, old.state, shown.state);
        if (shown.state.expanded && !old.state.expanded) {
            tellEntries(*shown.widget);
        }
    }
}

} // namespace quillon
