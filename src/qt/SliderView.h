#pragma once

#include <QPointer>

#include "qt/ControlView.h"

namespace quillon {

/// A horizontal slider with its marked range and, while a finger is on it, its value.
class SliderView final : public ControlView {
public:
    using ControlView::ControlView;
    ~SliderView() override;

    void sync() override;
    void setPressed(bool pressed) override;
    void reconsider() override;
    /// A finger there is on the handle.
    [[nodiscard]] bool isOnHandle(QPoint place) const;
    /// Where a drag by so many pixels from a value leads: fine near it, coarse further away.
    [[nodiscard]] std::int32_t dragged(std::int32_t from, int pixels) const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    class Bubble;

    void showBubble();
    [[nodiscard]] double across(std::int32_t value) const;
    /// It can be dragged, and something comes of it.
    [[nodiscard]] bool isAlive() const;

    bool shownAlive_ = false;
    QPointer<Bubble> bubble_; ///< lies on the window, which may take it away
};

} // namespace quillon
