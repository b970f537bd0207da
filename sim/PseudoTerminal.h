#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

namespace simulator {

/// A file descriptor that closes itself.
class Descriptor {
public:
    explicit Descriptor(int number = -1) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(other.number_) { other.number_ = -1; }
    Descriptor& operator=(Descriptor&& other) noexcept;
    ~Descriptor();

    [[nodiscard]] int number() const { return number_; }

private:
    int number_;
};

/// One end of a pseudo-terminal whose other end looks like a serial port. Throws std::system_error when the
/// system gives none.
class PseudoTerminal {
public:
    PseudoTerminal();

    /// Path of the end a console opens.
    [[nodiscard]] const std::string& path() const { return path_; }
    [[nodiscard]] int descriptor() const { return master_.number(); }
    [[nodiscard]] bool hasUnwritten() const { return !unwritten_.empty(); }
    [[nodiscard]] std::size_t lostMessages() const { return lostMessages_; }

    /// What has arrived; empty when there is nothing.
    [[nodiscard]] std::string read();

    /// Writes a message, now or when the line takes it. While nobody reads, whole messages are lost once
    /// 16 KB wait.
    void write(std::string_view message);

    /// Writes what waits, as far as the line takes it.
    void flush();

private:
    Descriptor master_;
    Descriptor slave_; // held open, so that a console's close is no hang-up here
    std::string path_;
    std::string unwritten_;
    std::size_t lostMessages_ = 0;
};

/// A symbolic link to the device under a name that stays, for as long as this lives.
class DeviceLink {
public:
    /// Replaces a link that is there already; throws std::system_error over anything else.
    DeviceLink(std::filesystem::path link, std::string device);
    DeviceLink(const DeviceLink&) = delete;
    DeviceLink& operator=(const DeviceLink&) = delete;

    /// Removes the link, unless somebody else has put another in its place.
    ~DeviceLink();

private:
    std::filesystem::path link_;
    std::string device_;
};

} // namespace simulator
