#pragma once

#include "qt/ControlView.h"

namespace quillon {

/// A key, or a lamp where the picture is one of the exposure signs. What state it is in shows in its shape as
/// well as in its colour.
class KeyView final : public ControlView {
public:
    using ControlView::ControlView;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] bool isLamp() const;
    void paintKey(QPainter& painter) const;
    void paintLamp(QPainter& painter) const;
    void paintContent(QPainter& painter, const QRect& place, const QColor& ink, bool bold) const;
};

} // namespace quillon
