#include <QApplication>
#include <gtest/gtest.h>

/// What the window system keeps for each widget that a finger scrolls is its own.
extern "C" const char* __lsan_default_suppressions();  // NOLINT(bugprone-reserved-identifier)
extern "C" const char* __lsan_default_suppressions() { // NOLINT(bugprone-reserved-identifier)
    return "leak:QScroller::grabGesture\n";
}

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication::setQuitOnLastWindowClosed(false);
    const QApplication application(argc, argv);
    QApplication::setStyle(
        QStringLiteral("fusion")); // behind the application, which then owns it: a test sets another
    return RUN_ALL_TESTS();
}
