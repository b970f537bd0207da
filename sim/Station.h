#pragma once

#include "sim/PseudoTerminal.h"
#include "sim/lesson/Classroom.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace simulator {

/// The generator at its end of a pseudo-terminal, in real time. It waits for nothing by itself: whoever owns
/// it waits for the descriptor and the time, and calls.
class Station {
public:
    /// What its owner may want to know.
    struct Watch {
        std::function<void()> cable; ///< was plugged in at the console's end, or pulled out
        std::function<void(std::string_view bytes)> received;
        std::function<void(std::string_view bytes)> sent;
    };

    /// `link`: where a symbolic link to the device is kept; empty for none.
    Station(const Options& options, std::string link, Watch watch);
    Station(const Station&) = delete;
    Station& operator=(const Station&) = delete;

    /// Milliseconds since the start.
    [[nodiscard]] std::int64_t now() const;

    /// What to wait for; -1 while the cable is out.
    [[nodiscard]] int descriptor() const { return terminal_ ? terminal_->descriptor() : -1; }
    [[nodiscard]] bool wantsWrite() const { return terminal_ && terminal_->hasUnwritten(); }
    [[nodiscard]] std::optional<std::int64_t> nextDue() const { return classroom_.nextDue(); }
    void readable();
    void writable();
    void advance() { classroom_.advance(now()); }

    /// A command of the generator, "cable out", or "cable in". The answer may be empty; an error begins with
    /// '?'.
    std::string obey(const std::string& command);
    [[nodiscard]] static std::string commandsHelp();

    [[nodiscard]] bool cableIn() const { return terminal_.has_value(); }
    /// Path of the device for the console, while the cable is in.
    [[nodiscard]] const std::string& path() const { return terminal_->path(); }
    [[nodiscard]] Classroom& classroom() { return classroom_; }

private:
    void plugIn();
    void pullOut();
    void send(std::string_view bytes);

    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    std::string linkPath_;
    Watch watch_;
    std::optional<PseudoTerminal> terminal_; // none while the cable is out
    std::optional<DeviceLink> link_;
    Classroom classroom_;
};

} // namespace simulator
