#include "qt/WindowKey.h"

#include <utility>

#include <QAccessibleWidget>
#include <QPainter>

#include "qt/AccessibilityNotifier.h"
#include "qt/AccessibleNode.h"
#include "qt/Look.h"

namespace quillon {

namespace {

class WindowKeyNode final : public QAccessibleWidget {
public:
    explicit WindowKeyNode(WindowKey& key) : QAccessibleWidget(&key, QAccessible::Button), key_(key) {}

    [[nodiscard]] QString text(QAccessible::Text what) const override {
        return what == QAccessible::Name ? key_.name() : QString();
    }
    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.pressed = key_.pressed();
        return state;
    }
    [[nodiscard]] QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(listedAbove(key_));
    }
    [[nodiscard]] QStringList actionNames() const override { return {pressAction()}; }
    void doAction(const QString& action) override {
        AccessibilityNotifier* news = AccessibilityNotifier::of(key_);
        if (action == pressAction() && news != nullptr) {
            news->tap(key_);
        }
    }

private:
    WindowKey& key_;
};

} // namespace

WindowKey::WindowKey(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::NoFocus);
}

void WindowKey::setPressed(bool pressed) {
    if (std::exchange(pressed_, pressed) != pressed) {
        update();
    }
}

void WindowKey::paintFace(QPainter& painter, bool alive) const {
    const QRectF place(rect());
    if (!alive) {
        paintPlate(painter, place.adjusted(0, 0, 0, -2), QColor::fromRgb(kSurface),
                   QColor::fromRgb(kFaintEdge), 1);
        return;
    }
    paintPlate(painter, place, QColor::fromRgb(pressed_ ? kStrongEdge : kEdge), Qt::transparent, 0);
    paintPlate(painter, place.adjusted(1, pressed_ ? 3 : 1, -1, pressed_ ? -1 : -3),
               QColor::fromRgb(pressed_ ? kPressedFace : kFace), Qt::transparent, 0, 3);
}

QAccessibleInterface* accessibleOf(WindowKey& key) {
    return new WindowKeyNode(key);
}

} // namespace quillon
