#include "desk/Places.h"

#include <algorithm>

namespace desk {

namespace {

constexpr int kConsoleNeeds = 632;
constexpr int kWidest = 640;
constexpr int kTallest = 940;
constexpr QSize kFrame{4, 30}; // what a window manager puts around a window, about
constexpr int kTwips = 15;     // to a pixel

} // namespace

Places placesOn(QRect screen, QSize smallest) {
    const int third = screen.width() - std::max(kConsoleNeeds, screen.width() * 2 / 3);
    const int width = std::clamp(third, smallest.width(), kWidest);
    const int left = std::max(0, screen.width() - width);
    const QSize console = QSize(left, screen.height()) - kFrame;
    const int height = std::clamp(screen.height() - kFrame.height(), smallest.height(), kTallest);
    return {QRect(screen.left() + left, screen.top(), width, height), console};
}

QString consoleIni(const QString& device, QSize size) {
    QString text = QStringLiteral("[CONFIG]\nPORT=1\n");
    if (size.isValid()) {
        text +=
            QStringLiteral("Width=%1\nHeight=%2\n").arg(size.width() * kTwips).arg(size.height() * kTwips);
    }
    return text + QStringLiteral("\n[PORTS]\nCOM1=%1\n").arg(device);
}

} // namespace desk
