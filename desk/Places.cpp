#include "desk/Places.h"

#include <algorithm>

#include <QFile>
#include <QStringList>

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

bool writeConsoleSize(const QString& file, QSize size) {
    QFile ini(file);
    if (!ini.open(QIODevice::ReadWrite | QIODevice::Text)) {
        return false;
    }
    QStringList lines = QString::fromLatin1(ini.readAll()).split(QLatin1Char('\n'));
    lines.removeIf([](const QString& line) {
        return line.startsWith(QLatin1String("Width=")) || line.startsWith(QLatin1String("Height="));
    });
    const auto section = lines.indexOf(QStringLiteral("[CONFIG]"));
    if (section < 0) {
        lines.prepend(QStringLiteral("[CONFIG]"));
    }
    lines.insert(
        std::max<qsizetype>(section, 0) + 1,
        QStringLiteral("Width=%1\nHeight=%2").arg(size.width() * kTwips).arg(size.height() * kTwips));
    return ini.resize(0) && ini.write(lines.join(QLatin1Char('\n')).toLatin1()) >= 0;
}

} // namespace desk
