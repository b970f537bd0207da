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

    void sync() override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    Requests requests_;
    bool placed_ = false;
};

} // namespace quillon
