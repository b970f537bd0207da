#pragma once

#include <array>
#include <map>
#include <vector>

#include <QWidget>

#include "console/ConsoleTexts.h"
#include "qt/Look.h"
#include "qt/WindowKey.h"
#include "ui/Control.h"
#include "ui/Input.h"

namespace quillon {

class Screen;

/// A key of the keypad: a digit, the one that erases, or the one that ends it.
class PadKey final : public WindowKey {
public:
    PadKey(int code, const ConsoleTexts& texts, QWidget* pad);

    static constexpr int kErase = 10;
    static constexpr int kDone = 11;

    [[nodiscard]] int code() const { return code_; }
    [[nodiscard]] QString name() const override;
    [[nodiscard]] Words words() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int code_;
    const ConsoleTexts& texts_;
};

/// Digits for a finger, beside a box that was touched. It is the window's and no control; what it types comes
/// to the box as from a keyboard. A finger reaches it through InputRouter.
class Keypad final : public QWidget {
public:
    Keypad(Screen& screen, const Input& input, const ConsoleTexts& texts);

    /// For a box of one line that takes text. Says whether it was not open for it before.
    bool openFor(const Control& box);
    void close();
    /// Empty while it is closed.
    [[nodiscard]] const Control* box() const { return box_; }
    /// Goes when its box cannot be reached any more, and keeps clear of it where it has moved.
    void settle();

    // Places are of the window.
    [[nodiscard]] bool covers(QPoint place) const;
    void press(int finger, QPoint place);
    /// Says whether the finger was on it.
    bool release(int finger, QPoint place);
    [[nodiscard]] bool holds(int finger) const { return held_.contains(finger); }
    void letGoOfAll();

    [[nodiscard]] const std::array<PadKey*, 12>& keys() const { return keys_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] PadKey* keyAt(QPoint place) const;
    void act(const PadKey& key);
    /// Takes the size that this edge of a key gives, at the place where it covers the least. Returns how much
    /// that is.
    double place(int edge);
    void layOut(const QRect& place, int edge);

    Screen& screen_;
    const Input& input_;
    std::array<PadKey*, 12> keys_{}; ///< row by row
    std::map<int, PadKey*> held_;    ///< by finger; empty where it came down between the keys
    const Control* box_ = nullptr;
    QRect besideOf_; ///< the box, where the pad was placed for it
    QSize within_;   ///< the window then
};

} // namespace quillon
