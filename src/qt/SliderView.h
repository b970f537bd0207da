#pragma once

#include "qt/ControlView.h"

namespace quillon {

/// A horizontal slider with its marked range and, while a finger is on it, its value.
class SliderView final : public ControlView {
public:
    using ControlView::ControlView;

    /// The value for a place on the widget.
    [[nodiscard]] std::int32_t valueAt(QPoint place) const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] double across(std::int32_t value) const;
};

} // namespace quillon
