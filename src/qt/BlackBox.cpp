#include "qt/BlackBox.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#ifndef _WIN32

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include "qt/RecordingWriter.h"
#else
#include "qt/Convert.h"
#include "qt/QtStores.h"
#endif

namespace quillon {

#ifndef _WIN32

namespace {

constexpr int kPipe = 1 << 20;     // bytes: hours of an idle line
constexpr int kHeadPatience = 500; // ms
constexpr int kNamePatience = 500; // ms
constexpr int kEndPatience = 1000; // ms

using Time = std::chrono::steady_clock;

int msUntil(Time::time_point end) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Time::now()).count();
    return static_cast<int>(std::max<std::int64_t>(left, 0));
}

bool waitFor(int file, short events, Time::time_point end) {
    pollfd wanted{file, events, 0};
    int ready = 0;
    do {
        ready = ::poll(&wanted, 1, msUntil(end));
    } while (ready < 0 && errno == EINTR);
    return ready > 0;
}

void closeEnd(int& file) {
    if (file >= 0) {
        ::close(std::exchange(file, -1));
    }
}

} // namespace

/// The near end of the pipe. What is written is with the kernel, and out of this process' hands.
class BlackBox::Sink final : public TextSink {
public:
    explicit Sink(int file) : file_(file) {}
    ~Sink() override { closeEnd(file_); }

    bool write(std::string_view text) override {
        if (file_ < 0) {
            return false;
        }
        if (!begun_) {
            begun_ = true;
            return writeHead(text);
        }
        writeRest();
        if (!rest_.empty() || file_ < 0) {
            return false;
        }
        // As much as a pipe takes whole or not at all; of a longer line the rest waits for room.
        const std::size_t taken = hand(text);
        if (taken > 0) {
            rest_ = text.substr(taken);
        }
        return taken > 0;
    }

    /// Where the recording goes: short, and the first that the pipe gets.
    void order(std::string_view text) { rest_ = text.substr(hand(text)); }

private:
    /// The files of the installation may be larger than the pipe, and without them the rest is of no use.
    bool writeHead(std::string_view text) {
        rest_ += text;
        const auto end = Time::now() + std::chrono::milliseconds(kHeadPatience);
        for (writeRest(); file_ >= 0 && !rest_.empty() && waitFor(file_, POLLOUT, end);) {
            writeRest();
        }
        if (!rest_.empty()) {
            std::fputs("quillon: the recording could not be begun in time: there is none\n", stderr);
            closeEnd(file_);
        }
        return file_ >= 0;
    }
    void writeRest() { rest_.erase(0, hand(rest_)); }
    std::size_t hand(std::string_view text) {
        ssize_t taken = 0;
        do {
            taken = text.empty() ? 0 : ::write(file_, text.data(), text.size());
        } while (taken < 0 && errno == EINTR);
        if (taken < 0 && errno == EPIPE) {
            closeEnd(file_);
        }
        return static_cast<std::size_t>(std::max<ssize_t>(taken, 0));
    }

    int file_;
    std::string rest_; // of what has been begun
    bool begun_ = false;
};

BlackBox::BlackBox() {
    std::array<int, 2> data{-1, -1};
    std::array<int, 2> words{-1, -1};
    if (::pipe2(data.data(), O_CLOEXEC) != 0) {
        return;
    }
    if (::pipe2(words.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        closeEnd(data[0]);
        closeEnd(data[1]);
        return;
    }
#ifdef F_SETPIPE_SZ
    ::fcntl(data[1], F_SETPIPE_SZ, kPipe);
#endif
    writer_ = ::fork();
    if (writer_ == 0) {
        runRecordingWriter(data[0], words[1]);
        std::_Exit(EXIT_SUCCESS);
    }
    closeEnd(data[0]);
    closeEnd(words[1]);
    toWriter_ = data[1];
    fromWriter_ = words[0];
    ::fcntl(toWriter_, F_SETFL, O_WRONLY | O_NONBLOCK);
    if (writer_ < 0) {
        closeEnd(toWriter_);
        closeEnd(fromWriter_);
    }
}

BlackBox::~BlackBox() {
    delete notifier_;
    closeEnd(toWriter_);
    if (fromWriter_ >= 0) {
        const auto end = Time::now() + std::chrono::milliseconds(kEndPatience);
        std::array<char, 256> words{};
        while (waitFor(fromWriter_, POLLIN, end) && ::read(fromWriter_, words.data(), words.size()) > 0) {
        }
        closeEnd(fromWriter_);
        ::waitpid(writer_, nullptr, WNOHANG);
    }
}

std::unique_ptr<TextSink> BlackBox::record(const RecordingPlace& place, std::string& problem) {
    place_ = place;
    if (toWriter_ < 0) {
        problem = "no process could be made for it";
        become({RecordingState::Kind::None, {}, {}, problem});
        return nullptr;
    }
    const std::string order = recordingOrder(place);
    auto sink = std::make_unique<Sink>(std::exchange(toWriter_, -1));
    sink->order(order);
    // Somebody who asked for it by name is to know at once.
    if (!place.file.empty() &&
        waitFor(fromWriter_, POLLIN, Time::now() + std::chrono::milliseconds(kNamePatience))) {
        listen();
        if (state_.kind == RecordingState::Kind::None) {
            problem = state_.why;
            return nullptr;
        }
    }
    notifier_ = new QSocketNotifier(fromWriter_, QSocketNotifier::Read, qApp);
    QObject::connect(notifier_, &QSocketNotifier::activated, notifier_, [this] { listen(); });
    return sink;
}

void BlackBox::listen() {
    std::array<char, 512> piece{};
    const ssize_t got = ::read(fromWriter_, piece.data(), piece.size());
    if (got < 0) {
        return;
    }
    words_.append(piece.data(), static_cast<std::size_t>(got));
    for (auto end = words_.find('\n'); end != std::string::npos; end = words_.find('\n')) {
        told(words_.substr(0, end));
        words_.erase(0, end + 1);
    }
    if (got == 0) {
        notifier_->setEnabled(false);
        ::waitpid(writer_, nullptr, WNOHANG);
        if (state_.kind != RecordingState::Kind::None) {
            become(
                {RecordingState::Kind::None, state_.name, place_.folder, "it has ended before the session"});
            std::fputs("quillon: the recording has ended before the session\n", stderr);
        }
    }
}

void BlackBox::told(std::string_view line) {
    using Kind = RecordingState::Kind;
    const auto word = line.substr(0, line.find(' '));
    const std::string rest(line.substr(std::min(line.size(), word.size() + 1)));
    const auto name = rest.substr(0, rest.find(' '));
    if (word == "recording") {
        become({Kind::Recording, rest, place_.folder, {}});
    } else if (word == "memory") {
        const std::string why = rest.substr(std::min(rest.size(), name.size() + 1));
        std::fprintf(stderr, "quillon: the session is recorded in memory, %s, until logout: %s: %s\n",
                     place_.spare.c_str(), place_.folder.c_str(), why.c_str());
        become({Kind::InMemory, name, place_.spare, why});
    } else if (word == "waits") {
        std::fputs("quillon: the recording waits: its disk takes nothing\n", stderr);
        beforeFull_ = state_;
        become({Kind::Full, state_.name, state_.folder, {}});
    } else if (word == "goes-on") {
        std::fputs("quillon: the recording goes on\n", stderr);
        become(beforeFull_);
    } else if (word == "no") {
        std::fprintf(stderr, "quillon: no recording: %s\n", rest.c_str());
        become({Kind::None, {}, place_.folder, rest});
    }
}

#else

BlackBox::BlackBox() = default;
BlackBox::~BlackBox() = default;

/// A file that is asked for by name, written from here.
std::unique_ptr<TextSink> BlackBox::record(const RecordingPlace& place, std::string& problem) {
    const QFileInfo file(QString::fromStdString(place.file));
    auto sink = place.file.empty() ? nullptr : DiskFolder(file.path()).create(fromQt(file.fileName()));
    problem = sink ? "" : "it cannot be written";
    become({sink ? RecordingState::Kind::Recording : RecordingState::Kind::None, place.file, {}, problem});
    return sink;
}

#endif

void BlackBox::become(RecordingState state) {
    state_ = std::move(state);
    if (onState) {
        onState();
    }
}

} // namespace quillon
