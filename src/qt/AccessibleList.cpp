#include "qt/AccessibleList.h"

#include <algorithm>

#include <QCoreApplication>
#include <QMouseEvent>
#include <QPointer>
#include <QTimer>

#include "qt/Convert.h"
#include "qt/ListView.h"

namespace quillon {

namespace {

/// The open entries; empty while the list is closed.
QWidget* popupOf(const ControlView* view) {
    const auto* list = dynamic_cast<const ListView*>(view);
    return list == nullptr || !list->isVisible() ? nullptr : list->popup();
}

/// One entry. Pressed, it is taken as by a finger on it.
class Entry final : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    Entry(ControlView& list, int index) : list_(&list), index_(index) {}

    [[nodiscard]] bool isValid() const override {
        return popupOf(list_) != nullptr && index_ < static_cast<int>(list_->control().items().size());
    }
    [[nodiscard]] QObject* object() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(list_.data());
    }
    [[nodiscard]] QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }

    [[nodiscard]] QString text(QAccessible::Text what) const override {
        if (what != QAccessible::Name || !isValid()) {
            return {};
        }
        const Control& list = list_->control();
        return toQt(list.onScreen(list.items()[static_cast<std::size_t>(index_)]));
    }
    void setText(QAccessible::Text /*what*/, const QString& /*text*/) override {}
    [[nodiscard]] QRect rect() const override {
        return isValid() ? inPopup().translated(popupOf(list_)->pos()) : QRect();
    }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::ListItem; }
    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state;
        state.invalid = !isValid();
        state.invisible = !isValid();
        state.selectable = true;
        state.selected = isValid() && list_->control().listIndex() == index_;
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }
    [[nodiscard]] QStringList actionNames() const override { return {pressAction()}; }
    void doAction(const QString& action) override {
        if (action != pressAction() || !isValid()) {
            return;
        }
        QWidget* popup = popupOf(list_);
        QTimer::singleShot(1, popup, [popup, at = QPointF(inPopup().center())] {
            QMouseEvent up(QEvent::MouseButtonRelease, at, popup->mapToGlobal(at), Qt::LeftButton, {}, {});
            QCoreApplication::sendEvent(popup, &up);
        });
    }
    [[nodiscard]] QStringList keyBindingsForAction(const QString& /*action*/) const override { return {}; }

private:
    [[nodiscard]] QRect inPopup() const {
        const int count = static_cast<int>(list_->control().items().size());
        const int height = popupOf(list_)->height() / std::max(1, count);
        return {0, index_ * height, popupOf(list_)->width(), height};
    }

    QPointer<ControlView> list_;
    int index_;
};

} // namespace

ListEntries::~ListEntries() {
    for (const QAccessible::Id id : made_) {
        QAccessible::deleteAccessibleInterface(id);
    }
}

int ListEntries::count() const {
    return popupOf(&view_) == nullptr ? 0 : static_cast<int>(view_.control().items().size());
}

QAccessibleInterface* ListEntries::at(int index) const {
    if (index < 0 || index >= count()) {
        return nullptr;
    }
    while (static_cast<int>(made_.size()) <= index) {
        const auto next = static_cast<int>(made_.size());
        made_.push_back(QAccessible::registerAccessibleInterface(new Entry(view_, next)));
    }
    return QAccessible::accessibleInterface(made_[static_cast<std::size_t>(index)]);
}

int ListEntries::indexOf(const QAccessibleInterface* entry) const {
    for (int i = 0; i < count(); ++i) {
        if (at(i) == entry) {
            return i;
        }
    }
    return -1;
}

} // namespace quillon
