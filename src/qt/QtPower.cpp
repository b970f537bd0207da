#include "qt/QtPower.h"

#ifdef _WIN32
#include "runtime/WindowsPower.h"
#else
#include <QDBusConnection>
#include <QDBusMessage>

#include "qt/Convert.h"
#endif

namespace quillon {

#ifdef _WIN32

Refusal QtPower::exitWindows(bool restart, bool force) {
    return WindowsPower().exitWindows(restart, force);
}

#else

namespace {

constexpr int kTimeout = 5000; // ms

} // namespace

Refusal QtPower::exitWindows(bool restart, bool /*force*/) {
    // The session manager closes what is open by itself, unless it misses a right of this account. It says
    // so at once, as it is not to ask anybody.
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
        QStringLiteral("org.freedesktop.login1.Manager"),
        restart ? QStringLiteral("Reboot") : QStringLiteral("PowerOff"));
    call << false;
    const QDBusMessage reply = QDBusConnection::systemBus().call(call, QDBus::Block, kTimeout);
    if (reply.type() == QDBusMessage::ReplyMessage) {
        return std::nullopt;
    }
    const QString why = reply.errorMessage();
    return why.isEmpty() ? "no answer" : fromQt(why);
}

#endif

} // namespace quillon
