#pragma once

#include <tuple>

#include <QElapsedTimer>
#include <QTimer>

#include "qt/ControlView.h"
#include "runtime/Clock.h"

namespace quillon {

/// A key, or a lamp. What state it is in shows in its shape as well as in its colour.
class KeyView final : public ControlView {
public:
    KeyView(Control& control, QWidget* parent, const Indicators* indicators = nullptr);

    [[nodiscard]] std::optional<Words> words() const override;

    void sync() override;
    void reconsider() override;
    void setPressed(bool pressed) override;
    /// A lamp that is lit stays so long enough to be seen.
    void keepLit();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] bool isOn() const;
    /// It closes the screen of its own that is open.
    [[nodiscard]] bool isWayBack() const;
    /// Whether it is lit was never reported.
    [[nodiscard]] bool isUnknown() const;
    /// There is something to see of it.
    [[nodiscard]] bool isThere() const;
    /// A lamp that was lit a moment ago, too shortly to be seen.
    [[nodiscard]] bool isHeldLit() const;
    /// A press comes to nothing.
    [[nodiscard]] bool isKeptBack() const;
    [[nodiscard]] bool isAlarm() const;
    /// It can be pressed and does something.
    [[nodiscard]] bool isAlive() const;
    /// The sign beside its text; empty for none.
    [[nodiscard]] std::string_view sign() const;
    [[nodiscard]] QRect signPlace() const;
    /// On a narrow key the lock is in a corner, and its content keeps its place.
    [[nodiscard]] bool hasCornerLock() const;
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
    void paintUnknown(QPainter& painter) const;
    /// It fills while it is held, and is full when it has been held long enough.
    void paintHold(QPainter& painter) const;

    /// Kept back, shut off, the way back, and unknown, as it was painted last.
    std::tuple<bool, bool, bool, bool> lookedAt_{false, false, false, false};
    QElapsedTimer held_; ///< since a finger is on it
    QTimer holdShown_;
    Milliseconds litAt_ = 0;
    QColor lit_; ///< of a lamp that was lit a moment ago
};

} // namespace quillon
