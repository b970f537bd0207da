#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "base/Text.h"
#include "runtime/Clock.h"
#include "runtime/EventLoop.h"
#include "runtime/Platform.h"
#include "runtime/Schedule.h"

namespace quillon {

// In-memory platform for tests; everything it was asked to do can be inspected.

/// A line whose other end is a test. The hooks run inside the call that they tell of.
class MemorySerialPort final : public SerialPort {
public:
    bool open(int port, std::string_view settings) override;
    void close() override;
    [[nodiscard]] bool isOpen() const override { return openPort_.has_value(); }
    [[nodiscard]] bool present() const override { return isOpen() && !gone_; }
    [[nodiscard]] std::string device() const override { return device_; }
    [[nodiscard]] std::string failure() const override { return missed_ ? failure_ : std::string(); }
    void write(std::string_view bytes) override;

    /// These bytes arrive; they are lost while the port is closed. Not to be called from inside onWritten.
    void receive(std::string_view bytes);
    /// From now on COM port `port` can't be opened, or can be again. An open port stays open.
    void setFailing(int port, bool failing);
    /// What device() tells; nothing at first.
    void setDevice(std::string_view device) { device_ = device; }
    /// What failure() tells of a port that can't be opened.
    void setFailure(std::string_view why) { failure_ = why; }
    /// COM port `port` can be opened from now on. Where the last open() has missed it, it stands open.
    void arrive(int port);
    /// From now on the device is gone, or back: what is written meanwhile is lost.
    void setGone(bool gone);
    /// Everything written since the last call.
    std::string takeWritten();

    std::function<void(int port, std::string_view settings)> onOpened;
    std::function<void(int port)> onClosed;
    std::function<void(std::string_view bytes)> onWritten;

private:
    struct Missed {
        int port;
        std::string settings;
    };

    std::optional<int> openPort_;
    std::optional<Missed> missed_; ///< by the last open()
    std::set<int> failing_;
    std::string device_;
    std::string failure_;
    bool gone_ = false;
    std::string written_;
};

class MemoryUserStore final : public UserStore {
public:
    struct Address {
        std::string application;
        std::string section;
        std::string key;
        bool operator<(const Address& other) const {
            return std::tie(application, section, key) <
                   std::tie(other.application, other.section, other.key);
        }
    };

    [[nodiscard]] std::optional<std::string> read(std::string_view application, std::string_view section,
                                                  std::string_view key) const override;
    void write(std::string_view application, std::string_view section, std::string_view key,
               std::string_view value) override;
    void removeSection(std::string_view application, std::string_view section) override;

    /// From now on what is written is lost.
    void setReadOnly(bool readOnly) { readOnly_ = readOnly; }
    [[nodiscard]] const std::map<Address, std::string>& entries() const { return entries_; }

private:
    std::map<Address, std::string> entries_;
    bool readOnly_ = false;
};

/// Files in memory. One put under a path lies in that other directory; a directory where none was put is the
/// executable's.
class MemoryFolder final : public Folder {
public:
    [[nodiscard]] std::optional<std::string> read(std::string_view name, std::size_t limit) const override;
    [[nodiscard]] std::unique_ptr<TextSink> create(std::string_view name) override;
    void rename(std::string_view name, std::string_view newName) override;

    void put(std::string_view name, std::string_view content);
    /// The whole file; empty when there is none.
    [[nodiscard]] const std::string* find(std::string_view name) const;
    /// From now on nothing can be created, and files that are open for writing take no more.
    void setReadOnly(bool readOnly) { *readOnly_ = readOnly; }

private:
    std::map<std::string, std::shared_ptr<std::string>, NoCaseLess> files_;
    std::shared_ptr<bool> readOnly_ = std::make_shared<bool>(false); // sinks may outlive the folder
};

/// A screen that shows nothing and an operator who answers at once, as told beforehand.
class MemoryDesktop final : public Desktop {
public:
    enum class Answer { Ok, Yes, No };
    enum class Box { Info, Critical, Question };
    struct Shown {
        Box box;
        std::string title;
        std::string text;
        bool yes; ///< of a question: how it was answered
    };

    static constexpr int kTwipsPerPixel = 15;

    [[nodiscard]] int screenWidth() const override { return width_; }
    [[nodiscard]] int screenHeight() const override { return height_; }
    [[nodiscard]] int twipsPerPixelX() const override { return kTwipsPerPixel; }
    [[nodiscard]] int twipsPerPixelY() const override { return kTwipsPerPixel; }
    void message(BoxKind kind, std::string_view title, std::string_view text) override;
    [[nodiscard]] bool ask(std::string_view title, std::string_view text) override;
    void setTopMost(bool topMost) override { topMost_ = topMost; }
    void beep() override { ++beeps_; }

    void setScreen(int width, int height);
    /// One answer a box, in this order. A box without one gets Ok, a question No.
    void answer(Answer answer) { answers_.push_back(answer); }
    [[nodiscard]] const std::vector<Shown>& boxes() const { return boxes_; }
    [[nodiscard]] bool topMost() const { return topMost_; }
    [[nodiscard]] int beeps() const { return beeps_; }

    /// Runs while the box stands.
    std::function<void(const Shown&)> onBox;

private:
    bool show(Box box, std::string_view title, std::string_view text);

    std::deque<Answer> answers_;
    std::vector<Shown> boxes_;
    int width_ = 1024;
    int height_ = 768;
    int beeps_ = 0;
    bool topMost_ = false;
};

class MemoryPowerControl final : public PowerControl {
public:
    struct Exit {
        bool restart;
        bool force;
        bool operator==(const Exit&) const = default;
    };

    [[nodiscard]] Refusal exitWindows(bool restart, bool force) override;

    /// From now on the system refuses; nothing for one that does as it is asked.
    void setRefusal(Refusal refusal) { refusal_ = std::move(refusal); }
    /// What was asked for, refused or not.
    [[nodiscard]] const std::vector<Exit>& exits() const { return exits_; }
    std::function<void(const Exit&)> onExit;

private:
    Refusal refusal_;
    std::vector<Exit> exits_;
};

/// Time that passes only when somebody says so, jumping from one due time to the next.
class VirtualTime final : public EventLoop {
public:
    [[nodiscard]] Schedule& schedule() { return schedule_; }
    [[nodiscard]] Milliseconds now() const { return clock_.now(); }

    /// Lets `ms` pass: all that falls due meanwhile runs at its own time, what falls due at the very end
    /// included. Stops early, at the time reached, once `stop` says so.
    void advance(Milliseconds ms, const std::function<bool()>& stop = {});
    /// The machine sleeps for `ms`: nothing happens meanwhile. What fell due runs when time passes again.
    void sleep(Milliseconds ms) { clock_.set(clock_.now() + ms); }
    void processEvents() override { schedule_.runDue(); }

private:
    VirtualClock clock_;
    Schedule schedule_{clock_};
};

/// All of it together.
struct MemoryPlatform {
    VirtualTime time;
    MemorySerialPort port;
    MemoryUserStore store;
    MemoryFolder folder;
    MemoryDesktop desktop;
    MemoryPowerControl power;
};

} // namespace quillon
