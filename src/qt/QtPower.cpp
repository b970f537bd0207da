#include "qt/QtPower.h"

#ifdef _WIN32
#include "runtime/WindowsPower.h"
#else
#include <QDBusConnection>
#include <QDBusMessage>
#endif

namespace quillon {

#ifdef _WIN32

void QtPower::exitWindows(bool restart, bool force) {
    WindowsPower().exitWindows(restart, force);
}

#else

void QtPower::exitWindows(bool restart, bool /*force*/) {
    // The session manager closes what is open by itself; it may ask for a right that this user lacks, and
    // then nothing happens, as with a refusal anywhere else.
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
        QStringLiteral("org.freedesktop.login1.Manager"),
        restart ? QStringLiteral("Reboot") : QStringLiteral("PowerOff"));
    call << false;
    QDBusConnection::systemBus().send(call);
}

#endif

} // namespace quillon
