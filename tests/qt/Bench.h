#pragma once

#include <functional>
#include <memory>

#include <QApplication>
#include <QDeadlineTimer>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTimer>
#include <QWindow>
#include <gmock/gmock.h>

#include "qt/ControlView.h"
#include "qt/Convert.h"
#include "qt/Screen.h"

namespace quillon {

/// Lets the event loop run until something holds; says whether it came to hold.
inline bool waitFor(const std::function<bool()>& holds, int patience = 3000) {
    const QDeadlineTimer end(patience);
    QTimer waker; // the loop sleeps between looks, as it does in the program
    waker.start(5);
    while (!holds() && !end.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return holds();
}

inline void turn() {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

/// Lets the event loop run for so long, and until the timers of that time have fired, however busy the PC is.
inline void rest(int ms) {
    bool over = false;
    QTimer::singleShot(ms, Qt::PreciseTimer, qApp, [&over] { over = true; });
    waitFor([&over] { return over; }, ms + 5000);
    turn(); // what the last of them have begun
    turn();
}

/// A form in a window, and a hand with which to work on it.
class WindowTest : public testing::Test {
protected:
    WindowTest() {
        form.setSink(&screen);
        form.setPlace({0, 0, 6000, 4500});
        turn();
    }

    Control& add(Kind kind, std::string_view name, const Place& place, Control* container = nullptr) {
        Control& control = form.add(kind, name, std::nullopt, container);
        control.setPlace(place);
        return control;
    }

    /// Notes what happens to a control, in order.
    void record(Control& control) {
        const auto note = [this, name = control.name()](const char* what) {
            return [this, text = name + " " + what + ", "] { log += text; };
        };
        control.on = {note("press"),   note("release"), note("click"),
                      note("abandon"), note("cancel"),  note("change")};
    }

    [[nodiscard]] std::string takeLog() { return std::exchange(log, {}); }

    void mouse(QEvent::Type type, QPoint place) {
        const QPointF at(place);
        QMouseEvent event(type, at, at, at, type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(screen.window().windowHandle(), &event);
    }

    void tap(QPoint place) {
        mouse(QEvent::MouseButtonPress, place);
        mouse(QEvent::MouseButtonRelease, place);
    }

    void key(QEvent::Type type, int code, bool repeat = false) {
        QKeyEvent event(type, code, Qt::NoModifier, {}, repeat);
        QCoreApplication::sendEvent(screen.window().windowHandle(), &event);
    }

    void strike(int code) {
        key(QEvent::KeyPress, code);
        key(QEvent::KeyRelease, code);
    }

    VirtualClock clock;
    Schedule schedule{clock};
    ControlHost form{Kind::Form, "frmMain", schedule};
    Input input;
    int closeRequests = 0;
    Place resized;
    std::string log;
    const FormWindow::Requests requests{[this](Twips width, Twips height) {
                                            resized = {0, 0, width, height};
                                        },
                                        [this] { ++closeRequests; }};
    Screen screen{form, input, requests};
};

} // namespace quillon
