// The simulated generator on a pseudo-terminal.

#include "base/ProgramArguments.h"
#include "sim/Station.h"

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

constexpr std::array kSwitches{
    quillon::ProgramSwitch{"--link", true},    quillon::ProgramSwitch{"--daemon"},
    quillon::ProgramSwitch{"--verbose"},       quillon::ProgramSwitch{"--machine", true},
    quillon::ProgramSwitch{"--print-machine"}, quillon::ProgramSwitch{"--check-lesson", true}};

std::string help() {
    return "Usage: generator-sim [--link PATH] [--daemon] [--verbose] [--machine FILE] [KEY=VALUE...]\n"
           "       generator-sim --print-machine [--machine FILE] [KEY=VALUE...]\n"
           "       generator-sim --check-lesson FILE\n\n"
           "Simulates a generator on a pseudo-terminal. The first line of the output is the path of the\n"
           "device for the console to open. Commands come on standard input, one a line.\n\n"
           "  --link PATH          keeps a symbolic link to the device there\n"
           "  --daemon             goes on when standard input ends\n"
           "  --verbose            traces the traffic on standard error\n"
           "  --machine FILE       a machine's profile: keys as below, a line each, remarks behind '#'\n"
           "  --print-machine      prints the profile of the machine that the other arguments make\n"
           "  --check-lesson FILE  tells the mistakes in a lesson, by line; the exit status is 0 without "
           "one\n"
           "  --help, -h           this text\n"
           "  --version            the version\n\n"
           "Keys:\n" +
           optionsHelp() + "\nCommands:\n" + Station::commandsHelp() + "\n";
}

int checkLesson(const std::string& file) {
    const Lesson lesson = readLessonFile(file);
    for (const std::string& problem : lesson.problems) {
        std::cout << file << ":" << problem << "\n";
    }
    return lesson.problems.empty() ? 0 : 1;
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
          lastByte_(arguments.options.end == MessageEnd::Lf ? '\n' : '\x03'),
          station_(arguments.options, arguments.link,
                   {[this] { tellPath(); }, [this](std::string_view bytes) { trace("rx", bytes); },
                    [this](std::string_view bytes) { traceSent(bytes); }}) {
        tellPath();
    }

    void run() {
        std::array<pollfd, 3> polled{};
        bool going = true;
        while (going) {
            polled[0] = {signals_.number(), POLLIN, 0};
            polled[1] = {station_.descriptor(), POLLIN, 0};
            if (station_.wantsWrite()) {
                polled[1].events |= POLLOUT;
            }
            polled[2] = {listening_ ? STDIN_FILENO : -1, POLLIN, 0};
            if (::poll(polled.data(), polled.size(), timeout()) < 0 && errno != EINTR) {
                throw std::system_error(errno, std::generic_category(), "poll");
            }
            if ((polled[1].revents & POLLOUT) != 0) {
                station_.writable();
            }
            if ((polled[1].revents & POLLIN) != 0) {
                station_.readable();
            }
            if (polled[2].revents != 0) {
                listen();
            }
            station_.advance();
            going = polled[0].revents == 0 && (listening_ || daemon_);
        }
    }

private:
    [[nodiscard]] int timeout() const {
        const auto due = station_.nextDue();
        return due ? static_cast<int>(std::clamp<std::int64_t>(*due - station_.now(), 0, 60'000)) : -1;
    }

    /// The line's first words, and after each plugging in.
    void tellPath() {
        if (station_.cableIn()) {
            std::cout << station_.path() << std::endl;
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
            answer(typed_.substr(0, end));
            typed_.erase(0, end + 1);
        }
        if (typed_.size() > kLongestLine) {
            typed_.clear();
        }
    }

    void answer(const std::string& command) {
        if (const std::string answer = station_.obey(command); !answer.empty()) {
            std::cout << answer << std::endl;
        }
    }

    void trace(std::string_view direction, std::string_view bytes) const {
        if (verbose_) {
            std::cerr << station_.now() << ' ' << direction << " \"" << printable(bytes) << "\"\n";
        }
    }

    static constexpr std::size_t kLongestLine = 4096;

    Descriptor signals_ = endSignals(); // first: from here on a signal leaves nothing behind
    bool daemon_;
    bool verbose_;
    bool listening_ = true;
    const bool pieces_;
    const char lastByte_; ///< of a message
    std::string sent_;
    std::string typed_;
    Station station_;
};

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> given(argv + std::min(argc, 1), argv + argc);
    quillon::ProgramArguments read = quillon::readArguments(given, kSwitches);
    Arguments arguments;
    arguments.link = read.value("--link");
    arguments.daemon = read.has("--daemon");
    arguments.verbose = read.has("--verbose");
    if (read.has("--machine") && read.error.empty()) {
        read.error = applyProfileFile(arguments.options, read.value("--machine"));
    }
    for (const std::string& word : read.words) {
        if (read.error.empty()) {
            read.error = applyOption(arguments.options, word);
        }
    }
    if (const auto status = quillon::answerAtOnce(read, "generator-sim", help())) {
        return *status;
    }
    if (read.has("--print-machine")) {
        std::cout << profileOf(arguments.options);
        return 0;
    }
    if (read.has("--check-lesson")) {
        return checkLesson(read.value("--check-lesson"));
    }
    try {
        Session(arguments).run();
    } catch (const std::exception& failure) {
        std::cerr << "generator-sim: " << failure.what() << "\n";
        return 1;
    }
    return 0;
}
