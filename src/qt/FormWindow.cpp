#include "qt/FormWindow.h"

#include <algorithm>

#include <QCloseEvent>
#include <QScreen>

#include "qt/AccessibleNode.h"
#include "qt/Convert.h"

namespace quillon {

namespace {

/// Of the form's height; enough for letters of 3 mm on a panel of 10 inches.
int footOf(int form) {
    return std::clamp(form / 20, 24, 44);
}

} // namespace

int FormWindow::formHeight(int window) {
    int form = std::max(1, window - footOf(window));
    while (form + 1 + footOf(form + 1) <= window) {
        ++form;
    }
    return form;
}

FormWindow::FormWindow(Control& form, Requests requests, bool hasFoot)
    : SurfaceView(form, nullptr), requests_(std::move(requests)), hasFoot_(hasFoot) {
    resize(sizeFor(toPixels(form.place()).size()));
    installAccessible();
    winId(); // The platform's window exists from the start, so that input and window order can be tied to it.
}

void FormWindow::sync() {
    setWindowTitle(toQt(control().caption()));
    const QSize content = toPixels(control().place()).size();
    if (formSize() != content) {
        resize(sizeFor(content));
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
    const QSize content = formSize();
    if (content != toPixels(control().place()).size() && requests_.resize) {
        requests_.resize(toTwips(content.width()), toTwips(content.height()));
    }
}

QSize FormWindow::sizeFor(QSize form) const {
    return {form.width(), form.height() + (hasFoot_ ? footOf(form.height()) : 0)};
}

QSize FormWindow::formSize() const {
    return hasFoot_ ? QSize(width(), formHeight(height())) : size();
}

QRect FormWindow::foot() const {
    const int top = formSize().height();
    return {0, top, width(), height() - top};
}

void FormWindow::fitScreen() {
    const QSize room = screen()->availableGeometry().size();
    const QSize frame = frameGeometry().size() - size();
    const QSize most = room - frame;
    if (!fits_) {
        return;
    }
    setMinimumSize(kSmallest.boundedTo(most)); // no part may lie outside of the screen
    if (width() > most.width() || height() > most.height()) {
        resize(size().boundedTo(most));
    }
}

void FormWindow::paintEvent(QPaintEvent* event) {
    if (!placed_) {
        // How wide the window manager's frame is shows only now; its title belongs on the screen as well.
        placed_ = true;
        fitScreen();
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
