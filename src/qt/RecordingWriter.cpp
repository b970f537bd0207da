#include "qt/RecordingWriter.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sched.h>
#include <unistd.h>
#ifdef __linux__
#include <sys/prctl.h>
#endif

#include "keeper/Keeper.h"
#include "qt/BlackBox.h"
#include "qt/PosixDisk.h"

namespace quillon {

namespace {

constexpr std::int64_t kSpareBound = 16'000'000; // bytes, of memory
constexpr std::size_t kSparePart = 2'000'000;
constexpr Milliseconds kToldAfter = 2000; // a disk that takes nothing for so long
constexpr std::size_t kPiece = 65'536;
constexpr int kNice = 10;
constexpr int kLastDescriptor = 1024;
constexpr std::size_t kFields = 4;

Milliseconds now() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

/// Nothing that ends the console ends this process, nobody waits for it, and it is in nobody's way.
void standApart(int data, int words) {
    ::setsid();
    for (const int number : {SIGHUP, SIGINT, SIGTERM, SIGQUIT, SIGPIPE}) {
        std::signal(number, SIG_IGN);
    }
    const sched_param ordinary{};
    ::sched_setscheduler(0, SCHED_OTHER, &ordinary);
    [[maybe_unused]] const int nice = ::nice(kNice);
#ifdef __linux__
    ::prctl(PR_SET_NAME, "quillon-box");
#endif
    const int nowhere = ::open("/dev/null", O_RDWR);
    for (int file = 0; file < kLastDescriptor; ++file) {
        if (file <= STDERR_FILENO) {
            ::dup2(nowhere, file);
        } else if (file != data && file != words) {
            ::close(file);
        }
    }
}

/// Adds what comes to `bytes`; false at the end.
bool readMore(int data, std::string& bytes) {
    std::array<char, kPiece> piece; // NOLINT(cppcoreguidelines-pro-type-member-init)
    ssize_t got = 0;
    do {
        got = ::read(data, piece.data(), piece.size());
    } while (got < 0 && errno == EINTR);
    bytes.append(piece.data(), static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
    return got > 0;
}

/// The order, taken off the front of what comes; nothing when nothing is to be recorded.
std::optional<RecordingPlace> takeOrder(int data, std::string& bytes) {
    while (std::ranges::count(bytes, '\0') < static_cast<std::ptrdiff_t>(kFields)) {
        if (!readMore(data, bytes)) {
            return std::nullopt;
        }
    }
    std::array<std::string, kFields> fields;
    for (std::string& field : fields) {
        const auto end = bytes.find('\0');
        field = bytes.substr(0, end);
        bytes.erase(0, end + 1);
    }
    return RecordingPlace{fields[0], fields[1], fields[2], std::atoll(fields[3].c_str())};
}

/// One recording, from its place to its end.
class Writer {
public:
    Writer(int data, int words, RecordingPlace place)
        : data_(data), words_(words), place_(std::move(place)) {}

    void run(std::string bytes) {
        if (!begin()) {
            return;
        }
        bool first = true;
        for (bool more = true; more;) {
            if (bytes.empty() && waits()) {
                more = readMore(data_, bytes);
            }
            if (!bytes.empty()) {
                keeper_->take(bytes, now());
                bytes.clear();
                if (std::exchange(first, false) && !keeper_->hungry() && toSpare("it takes nothing")) {
                    bytes = std::move(taken_);
                    continue;
                }
            }
            if (more) {
                keeper_->work(now());
                tellState();
            }
        }
        keeper_->end(now());
    }

private:
    bool begin() {
        if (!place_.file.empty()) {
            const std::filesystem::path file(place_.file);
            disk_ = std::make_unique<PosixDisk>(file.parent_path().string(), true);
            keeper_ = std::make_unique<Keeper>(*disk_, file.filename().string());
        } else {
            disk_ = std::make_unique<PosixDisk>(place_.folder);
            keeper_ = std::make_unique<Keeper>(*disk_, Keeper::Limits{.bound = place_.bound});
        }
        if (keeper_->begin()) {
            say("recording " + keeper_->name());
            return true;
        }
        const std::string why = disk_->problem();
        return toSpare(why) ||
               (say("no " + (place_.file.empty() ? place_.folder : place_.file) + ": " + why), false);
    }

    /// Goes on in memory, with what the disk has not kept.
    bool toSpare(const std::string& why) {
        if (place_.spare.empty() || !place_.file.empty()) {
            return false;
        }
        auto disk = std::make_unique<PosixDisk>(place_.spare);
        auto keeper =
            std::make_unique<Keeper>(*disk, Keeper::Limits{.part = kSparePart, .bound = kSpareBound});
        if (!keeper->begin()) {
            return false;
        }
        taken_ = keeper_->takeBack();
        keeper_ = std::move(keeper);
        disk_ = std::move(disk);
        say("memory " + keeper_->name() + " " + why);
        place_.spare.clear();
        return true;
    }

    /// Waits until something comes, or something is due; true when there is something to read, the end too.
    bool waits() {
        const auto due = keeper_->due();
        const Milliseconds left = due ? std::clamp<Milliseconds>(*due - now(), 0, 60'000) : -1;
        pollfd wanted{data_, static_cast<short>(keeper_->hungry() ? POLLIN : 0), 0};
        return ::poll(&wanted, 1, static_cast<int>(left)) > 0 && wanted.revents != 0;
    }

    void tellState() {
        if (keeper_->hungry()) {
            if (told_) {
                say("goes-on");
            }
            fullSince_.reset();
            told_ = false;
        } else if (!fullSince_) {
            fullSince_ = now();
        } else if (!told_ && now() - *fullSince_ >= kToldAfter) {
            told_ = true;
            say("waits");
        }
    }

    void say(const std::string& line) const {
        const std::string text = line + "\n";
        [[maybe_unused]] const ssize_t said = ::write(words_, text.data(), text.size());
    }

    int data_;
    int words_;
    RecordingPlace place_;
    std::unique_ptr<PosixDisk> disk_;
    std::unique_ptr<Keeper> keeper_;
    std::string taken_; // back from the disk
    std::optional<Milliseconds> fullSince_;
    bool told_ = false;
};

} // namespace

std::string recordingOrder(const RecordingPlace& place) {
    std::string order;
    for (const std::string& field : {place.folder, place.spare, place.file, std::to_string(place.bound)}) {
        order += field;
        order += '\0';
    }
    return order;
}

void runRecordingWriter(int data, int words) {
    standApart(data, words);
    std::string bytes;
    if (const auto place = takeOrder(data, bytes)) {
        Writer(data, words, *place).run(std::move(bytes));
    }
}

} // namespace quillon
