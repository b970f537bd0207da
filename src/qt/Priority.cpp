#include "qt/Priority.h"

#ifdef __linux__
#include <algorithm>
#include <csignal>

#include <sched.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDir>
#include <QFile>
#endif

namespace quillon {

#ifdef __linux__

namespace {

constexpr int kAfterStart = 500;    // ms; starting uses much time, and no frame is under way yet
constexpr int kAgain = 5000;        // ms
constexpr int kLowest = 1;          // of the real-time priorities
constexpr rlim_t kBudget = 100'000; // microseconds of work without a pause
constexpr rlim_t kEnd = 200'000;    // the system ends the process then; RealtimeKit wants no more

volatile std::sig_atomic_t fallen = 1;
pid_t scheduled = 0; // the thread that the event loop runs in
pid_t reading = 0;   // the thread that reads from the display, 0 without one

/// What the thread starts does not inherit it.
bool set(pid_t thread, int policy) {
    sched_param parameter{};
    parameter.sched_priority = policy == SCHED_OTHER ? 0 : kLowest;
    return ::sched_setscheduler(thread, policy | SCHED_RESET_ON_FORK, &parameter) == 0;
}

/// The thread that reads what the display answers; 0 where there is none. Painting waits for it, so it needs
/// the same priority, and Qt hands out no more of it than its name.
pid_t displayReader() {
    for (const QString& thread :
         QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile name(QStringLiteral("/proc/self/task/%1/comm").arg(thread));
        if (name.open(QIODevice::ReadOnly) && name.readAll().startsWith("QXcbEventQueue")) {
            return static_cast<pid_t>(thread.toInt());
        }
    }
    return 0;
}

void worksTooLong(int) {
    set(scheduled, SCHED_OTHER);
    if (reading != 0) {
        set(reading, SCHED_OTHER);
    }
    fallen = 1;
}

/// An endless loop must not block the PC. To be set again after each signal, with which the system raises the
/// limit by a second, beyond the end.
bool limitWork() {
    struct sigaction action {};
    action.sa_handler = worksTooLong;
    action.sa_flags = SA_RESTART;
    rlimit limit{};
    if (::getrlimit(RLIMIT_RTTIME, &limit) != 0 || ::sigaction(SIGXCPU, &action, nullptr) != 0) {
        return false;
    }
    limit = {std::min(kBudget, limit.rlim_max), std::min(kEnd, limit.rlim_max)};
    return ::setrlimit(RLIMIT_RTTIME, &limit) == 0;
}

void askRealtimeKit(pid_t thread) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.RealtimeKit1"), QStringLiteral("/org/freedesktop/RealtimeKit1"),
        QStringLiteral("org.freedesktop.RealtimeKit1"), QStringLiteral("MakeThreadRealtime"));
    call << QVariant::fromValue<qulonglong>(static_cast<qulonglong>(thread))
         << QVariant::fromValue<uint>(kLowest);
    QDBusConnection::systemBus().send(call); // the answer is of no use
}

} // namespace

Priority::Priority() {
    if (qgetenv("QUILLON_PRIORITY") == "no") {
        return;
    }
    scheduled = static_cast<pid_t>(::syscall(SYS_gettid));
    QTimer::singleShot(kAfterStart, this, [this] { ask(); });
    connect(&again_, &QTimer::timeout, this, [this] { ask(); });
    again_.start(kAgain);
}

void Priority::ask() {
    if (fallen == 0) {
        return;
    }
    fallen = 0;
    if (!limitWork()) {
        return;
    }
    if (!set(scheduled, SCHED_FIFO)) {
        askRealtimeKit(scheduled);
    }
    reading = displayReader();
    if (reading != 0 && !set(reading, SCHED_FIFO)) {
        askRealtimeKit(reading);
    }
}

#else

Priority::Priority() = default;
void Priority::ask() {}

#endif

} // namespace quillon
