#pragma once

#include <functional>

#include "qt/SurfaceViews.h"

namespace quillon {

/// The one window. Its client area is as large as the form; the operator may drag it to another size and may
/// ask to close it, and the application decides about both.
class FormWindow final : public SurfaceView {
public:
    struct Requests {
        std::function<void(Twips width, Twips height)> resize;
        std::function<void()> close;
    };

    FormWindow(Control& form, Requests requests);

    /// Below it letters would be lower than 8 pixels. It leaves room for the window of a screen of 640 x 480.
    static constexpr QSize kSmallest{620, 456};
    /// Whoever sizes the window, it is not made smaller than that any more.
    void setReadable() { setMinimumSize(kSmallest); }

    void sync() override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    /// Asks for the size that the window has, where it is not the form's.
    void tellSize();

    Requests requests_;
    bool placed_ = false;
};

} // namespace quillon
