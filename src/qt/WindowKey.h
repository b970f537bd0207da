#pragma once

#include <QWidget>

class QAccessibleInterface;

namespace quillon {

/// A key that is the window's own and no control. A finger reaches it through InputRouter, a screen reader as
/// a button.
class WindowKey : public QWidget {
public:
    explicit WindowKey(QWidget* parent);

    /// What a screen reader calls it.
    [[nodiscard]] virtual QString name() const = 0;
    void setPressed(bool pressed);
    [[nodiscard]] bool pressed() const { return pressed_; }

protected:
    /// The key under what is on it; one that is not alive lies flat.
    void paintFace(QPainter& painter, bool alive = true) const;

private:
    bool pressed_ = false;
};

/// The key as a screen reader finds it.
[[nodiscard]] QAccessibleInterface* accessibleOf(WindowKey& key);

} // namespace quillon
