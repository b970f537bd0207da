#include "desk/EndSignals.h"

#include <csignal>
#include <sys/signalfd.h>
#include <unistd.h>
#include <utility>

namespace desk {

EndSignals::EndSignals() {
    sigset_t set;
    sigemptyset(&set);
    for (const int each : {SIGINT, SIGTERM, SIGHUP}) {
        sigaddset(&set, each);
    }
    sigprocmask(SIG_BLOCK, &set, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
    signals_ = simulator::Descriptor(::signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK));
}

void EndSignals::listen(std::function<void()> asked) {
    notifier_ = std::make_unique<QSocketNotifier>(signals_.number(), QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                     [this, asked = std::move(asked)] {
                         signalfd_siginfo info{};
                         while (::read(signals_.number(), &info, sizeof info) > 0) {
                         }
                         asked();
                     });
}

void EndSignals::restore() {
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    std::signal(SIGPIPE, SIG_DFL);
}

} // namespace desk
