#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication::setStyle(QStringLiteral("fusion"));
    QGuiApplication::setQuitOnLastWindowClosed(false);
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
