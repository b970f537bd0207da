#include "qt/FormWindow.h"

#include <QCloseEvent>

#include "qt/AccessibleNode.h"
#include "qt/Convert.h"

namespace quillon {

FormWindow::FormWindow(Control& form, Requests requests)
    : SurfaceView(form, nullptr), requests_(std::move(requests)) {
    resize(toPixels(form.place()).size());
    installAccessible();
    winId(); // The platform's window exists from the start, so that input and window order can be tied to it.
}

void FormWindow::sync() {
    setWindowTitle(toQt(control().caption()));
    const QRect place = toPixels(control().place());
    if (size() != place.size()) {
        resize(place.size());
        tellSize(); // it may have a limit
    }
    setVisible(control().visible());
    update();
}

void FormWindow::resizeEvent(QResizeEvent* /*event*/) {
    if (isVisible()) {
        tellSize();
    }
}

void FormWindow::tellSize() {
    if (size() != toPixels(control().place()).size() && requests_.resize) {
        requests_.resize(toTwips(width()), toTwips(height()));
    }
}

void FormWindow::paintEvent(QPaintEvent* event) {
    if (!placed_) {
        // How wide the window manager's frame is shows only now; its title belongs on the screen as well.
        placed_ = true;
        move(toPixels(control().place()).topLeft());
    }
    SurfaceView::paintEvent(event);
}

void FormWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    if (requests_.close) {
        requests_.close();
    }
}

} // namespace quillon
