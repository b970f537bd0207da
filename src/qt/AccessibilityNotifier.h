#pragma once

#include <map>

#include <QAccessible>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include "ui/Input.h"

namespace quillon {

class ControlView;
class Screen;

/// Stands between the screen and a screen reader: tells it what has changed, while there is one, and carries
/// out its presses. A press is made with the mouse on the window, so all rules for a finger hold.
class AccessibilityNotifier final : public QObject {
public:
    AccessibilityNotifier(Screen& screen, Input& input);

    /// That of the window which the widget is on; empty where there is none.
    [[nodiscard]] static AccessibilityNotifier* of(const QWidget& widget);

    /// Something may have changed.
    void look();

    /// A finger would reach it now.
    [[nodiscard]] bool reaches(const ControlView& view) const;

    // Each is done in a moment and not before it returns: a handler may open a box, and wait in it.
    void press(ControlView& view);
    void tap(QWidget& key);
    void slide(ControlView& view, int value);
    /// Replaces a part of a text box's text, as typed.
    void type(ControlView& view, int start, int length, const QString& text);

private:
    struct Told {
        QPointer<QWidget> widget;
        QPointer<QWidget> above;
        QString name;
        QString description;
        QVariant value;
        QAccessible::State state;
    };

    void tell();
    void gather(const QWidget& above, std::map<const QWidget*, Told>& found) const;

    Screen& screen_;
    Input& input_;
    QTimer soon_;
    std::map<const QWidget*, Told> told_;
};

} // namespace quillon
