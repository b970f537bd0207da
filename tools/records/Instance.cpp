#include "Instance.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QStandardPaths>
#include <QThread>

namespace quillon {

namespace {

constexpr int kPatience = 3000; // ms; the first may be starting

/// A folder that is this user's alone.
QString ownFolder() {
    const QString runtime = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    return (runtime.isEmpty() ? QDir::tempPath() : runtime) + QStringLiteral("/quillon-records");
}

} // namespace

Instance::Instance() : place_(ownFolder()), lock_(place_ + QStringLiteral("/lock")) {
    QDir().mkpath(place_);
    QFile::setPermissions(place_, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    lock_.setStaleLockTime(0); // as long as its process lives
    first_ = lock_.tryLock(0);
    if (first_) {
        serve();
    }
}

void Instance::serve() {
    watcher_.addPath(place_);
    QObject::connect(&watcher_, &QFileSystemWatcher::directoryChanged, &watcher_, [this] { take(); });
    // What was asked for meanwhile, as soon as there is somebody to hear it.
    QMetaObject::invokeMethod(
        &watcher_, [this] { take(); }, Qt::QueuedConnection);
}

void Instance::take() {
    QFile asked(place_ + QStringLiteral("/asked"));
    if (!asked.open(QIODevice::ReadOnly)) {
        return;
    }
    const QString folder = QString::fromUtf8(asked.readAll());
    asked.remove();
    if (onAsked) {
        onAsked(folder);
    }
}

bool Instance::ask(const QString& folder) const {
    const QString name = place_ + QStringLiteral("/asked");
    QSaveFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(folder.toUtf8()) < 0 || !file.commit()) {
        return false;
    }
    for (QDeadlineTimer end(kPatience); QFile::exists(name); QThread::msleep(20)) {
        if (end.hasExpired()) {
            QFile::remove(name);
            return false;
        }
    }
    return true;
}

} // namespace quillon
