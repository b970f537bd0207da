// An empty window of Qt's: what start and memory of the console's are measured beside.

#include <QApplication>
#include <QWidget>

#include "lateness/StartupTrace.h"

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QWidget window;
    window.resize(1024, 768);
    const quillon::StartupTrace trace(window);
    window.show();
    return QApplication::exec();
}
