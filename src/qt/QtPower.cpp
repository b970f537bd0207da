#include "qt/QtPower.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <QDBusConnection>
#include <QDBusMessage>
#endif

namespace quillon {

#ifdef _WIN32

void QtPower::exitWindows(bool restart, bool force) {
    HANDLE token = nullptr;
    if (OpenProcessToken(GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES | TOKEN_QUERY, &token) != 0) {
        TOKEN_PRIVILEGES privileges{};
        privileges.PrivilegeCount = 1;
        privileges.Privileges[0].Attributes = SE_PRIVILEGE_ENABLED;
        LookupPrivilegeValueA(nullptr, "SeShutdownPrivilege", &privileges.Privileges[0].Luid);
        AdjustTokenPrivileges(token, FALSE, &privileges, 0, nullptr, nullptr);
        CloseHandle(token);
    }
    constexpr UINT kForce = 4;
    ExitWindowsEx((restart ? EWX_SHUTDOWN | EWX_REBOOT : EWX_SHUTDOWN) | (force ? kForce : 0U), 0xFFFFFFFF);
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
