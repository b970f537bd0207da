#include "Instance.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QThread>

namespace quillon {

namespace {

constexpr int kPatience = 3000; // ms; the first may be starting

/// A folder that is this user's alone.
QString ownFolder() {
    const QString runtime = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    return runtime.isEmpty() ? QDir::tempPath() : runtime;
}

} // namespace

Instance::Instance()
    : name_(ownFolder() + QStringLiteral("/quillon-records")), lock_(name_ + QStringLiteral(".lock")) {
    lock_.setStaleLockTime(0); // as long as its process lives
    first_ = lock_.tryLock(0);
    if (first_) {
        serve();
    }
}

void Instance::serve() {
    QLocalServer::removeServer(name_);
    server_.setSocketOptions(QLocalServer::UserAccessOption);
    server_.listen(name_);
    QObject::connect(&server_, &QLocalServer::newConnection, &server_, [this] {
        while (QLocalSocket* socket = server_.nextPendingConnection()) {
            QObject::connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
            const auto read = [this, socket] {
                while (socket->canReadLine()) {
                    const QString folder = QString::fromUtf8(socket->readLine()).trimmed();
                    socket->write("ok\n");
                    socket->flush();
                    if (onAsked) {
                        onAsked(folder);
                    }
                }
            };
            QObject::connect(socket, &QLocalSocket::readyRead, socket, read);
            read();
        }
    });
}

bool Instance::ask(const QString& folder) const {
    QLocalSocket socket;
    for (QDeadlineTimer end(kPatience); !end.hasExpired(); QThread::msleep(50)) {
        socket.connectToServer(name_);
        if (socket.waitForConnected(kPatience)) {
            socket.write(folder.toUtf8() + "\n");
            return socket.waitForReadyRead(kPatience);
        }
    }
    return false;
}

} // namespace quillon
