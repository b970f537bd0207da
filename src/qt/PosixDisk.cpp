#include "qt/PosixDisk.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "runtime/Packing.h"
#include "shell/RecordingReader.h"

namespace quillon {

namespace {

constexpr mode_t kFileMode = 0600;
constexpr mode_t kFolderMode = 0700;
constexpr std::size_t kPiece = 65'536;
constexpr std::size_t kSpokenWithin = 262'144; // bytes of a part, packed ones too, that are looked into

/// Closes a file at the end of its scope.
class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0) {
            ::close(number_);
        }
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    [[nodiscard]] int get() const { return number_; }
    [[nodiscard]] bool open() const { return number_ >= 0; }
    [[nodiscard]] int release() { return std::exchange(number_, -1); }

private:
    int number_;
};

/// As many of the bytes as the file takes.
std::size_t writeAll(int file, std::string_view bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t written = ::write(file, bytes.data() + done, bytes.size() - done);
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            break;
        }
        done += static_cast<std::size_t>(written);
    }
    return done;
}

std::string readUpTo(int file, std::size_t limit) {
    std::string text(limit, '\0');
    std::size_t length = 0;
    for (ssize_t got = 1; got > 0 && length < limit;
         length += static_cast<std::size_t>(std::max<ssize_t>(got, 0))) {
        got = ::read(file, text.data() + length, limit - length);
    }
    text.resize(length);
    return text;
}

/// Packs whole lines: what ended the session may have cut the last one.
bool packInto(int from, int to) {
    Packer packer;
    std::string held;
    for (std::string piece; !(piece = readUpTo(from, kPiece)).empty();) {
        held += piece;
        const std::size_t whole = held.rfind('\n') + 1;
        const std::string packed = packer.add(std::string_view(held).substr(0, whole));
        held.erase(0, whole);
        if (writeAll(to, packed) != packed.size()) {
            return false;
        }
    }
    const std::string rest = packer.finish();
    return writeAll(to, rest) == rest.size() && ::fsync(to) == 0;
}

} // namespace

PosixDisk::~PosixDisk() {
    letGo();
    if (file_ >= 0) {
        ::close(file_);
    }
}

FileList PosixDisk::files() {
    return filesOf(folder_);
}

Disk::Created PosixDisk::create(const std::string& name) {
    if (!replaces_) {
        std::error_code error;
        std::filesystem::create_directories(std::filesystem::path(folder_).parent_path(), error);
        ::mkdir(folder_.c_str(), kFolderMode);
    }
    Descriptor made(::open(path(name).c_str(),
                           O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | (replaces_ ? O_TRUNC : O_EXCL),
                           kFileMode));
    if (!made.open()) {
        problem_ = std::strerror(errno);
        return errno == EEXIST ? Created::Taken : Created::No;
    }
    // Who tidies up may have taken it for a left-over before it was locked.
    struct stat state {};
    if (!replaces_ && (::flock(made.get(), LOCK_EX | LOCK_NB) != 0 || ::fstat(made.get(), &state) != 0 ||
                       state.st_nlink == 0)) {
        return Created::Taken;
    }
    if (file_ >= 0) {
        ::close(file_);
    }
    file_ = made.release();
    syncFolder();
    return Created::Yes;
}

std::size_t PosixDisk::write(std::string_view bytes) {
    errno = 0;
    const std::size_t written = writeAll(file_, bytes);
    full_ = written < bytes.size() && (errno == ENOSPC || errno == EDQUOT);
    return written;
}

bool PosixDisk::cut(std::size_t length) {
    return ::ftruncate(file_, static_cast<off_t>(length)) == 0;
}

bool PosixDisk::sync() {
    return ::fdatasync(file_) == 0 || errno == EINVAL || errno == EROFS; // no disk stands behind it
}

void PosixDisk::syncFolder() const {
    const Descriptor folder(::open(folder_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.open()) {
        ::fsync(folder.get());
    }
}

void PosixDisk::letGo() {
    for (const int file : std::exchange(seized_, {})) {
        ::close(file);
    }
}

bool PosixDisk::seize(const std::vector<std::string>& names) {
    letGo();
    for (const std::string& name : names) {
        const bool lock = name == kRecordingsLock;
        Descriptor file(::open(path(name).c_str(), O_RDWR | O_CLOEXEC | (lock ? O_CREAT : 0), kFileMode));
        if (!file.open() || ::flock(file.get(), LOCK_EX | LOCK_NB) != 0) {
            letGo();
            return false;
        }
        seized_.push_back(file.release());
    }
    return true;
}

bool PosixDisk::pack(const std::string& name) {
    if (!canPack()) {
        return false;
    }
    const std::string packed = path(name) + ".gz";
    const std::string half = packed + ".new";
    {
        const Descriptor from(::open(path(name).c_str(), O_RDONLY | O_CLOEXEC));
        const Descriptor to(::open(half.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, kFileMode));
        if (!from.open() || !to.open() || !packInto(from.get(), to.get())) {
            ::unlink(half.c_str());
            return false;
        }
    }
    if (::rename(half.c_str(), packed.c_str()) != 0) {
        return false;
    }
    syncFolder();
    return ::unlink(path(name).c_str()) == 0;
}

bool PosixDisk::remove(const std::string& name) {
    return ::unlink(path(name).c_str()) == 0;
}

bool PosixDisk::spoke(const std::string& name) {
    const Descriptor file(::open(path(name).c_str(), O_RDONLY | O_CLOEXEC));
    return file.open() &&
           unpacked(readUpTo(file.get(), kSpokenWithin)).text.find("\nrx ") != std::string::npos;
}

} // namespace quillon
