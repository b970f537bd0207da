#include "Sticks.h"

#include <algorithm>

#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>

namespace quillon {

namespace {

/// By its place, or since the system calls the disk, or the one that it is a part of, removable.
bool isStick(const QStorageInfo& volume) {
    const QString path = volume.rootPath();
    if (path.startsWith(QStringLiteral("/media/")) || path.startsWith(QStringLiteral("/run/media/"))) {
        return true;
    }
    const QFileInfo device(QFileInfo(QString::fromLocal8Bit(volume.device())).canonicalFilePath());
    const QString block = QStringLiteral("/sys/class/block/") + device.fileName();
    for (const QString& flag : {QStringLiteral("/removable"), QStringLiteral("/../removable")}) {
        QFile file(QFileInfo(block).canonicalFilePath() + flag);
        if (volume.device().startsWith("/dev/") && file.open(QIODevice::ReadOnly) && file.read(1) == "1") {
            return true;
        }
    }
    return false;
}

} // namespace

std::vector<Stick> mountedSticks() {
    std::vector<Stick> found;
    for (const QStorageInfo& volume : QStorageInfo::mountedVolumes()) {
        if (volume.isValid() && volume.isReady() && !volume.isReadOnly() && !volume.isRoot() &&
            isStick(volume)) {
            found.push_back({volume.displayName(), volume.rootPath(), volume.bytesAvailable()});
            if (found.back().name == found.back().path) {
                found.back().name = QFileInfo(found.back().path).fileName();
            }
        }
    }
    std::ranges::sort(found, {}, &Stick::path);
    return found;
}

} // namespace quillon
