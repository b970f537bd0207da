#include "qt/EndRequest.h"

#include <utility>

#include <QGuiApplication>

#ifndef _WIN32
#include <array>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>
#endif

namespace quillon {

namespace {

/// A closed terminal and the end of a session send more than one signal; they count as one request.
constexpr int kOneRequest = 500; // ms

#ifndef _WIN32
constexpr std::array kSignals{SIGTERM, SIGINT, SIGHUP};

// A pipe from the signal handler to the event loop. The handler interrupts any code and may do no more than
// write to it.
std::array<int, 2> line{-1, -1};

void signalled(int) {
    const int before = errno;
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = ::write(line[1], &byte, sizeof byte);
    errno = before;
}

void handle(void (*handler)(int)) {
    for (const int number : kSignals) {
        struct sigaction action {};
        ::sigaction(number, nullptr, &action);
        // A signal that is ignored from the start, as with nohup, stays ignored.
        if (action.sa_handler != SIG_IGN) {
            action.sa_handler = handler;
            action.sa_flags = SA_RESTART;
            ::sigaction(number, &action, nullptr);
        }
    }
}
#endif

} // namespace

EndRequest::EndRequest() {
    connect(qGuiApp, &QGuiApplication::commitDataRequest, this, [this] {
        if (onSessionEnd) {
            onSessionEnd();
        }
    });
    connect(qGuiApp, &QCoreApplication::aboutToQuit, this, [this] {
        if (onSessionEnd) {
            onSessionEnd();
        }
    });
    listen();
}

EndRequest::~EndRequest() {
#ifndef _WIN32
    if (signals_ != nullptr) {
        handle(SIG_DFL);
        delete std::exchange(signals_, nullptr);
        for (int& end : line) {
            ::close(std::exchange(end, -1));
        }
    }
#endif
}

void EndRequest::listen() {
#ifndef _WIN32
    if (::pipe2(line.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        return;
    }
    signals_ = new QSocketNotifier(line[0], QSocketNotifier::Read, this);
    connect(signals_, &QSocketNotifier::activated, this, [this] {
        char byte = 0;
        while (::read(line[0], &byte, sizeof byte) > 0) {
        }
        requested();
    });
    handle(signalled);
#endif
}

void EndRequest::requested() {
    if (!since_.isValid() && onFirst) {
        since_.start();
        onFirst();
    } else if (onAgain && (!since_.isValid() || since_.hasExpired(kOneRequest))) {
        onAgain();
    }
}

} // namespace quillon
