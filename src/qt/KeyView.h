#pragma once

#include "qt/ControlView.h"

namespace quillon {

/// A key, or a lamp. What state it is in shows in its shape as well as in its colour.
class KeyView final : public ControlView {
public:
    using ControlView::ControlView;

    [[nodiscard]] std::optional<Words> words() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] bool isOn() const;
    [[nodiscard]] bool isAlarm() const;
    /// It can be pressed and does something.
    [[nodiscard]] bool isAlive() const;
    /// The sign beside its text; empty for none.
    [[nodiscard]] std::string_view sign() const;
    [[nodiscard]] QRect signPlace() const;
    /// The colour that its content stands on.
    [[nodiscard]] QColor face() const;
    [[nodiscard]] QColor ink() const;
    [[nodiscard]] int barHeight() const;
    /// Where its text or picture goes, the same in every state.
    [[nodiscard]] QRect contentPlace() const;
    void paintKey(QPainter& painter) const;
    void paintBar(QPainter& painter, const QColor& colour) const;
    void paintLamp(QPainter& painter) const;
    void paintContent(QPainter& painter) const;
    void paintPending(QPainter& painter) const;
};

} // namespace quillon
