#include "runtime/WindowsPower.h"

#include <windows.h>

namespace quillon {

namespace {

/// Switches on the right to restart the PC, which an account has but does not use by default.
void allowShutdown() {
    HANDLE token = nullptr;
    if (OpenProcessToken(GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES | TOKEN_QUERY, &token) == 0) {
        return;
    }
    TOKEN_PRIVILEGES privileges{};
    privileges.PrivilegeCount = 1;
    privileges.Privileges[0].Attributes = SE_PRIVILEGE_ENABLED;
    LookupPrivilegeValueA(nullptr, "SeShutdownPrivilege", &privileges.Privileges[0].Luid);
    AdjustTokenPrivileges(token, FALSE, &privileges, 0, nullptr, nullptr);
    CloseHandle(token);
}

} // namespace

Refusal WindowsPower::exitWindows(bool restart, bool force) {
    allowShutdown();
    constexpr DWORD kNoReason = 0xFFFFFFFF;
    const UINT kind = restart ? EWX_SHUTDOWN | EWX_REBOOT : EWX_SHUTDOWN;
    if (ExitWindowsEx(kind | (force ? EWX_FORCE : 0U), kNoReason) != 0) {
        return std::nullopt;
    }
    return "Windows error " + std::to_string(GetLastError());
}

} // namespace quillon
