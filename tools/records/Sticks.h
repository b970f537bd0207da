#pragma once

#include <vector>

#include <QString>

namespace quillon {

/// A disk that somebody has plugged in.
struct Stick {
    QString name;
    QString path;
    qint64 free = 0; ///< bytes

    bool operator==(const Stick&) const = default;
};

/// Those that are mounted and can be written.
[[nodiscard]] std::vector<Stick> mountedSticks();

} // namespace quillon
