#include "qt/AccessibleNode.h"

#include <algorithm>

#include <QAccessible>
#include <QAccessibleWidget>
#include <QRegion>

#include "qt/AccessibilityNotifier.h"
#include "qt/AccessibleList.h"
#include "qt/AccessibleText.h"
#include "qt/AccessibleWords.h"
#include "qt/ControlView.h"
#include "qt/Convert.h"
#include "qt/FormWindow.h"
#include "qt/Keypad.h"
#include "qt/ListView.h"
#include "qt/StatusBar.h"
#include "qt/SummaryView.h"

namespace quillon {

namespace {

bool holdsOthers(const Control& control) {
    return control.kind() == Kind::Form || control.kind() == Kind::User || control.kind() == Kind::Frame;
}

/// Whether the view is listed: a container without a name is not, nor is a label without text.
bool isNode(const ControlView& view) {
    return view.isVisible() &&
           (view.isWindow() || !accessibleName(view.control(), view.indicators()).isEmpty());
}

/// A menu whose keys are all disabled because the mode keys take their place.
bool isDeadMenu(const Control& control) {
    const std::vector<Control*>& all = control.stack();
    return control.kind() == Kind::Frame && !control.enabled() && !all.empty() &&
           std::all_of(all.begin(), all.end(), [](const Control* one) {
               return one->kind() == Kind::Button && !one->lamp() && !one->enabled();
           });
}

QRegion seen(const ControlView& view) {
    QRegion rest(view.rect());
    const QWidget* at = &view;
    for (; !at->isWindow(); at = at->parentWidget()) {
        // From here on in pixels of what it lies on.
        rest.translate(at->pos());
        const QWidget& background = *at->parentWidget();
        rest &= background.rect();
        const QObjectList& stack = background.children();
        for (qsizetype i = stack.indexOf(const_cast<QWidget*>(at)) + 1; i < stack.size() && !rest.isEmpty();
             ++i) {
            const auto* other = dynamic_cast<const ControlView*>(stack[i]);
            if (other != nullptr && other->isVisible() && other->control().kind() != Kind::Picture) {
                rest -= other->geometry();
            } else if (const auto* pad = dynamic_cast<const Keypad*>(stack[i]);
                       pad != nullptr && pad->isVisible()) {
                rest -= pad->geometry();
            }
        }
    }
    return rest;
}

template <typename View> QString allWords(const View& view) {
    QStringList all;
    for (const Words& words : view.words()) {
        if (!words.text.isEmpty()) {
            all << words.text.simplified();
        }
    }
    return all.join(QStringLiteral(", "));
}

/// What is written beside the controls; empty for anything else.
QString signWords(const QWidget& widget) {
    if (const auto* summary = dynamic_cast<const SummaryView*>(&widget)) {
        return allWords(*summary);
    }
    if (const auto* bar = dynamic_cast<const StatusBar*>(&widget)) {
        return toQtLines(bar->fields());
    }
    if (const auto* news = dynamic_cast<const NewsField*>(&widget)) {
        return allWords(*news);
    }
    if (const auto* key = dynamic_cast<const WindowKey*>(&widget)) {
        return key->name();
    }
    return {};
}

void collect(const QWidget& background, std::vector<QWidget*>& found) {
    for (QObject* child : background.children()) {
        auto* widget = qobject_cast<QWidget*>(child);
        if (widget == nullptr || !widget->isVisible() || widget->isWindow()) {
            continue;
        }
        auto* view = dynamic_cast<ControlView*>(widget);
        if (view == nullptr) {
            if (!signWords(*widget).isEmpty()) {
                found.push_back(widget);
            }
            collect(*widget, found); // the bar's news are an alert of their own
        } else if (isDeadMenu(view->control())) {
            continue;
        } else if (holdsOthers(view->control()) && !isNode(*view)) {
            collect(*view, found);
        } else if (isNode(*view) && !seen(*view).isEmpty()) {
            found.push_back(view->editor() != nullptr ? view->editor() : view);
        }
    }
}

/// What is written beside the controls, as one text.
class SignNode final : public QAccessibleWidget {
public:
    SignNode(QWidget* widget, QAccessible::Role role) : QAccessibleWidget(widget, role) {}

    [[nodiscard]] QString text(QAccessible::Text what) const override {
        return what == QAccessible::Name ? signWords(*widget()) : QString();
    }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(listedAbove(*widget()));
    }
    [[nodiscard]] QStringList actionNames() const override { return {}; }
};

/// A control. Queried only while its view is shown: a view that was removed has no control.
class ControlNode final : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    ControlNode(QWidget* widget, ControlView& view)
        : QAccessibleWidget(widget), view_(view), text_(view), entries_(view) {}

    [[nodiscard]] QString text(QAccessible::Text what) const override {
        if (!view_.isVisible()) {
            return {};
        }
        if (what == QAccessible::Name) {
            return view_.isWindow() ? view_.windowTitle()
                                    : accessibleName(view_.control(), view_.indicators());
        }
        if (what == QAccessible::Description) {
            return accessibleDescription(view_.control(), view_.indicators());
        }
        if (what != QAccessible::Value || !view_.control().has(Property::Text)) {
            return {};
        }
        // A list's entries are words of the screen, what a box holds is not.
        const std::string& value = view_.control().text();
        return toQtLines(isKind(Kind::List) ? view_.control().onScreen(value) : value);
    }

    [[nodiscard]] QAccessible::Role role() const override;
    [[nodiscard]] QAccessible::State state() const override;

    [[nodiscard]] int childCount() const override {
        return isKind(Kind::List) ? entries_.count() : static_cast<int>(below().size());
    }
    [[nodiscard]] QAccessibleInterface* child(int index) const override {
        if (isKind(Kind::List)) {
            return entries_.at(index);
        }
        const std::vector<QWidget*> all = below();
        const auto at = static_cast<std::size_t>(index);
        return index < 0 || at >= all.size() ? nullptr : QAccessible::queryAccessibleInterface(all[at]);
    }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override {
        if (isKind(Kind::List)) {
            return entries_.indexOf(child);
        }
        const std::vector<QWidget*> all = below();
        const auto at = child == nullptr ? all.end() : std::find(all.begin(), all.end(), child->object());
        return at == all.end() ? -1 : static_cast<int>(at - all.begin());
    }
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override {
        for (int i = childCount() - 1; i >= 0; --i) {
            QAccessibleInterface* one = child(i);
            if (one != nullptr && one->rect().contains(x, y)) {
                return one;
            }
        }
        return nullptr;
    }
    [[nodiscard]] QAccessibleInterface* parent() const override {
        QWidget* above = listedAbove(*widget());
        return above == nullptr ? QAccessibleWidget::parent() : QAccessible::queryAccessibleInterface(above);
    }

    /// None while the control cannot be reached, for example behind a panel or a message box.
    [[nodiscard]] QStringList actionNames() const override {
        const AccessibilityNotifier* news = AccessibilityNotifier::of(view_);
        return canBePressed() && news != nullptr && news->reaches(view_) ? QStringList{pressAction()}
                                                                         : QStringList();
    }
    void doAction(const QString& action) override {
        if (actionNames().contains(action)) {
            AccessibilityNotifier::of(view_)->press(view_);
        }
    }
    [[nodiscard]] QStringList keyBindingsForAction(const QString& /*action*/) const override { return {}; }

    void* interface_cast(QAccessible::InterfaceType type) override {
        switch (type) {
        case QAccessible::ActionInterface:
            return canBePressed() ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
        case QAccessible::ValueInterface:
            return isKind(Kind::Slider) ? static_cast<QAccessibleValueInterface*>(this) : nullptr;
        case QAccessible::TextInterface:
            return isKind(Kind::TextBox) ? static_cast<QAccessibleTextInterface*>(&text_) : nullptr;
        case QAccessible::EditableTextInterface:
            return isKind(Kind::TextBox) ? static_cast<QAccessibleEditableTextInterface*>(&text_) : nullptr;
        default:
            return nullptr;
        }
    }

    // The value interface, which only a slider has.
    [[nodiscard]] QVariant currentValue() const override { return view_.control().value(); }
    [[nodiscard]] QVariant maximumValue() const override { return view_.control().maximum(); }
    [[nodiscard]] QVariant minimumValue() const override { return 0; }
    [[nodiscard]] QVariant minimumStepSize() const override { return 1; }
    void setCurrentValue(const QVariant& value) override {
        if (AccessibilityNotifier* news = AccessibilityNotifier::of(view_)) {
            news->slide(view_, value.toInt());
        }
    }

private:
    [[nodiscard]] bool canBePressed() const {
        return (isKind(Kind::Button) && !view_.control().lamp()) || isKind(Kind::List);
    }
    [[nodiscard]] bool isKind(Kind kind) const { return view_.isVisible() && view_.control().kind() == kind; }
    [[nodiscard]] std::vector<QWidget*> below() const {
        return view_.isVisible() && holdsOthers(view_.control()) ? listedBelow(view_)
                                                                 : std::vector<QWidget*>();
    }

    ControlView& view_;
    TextAccess text_;
    ListEntries entries_;
};

QAccessible::Role roleOfKey(const Control& key) {
    switch (key.role()) {
    case Role::Toggle:
        return QAccessible::CheckBox;
    case Role::Choice:
        return QAccessible::RadioButton;
    default:
        return key.lamp() ? QAccessible::StaticText : QAccessible::PushButton;
    }
}

QAccessible::Role ControlNode::role() const {
    if (!view_.isVisible()) {
        return QAccessible::NoRole;
    }
    switch (view_.control().kind()) {
    case Kind::Form:
        return QAccessible::Window;
    case Kind::User:
    case Kind::Frame:
        return QAccessible::Grouping;
    case Kind::Button:
        return roleOfKey(view_.control());
    case Kind::TextBox:
        return QAccessible::EditableText;
    case Kind::List:
        return QAccessible::ComboBox;
    case Kind::Slider:
        return QAccessible::Slider;
    case Kind::Picture: // is listed for its words
    case Kind::Label:
    case Kind::Timer:
    case Kind::Images:
        break;
    }
    return QAccessible::StaticText;
}

QAccessible::State ControlNode::state() const {
    QAccessible::State state = QAccessibleWidget::state();
    if (!view_.isVisible()) {
        return state;
    }
    const Control& control = view_.control();
    const bool key = control.kind() == Kind::Button && !control.lamp();
    if (key || control.has(Property::Text) || control.kind() == Kind::Slider) {
        state.focusable = true;
        state.focused = view_.focusMark() || widget()->hasFocus();
    }
    state.pressed = key && view_.pressed();
    // Any other key is lit to draw the eye, flashing for one, and has no state.
    state.checkable = control.role() == Role::Toggle || control.role() == Role::Choice;
    state.checked = state.checkable && isLit(control);
    state.offscreen = seen(view_).isEmpty();
    if (control.kind() == Kind::TextBox) {
        state.editable = !control.readOnly();
        state.readOnly = control.readOnly();
        state.multiLine = control.multiLine();
    }
    if (control.kind() == Kind::List) {
        state.expandable = true;
        state.expanded = entries_.count() > 0;
    }
    return state;
}

QAccessibleInterface* accessibleOf(const QString& /*className*/, QObject* object) {
    auto* widget = qobject_cast<QWidget*>(object);
    if (widget == nullptr) {
        return nullptr;
    }
    if (ControlView* view = viewOf(widget)) {
        return new ControlNode(widget, *view);
    }
    if (auto* key = dynamic_cast<WindowKey*>(widget)) {
        return accessibleOf(*key);
    }
    if (dynamic_cast<SummaryView*>(widget) != nullptr) {
        return new SignNode(widget, QAccessible::StaticText);
    }
    if (dynamic_cast<StatusBar*>(widget) != nullptr) {
        return new SignNode(widget, QAccessible::StatusBar);
    }
    return dynamic_cast<NewsField*>(widget) != nullptr ? new SignNode(widget, QAccessible::AlertMessage)
                                                       : nullptr;
}

} // namespace

void installAccessible() {
    QAccessible::installFactory(accessibleOf);
}

ControlView* viewOf(QWidget* widget) {
    if (auto* view = dynamic_cast<ControlView*>(widget)) {
        return view;
    }
    auto* around = widget == nullptr ? nullptr : dynamic_cast<ControlView*>(widget->parentWidget());
    return around != nullptr && around->editor() == widget ? around : nullptr;
}

QRect seenPlace(const ControlView& view) {
    QRect largest;
    if (view.isVisible()) {
        for (const QRect& part : seen(view)) {
            if (part.width() * part.height() > largest.width() * largest.height()) {
                largest = part;
            }
        }
    }
    return largest;
}

std::vector<QWidget*> listedBelow(const QWidget& widget) {
    std::vector<QWidget*> found;
    const auto* view = dynamic_cast<const ControlView*>(&widget);
    if (view != nullptr && holdsOthers(view->control())) {
        collect(widget, found);
    }
    return found;
}

QWidget* listedAbove(const QWidget& widget) {
    const ControlView* inside = viewOf(const_cast<QWidget*>(&widget));
    const QWidget* from = inside != nullptr ? inside : &widget;
    if (from->isWindow()) {
        return nullptr;
    }
    for (QWidget* at = from->parentWidget(); at != nullptr; at = at->parentWidget()) {
        const auto* view = dynamic_cast<const ControlView*>(at);
        if (at->isWindow() || (view != nullptr && isNode(*view))) {
            return at;
        }
    }
    return nullptr;
}

} // namespace quillon
