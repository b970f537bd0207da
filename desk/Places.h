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

/// Sets the size in the section CONFIG of a Quillon.ini. False: the file cannot be written.
[[nodiscard]] bool writeConsoleSize(const QString& file, QSize size);

} // namespace desk
