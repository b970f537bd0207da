// The simulated generator on a pseudo-terminal.

#include "base/ProgramArguments.h"
#include "sim/Generator.h"
#include "sim/PseudoTerminal.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <exception>
#include <iostream>
#include <optional>
#include <poll.h>
#include <string>
#include <string_view>
#include <sys/signalfd.h>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace {

using namespace simulator;

struct Arguments {
    Options options;
    std::string link;
    bool daemon = false;
    bool verbose = false;
};

constexpr std::array kSwitches{quillon::ProgramSwitch{"--link", true}, quillon::ProgramSwitch{"--daemon"},
                               quillon::ProgramSwitch{"--verbose"}};

std::string commandsHelp() {
    return Generator::commandsHelp() +
           "\n  cable out|in        pulls the cable out of the console's end, or plugs it in again\n";
}

std::string help() {
    return "Usage: generator-sim [--link PATH] [--daemon] [--verbose] [KEY=VALUE...]\n\n"
           "Simulates a generator on a pseudo-terminal. The first line of the output is the path of the\n"
           "device for the console to open. Commands come on standard input, one a line.\n\n"
           "  --link PATH   keeps a symbolic link to the device there\n"
           "  --daemon      goes on when standard input ends\n"
           "  --verbose     traces the traffic on standard error\n"
           "  --help, -h    this text\n"
           "  --version     the version\n\n"
           "Keys:\n" +
           optionsHelp() + "\nCommands:\n" + commandsHelp();
}

std::string printable(std::string_view bytes) {
    std::string text;
    for (const char c : bytes) {
        const auto code = static_cast<unsigned char>(c);
        if (code >= ' ' && code <= '~' && c != '\\' && c != '"') {
            text += c;
        } else {
            std::array<char, 8> escape{};
            std::snprintf(escape.data(), escape.size(), "\\x%02X", static_cast<unsigned>(code));
            text += escape.data();
        }
    }
    return text;
}

/// Signals that end the program, as something to poll for.
Descriptor endSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
    return Descriptor(::signalfd(-1, &signals, SFD_CLOEXEC));
}

class Session {
public:
    explicit Session(const Arguments& arguments)
        : daemon_(arguments.daemon), verbose_(arguments.verbose), pieces_(arguments.options.baud > 0),
          lastByte_(arguments.options.end == MessageEnd::Lf ? '\n' : '\x03'), linkPath_(arguments.link),
          generator_(
              arguments.options, [this](std::string_view bytes) { send(bytes); }, now()) {
        plugIn();
    }

    void run() {
        std::array<pollfd, 3> polled{};
        bool going = true;
        while (going) {
            polled[0] = {signals_.number(), POLLIN, 0};
            polled[1] = {terminal_ ? terminal_->descriptor() : -1, POLLIN, 0};
            if (terminal_ && terminal_->hasUnwritten()) {
                polled[1].events |= POLLOUT;
            }
            polled[2] = {listening_ ? STDIN_FILENO : -1, POLLIN, 0};
            if (::poll(polled.data(), polled.size(), timeout()) < 0 && errno != EINTR) {
                throw std::system_error(errno, std::generic_category(), "poll");
            }
            if ((polled[1].revents & POLLOUT) != 0) {
                terminal_->flush();
            }
            if ((polled[1].revents & POLLIN) != 0) {
                receive();
            }
            if (polled[2].revents != 0) {
                listen();
            }
            generator_.advance(now());
            going = polled[0].revents == 0 && (listening_ || daemon_);
        }
    }

private:
    static constexpr std::size_t kLongestLine = 4096;

    [[nodiscard]] std::int64_t now() const {
        return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() -
                                                                     start_)
            .count();
    }

    [[nodiscard]] int timeout() const {
        const auto due = generator_.nextDue();
        return due ? static_cast<int>(std::clamp<std::int64_t>(*due - now(), 0, 60'000)) : -1;
    }

    void plugIn() {
        terminal_.emplace();
        if (!linkPath_.empty()) {
            link_.emplace(linkPath_, terminal_->path());
        }
        std::cout << terminal_->path() << std::endl;
    }

    /// The device is gone for the console, as when an adapter is pulled; the generator goes on.
    void pullOut() {
        link_.reset();
        terminal_.reset();
    }

    void send(std::string_view bytes) {
        if (terminal_) {
            traceSent(bytes);
            terminal_->write(bytes);
        }
    }

    /// On a line with a pace messages come in pieces, and each is traced once it is out.
    void traceSent(std::string_view bytes) {
        if (!pieces_) {
            trace("tx", bytes);
            return;
        }
        for (const char byte : bytes) {
            sent_ += byte;
            if (byte == lastByte_) {
                trace("tx", sent_);
                sent_.clear();
            }
        }
    }

    void receive() {
        const std::string bytes = terminal_->read();
        if (!bytes.empty()) {
            trace("rx", bytes);
            generator_.receive(bytes, now());
        }
    }

    void listen() {
        std::array<char, 1024> bytes{};
        const ssize_t count = ::read(STDIN_FILENO, bytes.data(), bytes.size());
        if (count < 0) {
            listening_ = errno == EINTR || errno == EAGAIN;
            return;
        }
        listening_ = count > 0;
        typed_.append(bytes.data(), static_cast<std::size_t>(count));
        if (!listening_ && !typed_.empty()) {
            typed_ += '\n'; // a last line may come without its end
        }
        for (std::size_t end = typed_.find('\n'); end != std::string::npos; end = typed_.find('\n')) {
            obey(typed_.substr(0, end));
            typed_.erase(0, end + 1);
        }
        if (typed_.size() > kLongestLine) {
            typed_.clear();
        }
    }

    void obey(const std::string& command) {
        if (command == "cable out") {
            pullOut();
        } else if (command == "cable in") {
            if (!terminal_) {
                plugIn();
            }
        } else if (command == "help") {
            std::cout << commandsHelp() << std::flush;
        } else if (const std::string answer = generator_.command(command, now()); !answer.empty()) {
            std::cout << answer << std::endl;
        }
    }

    void trace(std::string_view direction, std::string_view bytes) const {
        if (verbose_) {
            std::cerr << now() << ' ' << direction << " \"" << printable(bytes) << "\"\n";
        }
    }

    Descriptor signals_ = endSignals(); // first: from here on a signal leaves nothing behind
    bool daemon_;
    bool verbose_;
    bool listening_ = true;
    const bool pieces_;
    const char lastByte_; ///< of a message
    std::string sent_;
    std::string typed_;
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    std::string linkPath_;
    std::optional<PseudoTerminal> terminal_; // none while the cable is out
    std::optional<DeviceLink> link_;
    Generator generator_;
};

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> given(argv + std::min(argc, 1), argv + argc);
    quillon::ProgramArguments read = quillon::readArguments(given, kSwitches);
    Arguments arguments;
    arguments.link = read.value("--link");
    arguments.daemon = read.has("--daemon");
    arguments.verbose = read.has("--verbose");
    for (const std::string& word : read.words) {
        if (read.error.empty()) {
            read.error = applyOption(arguments.options, word);
        }
    }
    if (const auto status = quillon::answerAtOnce(read, "generator-sim", help())) {
        return *status;
    }
    try {
        Session(arguments).run();
    } catch (const std::exception& failure) {
        std::cerr << "generator-sim: " << failure.what() << "\n";
        return 1;
    }
    return 0;
}
