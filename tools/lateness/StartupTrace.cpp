#include "StartupTrace.h"

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

#include <QEvent>
#include <QTimer>

#ifdef __linux__
#include <unistd.h>
#endif

#include "base/Numbers.h"

namespace quillon {

namespace {

/// Milliseconds since the system started this process; below 0 where the system does not tell.
double processAge() {
#ifdef __linux__
    std::ifstream file("/proc/self/stat");
    const std::string line{std::istreambuf_iterator<char>(file), {}};
    // The name stands in brackets and may hold blanks; what follows it is numbers. The start is the 20th of
    // them.
    std::size_t at = line.rfind(')');
    for (int field = 0; field < 20 && at != std::string::npos; ++field) {
        at = line.find(' ', at + 1);
    }
    double now = 0;
    if (at == std::string::npos || !(std::ifstream("/proc/uptime") >> now)) {
        return -1;
    }
    const double start =
        leadingNumber(std::string_view(line).substr(at + 1)) / static_cast<double>(sysconf(_SC_CLK_TCK));
    return (now - start) * 1000;
#else
    return -1;
#endif
}

} // namespace

StartupTrace::StartupTrace(QObject& window) {
    if (qEnvironmentVariableIsSet("QUILLON_STARTUP_TRACE")) {
        window.installEventFilter(this);
    }
}

bool StartupTrace::eventFilter(QObject* window, QEvent* event) {
    if (event->type() == QEvent::Paint) {
        window->removeEventFilter(this);
        // Told when the loop is back: by then the picture has gone to the screen.
        QTimer::singleShot(0, this,
                           [] { std::fprintf(stderr, "first window after %.0f ms\n", processAge()); });
    }
    return false;
}

} // namespace quillon
