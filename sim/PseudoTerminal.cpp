#include "sim/PseudoTerminal.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <system_error>
#include <termios.h>
#include <unistd.h>
#include <utility>

namespace simulator {

namespace {

constexpr std::size_t kMostUnwritten = 16384;

int checked(int result, const char* what) {
    if (result < 0) {
        throw std::system_error(errno, std::generic_category(), what);
    }
    return result;
}

} // namespace

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
}

Descriptor::~Descriptor() {
    if (number_ >= 0) {
        ::close(number_);
    }
}

PseudoTerminal::PseudoTerminal()
    : master_(checked(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC),
                      "cannot open a pseudo-terminal")) {
    checked(::grantpt(master_.number()), "cannot grant the pseudo-terminal");
    checked(::unlockpt(master_.number()), "cannot unlock the pseudo-terminal");
    std::array<char, 256> name{};
    if (const int error = ::ptsname_r(master_.number(), name.data(), name.size()); error != 0) {
        throw std::system_error(error, std::generic_category(), "the pseudo-terminal has no name");
    }
    path_ = name.data();
    slave_ = Descriptor(checked(::open(path_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC), path_.c_str()));
    // Raw before anybody opens it: a fresh terminal echoes and turns CR into LF.
    termios settings{};
    checked(::tcgetattr(slave_.number(), &settings), path_.c_str());
    ::cfmakeraw(&settings);
    ::cfsetspeed(&settings, B19200);
    checked(::tcsetattr(slave_.number(), TCSANOW, &settings), path_.c_str());
}

std::string PseudoTerminal::read() {
    std::array<char, 4096> bytes{};
    const ssize_t count = ::read(master_.number(), bytes.data(), bytes.size());
    return count > 0 ? std::string(bytes.data(), static_cast<std::size_t>(count)) : std::string();
}

void PseudoTerminal::write(std::string_view message) {
    if (unwritten_.size() + message.size() > kMostUnwritten) {
        ++lostMessages_;
        return;
    }
    unwritten_ += message;
    flush();
}

void PseudoTerminal::flush() {
    while (!unwritten_.empty()) {
        const ssize_t count = ::write(master_.number(), unwritten_.data(), unwritten_.size());
        if (count <= 0) {
            return;
        }
        unwritten_.erase(0, static_cast<std::size_t>(count));
    }
}

DeviceLink::DeviceLink(std::filesystem::path link, std::string device)
    : link_(std::move(link)), device_(std::move(device)) {
    const auto status = std::filesystem::symlink_status(link_);
    if (std::filesystem::exists(status) && !std::filesystem::is_symlink(status)) {
        throw std::system_error(std::make_error_code(std::errc::file_exists), link_.string());
    }
    // In one stroke, so that nobody meets the moment without a link.
    const std::filesystem::path fresh = link_.string() + "." + std::to_string(::getpid());
    std::filesystem::create_symlink(device_, fresh);
    std::filesystem::rename(fresh, link_);
}

DeviceLink::~DeviceLink() {
    std::error_code ignored;
    if (std::filesystem::read_symlink(link_, ignored) == device_) {
        std::filesystem::remove(link_, ignored);
    }
}

} // namespace simulator
