#pragma once

#include <QRect>
#include <QSize>
#include <QString>

namespace desk {

/// Where the desk stands on a screen, frame and all, and how large the console beside it can be.
struct Places {
    QRect desk;
    QSize console;
};

/// The console stands at the left and gets two thirds, or what it needs; the desk stands at the right.
[[nodiscard]] Places placesOn(QRect screen, QSize smallest);

/// The Quillon.ini of a console beside the desk: the device that it opens, and its size, if that is given.
[[nodiscard]] QString consoleIni(const QString& device, QSize size);

} // namespace desk
