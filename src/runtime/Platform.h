#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace quillon {

// What the logic sees of the machine it runs on. Each has an implementation for the real platform and one in
// memory.

/// One RS-232 line: raw bytes, no flow control.
class SerialPort {
public:
    using Receiver = std::function<void(std::string_view bytes)>;
    using Outcome = std::function<void(std::string_view frame, bool sent)>;
    using Notice = std::function<void(std::string_view text)>;

    virtual ~SerialPort() = default;
    /// Opens COM port `port` with settings such as "19200,n,8,1", after closing what was open. The result
    /// says whether the port stands open. One that does not is opened when its device comes, unless the port
    /// is closed before.
    virtual bool open(int port, std::string_view settings) = 0;
    /// Which port and device the last open() failed at, and why, for the operator and a log; empty when there
    /// is no more to tell, and when the port stands open or was closed since.
    [[nodiscard]] virtual std::string failure() const { return {}; }
    /// The device that stands for the port last opened, as the system calls it; empty when there is no more
    /// to tell.
    [[nodiscard]] virtual std::string device() const { return {}; }
    /// The same for whoever looks at it later: with what it stands for, and the adapter's own name where it
    /// has one,
    /// "/dev/generator = /dev/ttyUSB0, usb-maker_adapter_123".
    [[nodiscard]] virtual std::string identity() const { return device(); }
    /// The device of an open port is there; false while it is waited for.
    [[nodiscard]] virtual bool present() const { return isOpen(); }
    /// What was written before goes out first, as far as the other end takes it.
    virtual void close() = 0;
    [[nodiscard]] virtual bool isOpen() const = 0;
    /// Hands one frame to the line. What a device does not take in time is dropped.
    virtual void write(std::string_view frame) = 0;
    /// Called with the bytes of each receive event, in order, never from inside write().
    void setReceiver(Receiver receiver) { receiver_ = std::move(receiver); }
    /// Told what became of each frame written to an open port, once and in order, as a rule from inside
    /// write(): the device has taken it, or it was thrown away.
    void setOutcome(Outcome outcome) { outcome_ = std::move(outcome); }
    /// Told, in words for a log, when the device of an open port has gone, and when it is back.
    void setNotice(Notice notice) { notice_ = std::move(notice); }
    /// Told when the device that an open() has missed has come: the port stands open now.
    void setArrival(std::function<void()> arrival) { arrival_ = std::move(arrival); }

protected:
    void tellNotice(std::string_view text) const {
        if (notice_) {
            notice_(text);
        }
    }
    void tellArrival() const {
        if (arrival_) {
            arrival_();
        }
    }
    void tellOutcome(std::string_view frame, bool sent) const {
        if (outcome_) {
            outcome_(frame, sent);
        }
    }

    Receiver receiver_;

private:
    Outcome outcome_;
    Notice notice_;
    std::function<void()> arrival_;
};

/// The per-user store of key and value, addressed by application, section and key.
class UserStore {
public:
    virtual ~UserStore() = default;
    [[nodiscard]] virtual std::optional<std::string>
    read(std::string_view application, std::string_view section, std::string_view key) const = 0;
    /// A store that can't be written loses the value without a report.
    virtual void write(std::string_view application, std::string_view section, std::string_view key,
                       std::string_view value) = 0;
    virtual void removeSection(std::string_view application, std::string_view section) = 0;
};

/// A text file that is written from its start. False when the file can't be opened or written any more.
class TextSink {
public:
    virtual ~TextSink() = default;
    /// Hands all of it to the system before returning. False when that fails: nothing of it is kept, and a
    /// later write may succeed.
    virtual bool write(std::string_view text) = 0;
};

/// The folders of an installation's small files: one to read from, one to write to, which may be the same.
class Folder {
public:
    virtual ~Folder() = default;
    /// The whole file, byte for byte; nothing when it can't be read or is larger than `limit` bytes. The name
    /// may be a path, with / or \ between its parts: an absolute one is taken as it is, any other begins in
    /// the folder.
    [[nodiscard]] virtual std::optional<std::string> read(std::string_view name, std::size_t limit) const = 0;
    /// Opens a file for writing from its start, replacing what was there; empty when that fails.
    [[nodiscard]] virtual std::unique_ptr<TextSink> create(std::string_view name) = 0;
    /// Renames a file that is not open, replacing any file of the new name. A failure is ignored.
    virtual void rename(std::string_view name, std::string_view newName) = 0;
};

enum class BoxKind { Info, Critical };

/// Screen, message boxes, window order. Widths are in pixels.
class Desktop {
public:
    virtual ~Desktop() = default;
    [[nodiscard]] virtual int screenWidth() const = 0;
    [[nodiscard]] virtual int screenHeight() const = 0;
    [[nodiscard]] virtual int twipsPerPixelX() const = 0;
    [[nodiscard]] virtual int twipsPerPixelY() const = 0;
    /// Returns when the operator has dismissed the box; timers and the port go on meanwhile.
    virtual void message(BoxKind kind, std::string_view title, std::string_view text) = 0;
    /// A yes-or-no question; True for yes.
    [[nodiscard]] virtual bool ask(std::string_view title, std::string_view text) = 0;
    /// Puts the window above all that are not top-most themselves, or back among them.
    virtual void setTopMost(bool topMost) = 0;
    virtual void beep() = 0;
};

/// Why something was not done, in words for the operator; nothing when it was.
using Refusal = std::optional<std::string>;

/// Restarting the PC.
class PowerControl {
public:
    virtual ~PowerControl() = default;
    /// Asks the system to shut down or to restart; the system then ends this program like all others.
    [[nodiscard]] virtual Refusal exitWindows(bool restart, bool force) = 0;
};

} // namespace quillon
