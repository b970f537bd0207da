#pragma once

#include <functional>

#include "qt/SurfaceViews.h"

namespace quillon {

/// The one window. Its client area holds the form, and below it a foot that is the window's own; the operator
/// may drag it to another size and may ask to close it, and the application decides about both.
class FormWindow final : public SurfaceView {
public:
    struct Requests {
        std::function<void(Twips width, Twips height)> resize;
        std::function<void()> close;
    };

    FormWindow(Control& form, Requests requests, bool hasFoot);

    /// What a window of this height leaves to the form, and the height of the foot below.
    [[nodiscard]] static int formHeight(int window);
    [[nodiscard]] QRect foot() const;

    /// Below it words would need a font of less than 8 pixels. It fits on a screen of 640 x 480 with the
    /// window's frame.
    static constexpr QSize kSmallest{620, 456};
    /// Whoever sizes the window, it is not made smaller than that any more; and it fits on a screen with the
    /// frame that it gets there, if need be by being smaller.
    void setReadable() {
        setMinimumSize(kSmallest);
        fits_ = true;
    }

    void sync() override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    /// Asks for the size that the window has, where it is not the form's.
    void tellSize();

    /// What is left to the form.
    [[nodiscard]] QSize formSize() const;
    /// The size of a window around such a form.
    [[nodiscard]] QSize sizeFor(QSize form) const;
    /// The window manager's frame may have made it larger than the screen.
    void fitScreen();

    Requests requests_;
    bool hasFoot_;
    bool fits_ = false;
    bool placed_ = false;
};

} // namespace quillon
