#pragma once

#include <QPointer>
#include <QRect>
#include <QWidget>

#include <vector>

class QAccessibleInterface;

namespace quillon {

class ControlView;

/// From here on whoever asks for the screen's content gets what is to be seen: keys, values and texts by name
/// and role, and what they lie on where that has a name. To be called before there is a window.
void installAccessible();

/// Where the view can be seen and touched, in pixels of the window; empty for one that is hidden or covered.
[[nodiscard]] QRect seenPlace(const ControlView& view);

/// All that is listed directly below the widget, from the back to the front.
[[nodiscard]] std::vector<QWidget*> listedBelow(const QWidget& widget);

/// What the widget is listed below; empty for the window.
[[nodiscard]] QWidget* listedAbove(const QWidget& widget);

/// The view that is listed as this widget: itself, or the text box around an editor.
[[nodiscard]] ControlView* viewOf(QWidget* widget);

} // namespace quillon
