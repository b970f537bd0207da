#pragma once

#include <deque>
#include <functional>
#include <string>
#include <utility>

#include <QMessageBox>
#include <QPointer>

#include "runtime/Platform.h"

namespace quillon {

/// Screen, message boxes and the window's order among others.
class QtDesktop final : public Desktop {
public:
    /// The window that boxes belong to and that is put on top. Not owned.
    void setWindow(QWidget* window) { window_ = window; }
    /// The words of the buttons, asked for whenever a box opens.
    struct ButtonWords {
        std::string yes;
        std::string no;
        std::string ok;
    };
    /// F2 does this while a box stands, too.
    void setF2(std::function<void()> action) { f2_ = std::move(action); }
    void setButtonWords(std::function<ButtonWords()> words) { words_ = std::move(words); }

    [[nodiscard]] int screenWidth() const override;
    [[nodiscard]] int screenHeight() const override;
    [[nodiscard]] int twipsPerPixelX() const override;
    [[nodiscard]] int twipsPerPixelY() const override;
    void message(BoxKind kind, std::string_view title, std::string_view text) override;
    [[nodiscard]] bool ask(std::string_view title, std::string_view text) override;
    void setTopMost(bool topMost) override;
    void beep() override;

private:
    int run(QMessageBox::Icon icon, std::string_view title, std::string_view text,
            QMessageBox::StandardButtons buttons);

    QPointer<QWidget> window_;
    std::function<ButtonWords()> words_;
    std::function<void()> f2_;
    std::deque<QMessageBox*> boxes_; // the first is up, the others wait for it
    bool topMost_ = false;
};

} // namespace quillon
