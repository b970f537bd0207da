#include "shell/Recorder.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

#include "base/Numbers.h"
#include "base/ScenarioText.h"
#include "console/ctrQuillonConsole.h"
#include "link/TorvaneSerial.h"
#include "shell/RecordingHeader.h"
#include "ui/ControlHost.h"

namespace quillon {

namespace {

constexpr std::string_view kFrameEnd = "\r\n\x03";
constexpr Milliseconds kLongestSilence = 1000; // the file is never further behind the session
constexpr std::size_t kPiece = 900;            // bytes from the line, so that none of them makes a long line
constexpr Milliseconds kClockStep = 1000;      // smaller steps of the PC's clock are not recorded
constexpr Milliseconds kClockPeriod = 3'600'000;

constexpr std::array<std::string_view, 5> kGestures{"press", "release", "type", "select", "slide"};

/// One more for as long as it lives.
class Counted {
public:
    explicit Counted(int& count) : count_(count) { ++count_; }
    ~Counted() { --count_; }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;

private:
    int& count_;
};

} // namespace

/// The line: records what comes in and what goes out.
class Recorder::Port final : public SerialPort {
public:
    explicit Port(Recorder& recorder) : recorder_(recorder), line_(recorder.machine_.port) {
        line_.setReceiver([this](std::string_view bytes) { recorder_.received(bytes); });
        line_.setOutcome([this](std::string_view frame, bool sent) {
            if (!sent) {
                recorder_.comment("lost " + scenarioText(textOf(frame)));
            }
            tellOutcome(frame, sent);
        });
        line_.setNotice([this](std::string_view text) { tellNotice(text); });
        line_.setArrival([this] {
            arrived_ = true;
            recorder_.received({});
        });
    }
    ~Port() override {
        line_.setReceiver({});
        line_.setOutcome({});
        line_.setNotice({});
        line_.setArrival({});
    }

    bool open(int port, std::string_view settings) override {
        arrived_ = false;
        number_ = port;
        const bool succeeded = line_.open(port, settings);
        recorder_.opened(port, succeeded);
        if (succeeded) {
            tellDevice();
        }
        return succeeded;
    }
    void tellDevice() const {
        if (!device().empty()) {
            recorder_.comment("port " + scenarioText(line_.identity()));
        }
    }
    [[nodiscard]] std::string failure() const override { return line_.failure(); }
    [[nodiscard]] std::string device() const override { return line_.device(); }
    [[nodiscard]] bool present() const override { return line_.present(); }
    void close() override {
        arrived_ = false;
        line_.close();
    }
    [[nodiscard]] bool isOpen() const override { return line_.isOpen() && !arrived_; }
    void write(std::string_view frame) override {
        if (isOpen()) {
            recorder_.comment("tx " + scenarioText(textOf(frame)));
        }
        line_.write(frame);
    }
    /// The port whose device has come, which is told from now on; nothing where none has.
    std::optional<int> takeArrival() {
        return std::exchange(arrived_, false) ? std::optional(number_) : std::nullopt;
    }
    void handArrival() const { tellArrival(); }
    void hand(std::string_view bytes) {
        if (receiver_) {
            receiver_(bytes);
        }
    }

private:
    static std::string_view textOf(std::string_view frame) {
        return frame.substr(0, frame.size() - std::min(frame.size(), kFrameEnd.size()));
    }

    Recorder& recorder_;
    SerialPort& line_;
    int number_ = 0;
    bool arrived_ = false; ///< its device has come, and the application was not told yet
};

/// Message boxes. Timers and the line go on while one stands; a replay has the answer at once, so it must
/// know it before.
class Recorder::Boxes final : public Desktop {
public:
    explicit Boxes(Recorder& recorder) : recorder_(recorder), desktop_(recorder.machine_.desktop) {}

    [[nodiscard]] int screenWidth() const override { return desktop_.screenWidth(); }
    [[nodiscard]] int screenHeight() const override { return desktop_.screenHeight(); }
    [[nodiscard]] int twipsPerPixelX() const override { return desktop_.twipsPerPixelX(); }
    [[nodiscard]] int twipsPerPixelY() const override { return desktop_.twipsPerPixelY(); }
    void setTopMost(bool topMost) override { desktop_.setTopMost(topMost); }
    void beep() override { desktop_.beep(); }

    void message(BoxKind kind, std::string_view title, std::string_view text) override {
        if (recorder_.starting_) {
            messageInStart(kind, title, text);
            return;
        }
        const Standing box(recorder_);
        recorder_.comment("message box " + scenarioText(text));
        desktop_.message(kind, title, text);
    }
    [[nodiscard]] bool ask(std::string_view title, std::string_view text) override {
        const Standing box(recorder_);
        bool yes = false;
        {
            const Counted question(recorder_.questions_);
            recorder_.lines_.hold();
            yes = desktop_.ask(title, text);
        }
        if (yes) {
            recorder_.lines_.ahead("answer yes");
        }
        recorder_.release();
        recorder_.comment("question " + scenarioText(text) + (yes ? " yes" : " no"));
        return yes;
    }

private:
    /// The rest of the start waits for the end of the box in a replay, too. At that end it must be known
    /// which port does not open.
    void messageInStart(BoxKind kind, std::string_view title, std::string_view text) {
        recorder_.runTime();
        recorder_.lines_.flush();
        recorder_.write("box stands");
        recorder_.comment("message box " + scenarioText(text));
        {
            const Standing box(recorder_);
            desktop_.message(kind, title, text);
        }
        recorder_.catchUp();
        recorder_.lines_.hold();
        recorder_.write("box goes");
    }

    /// The handler that shows the box may be entered from below: the box serves the events itself.
    class Standing {
    public:
        explicit Standing(Recorder& recorder)
            : recorder_(recorder), handlers_(std::exchange(recorder.handlers_, 0)) {
            recorder_.wakeAt(recorder_.machine_.schedule.now());
        }
        ~Standing() { recorder_.handlers_ = handlers_; }
        Standing(const Standing&) = delete;
        Standing& operator=(const Standing&) = delete;

    private:
        Recorder& recorder_;
        int handlers_;
    };

    Recorder& recorder_;
    Desktop& desktop_;
};

/// Restarting the PC. A replay has to know what the system answers before it is asked.
class Recorder::Power final : public PowerControl {
public:
    explicit Power(Recorder& recorder) : recorder_(recorder) {}

    [[nodiscard]] Refusal exitWindows(bool restart, bool force) override {
        Refusal refusal = recorder_.machine_.power.exitWindows(restart, force);
        if (refusal != told_) {
            recorder_.lines_.ahead(refusal ? "power refuse " + scenarioText(*refusal) : "power ok");
            told_ = refusal;
        }
        return refusal;
    }

private:
    Recorder& recorder_;
    Refusal told_;
};

/// A handler that runs the event loop gets what is due at its own time. Time stands still meanwhile, and
/// input waits, as in a replay; the window is painted.
class Recorder::Loop final : public EventLoop {
public:
    explicit Loop(Recorder& recorder) : recorder_(recorder) {}
    void processEvents() override {
        const Counted handler(recorder_.handlers_);
        recorder_.schedule_.runDue();
        recorder_.machine_.loop.processEvents();
    }

private:
    Recorder& recorder_;
};

Recorder::Recorder(const Platform& machine, std::unique_ptr<TextSink> file, std::string_view commandLine,
                   std::function<WallTime()> wallClock)
    : machine_(machine), lines_(std::move(file)), wallClock_(std::move(wallClock)),
      port_(std::make_unique<Port>(*this)), boxes_(std::make_unique<Boxes>(*this)),
      power_(std::make_unique<Power>(*this)), loop_(std::make_unique<Loop>(*this)) {
    schedule_.handlers().faulted.connect([this](const Cause& cause, int fault) {
        comment("fault " + std::to_string(fault) + " ended " + textOf(cause));
    });
    lines_.head(recordingHeader(machine_.folder, machine_.desktop, commandLine));
}

Recorder::~Recorder() {
    end();
    *alive_ = false;
}

Platform Recorder::platform() {
    return {schedule_, *loop_, *port_, machine_.store, machine_.folder, *boxes_, *power_};
}

void Recorder::begin(Application& application) {
    starting_ = true;
    application.link().events().WrongPhase.connect(
        [this](const std::string& message) { comment("held WrongPhase " + scenarioText(message)); });
    application.console().runChanged().connect([this](const std::string& line) { comment(line); });
    application.input().onGesture = [this](Gesture made, const Control& control, std::string_view value) {
        gesture(made, control, value);
    };
}

void Recorder::started() {
    runTime();
    lines_.flush();
    starting_ = false;
    plan();
}

void Recorder::runTime() {
    if (!running_) {
        lines_.put("start\n");
        base_ = machine_.schedule.now();
        tellClock();
        running_ = true;
    }
}

void Recorder::end() {
    if (!running_) {
        return;
    }
    catchUp();
    questions_ = 0;
    untilHandled_ = false;
    write({}); // up to here
    lines_.flush();
    running_ = false;
}

void Recorder::catchUp() {
    if (!running_ || handlers_ > 0) {
        return;
    }
    const Milliseconds target = machine_.schedule.now() - base_;
    for (auto due = schedule_.nextDue(); running_ && due && *due <= target; due = schedule_.nextDue()) {
        clock_.set(std::max(clock_.now(), *due));
        lines_.moved();
        const Counted handler(handlers_);
        schedule_.runOne();
    }
    if (clock_.now() < target) {
        clock_.set(target);
        lines_.moved();
    }
}

void Recorder::windowResized(Twips width, Twips height) {
    catchUp();
    write("size " + std::to_string(width) + " " + std::to_string(height));
    wakeAt(machine_.schedule.now());
}

void Recorder::closeRequested() {
    catchUp();
    write("close");
    wakeAt(machine_.schedule.now());
}

void Recorder::refused(const Control& control, std::string_view why) {
    comment("refused " + nameOf(control) + " " + scenarioText(why));
}

void Recorder::leaveRequested() {
    catchUp();
    write("call Quillon.LeaveNow");
    wakeAt(machine_.schedule.now());
}

void Recorder::gesture(Gesture gesture, const Control& control, std::string_view value) {
    // While the port is closed the key may be the one that opens it, and whether that fails has to stand in
    // front of it. Else the line is in the file before the handler runs, in case it is the program's last.
    if (!port_->isOpen()) {
        untilHandled_ = true;
        lines_.hold();
    }
    std::string line(kGestures.at(static_cast<std::size_t>(gesture)));
    line += " " + nameOf(control);
    if (gesture == Gesture::Type || gesture == Gesture::Select) {
        line += " " + scenarioText(value);
    } else if (!value.empty()) {
        line.append(" ").append(value);
    }
    write(line);
    wakeAt(machine_.schedule.now());
}

void Recorder::received(std::string_view bytes) {
    later_ += bytes;
    if (!running_ || handlers_ > 0) {
        return; // the next wake delivers them
    }
    catchUp();
    deliver(std::exchange(later_, {}));
    wakeAt(machine_.schedule.now());
}

void Recorder::deliver(std::string_view bytes) {
    if (!running_) {
        return;
    }
    if (const std::optional<int> port = port_->takeArrival()) {
        write("port " + std::to_string(*port) + " comes");
        port_->tellDevice();
        failing_.erase(*port);
        const Counted handler(handlers_);
        port_->handArrival();
    }
    for (; !bytes.empty() && running_; bytes.remove_prefix(std::min(kPiece, bytes.size()))) {
        const std::string_view piece = bytes.substr(0, kPiece);
        write("rx " + scenarioText(piece));
        const Counted handler(handlers_);
        port_->hand(piece);
    }
}

void Recorder::opened(int port, bool succeeded) {
    if (failing_.contains(port) == succeeded) {
        lines_.ahead("port " + std::to_string(port) + (succeeded ? " ok" : " fail"));
        succeeded ? (void)failing_.erase(port) : (void)failing_.insert(port);
    }
}

/// The machine is to call at that time of its own, if it is not going to call earlier.
void Recorder::wakeAt(Milliseconds time) {
    if (!running_ || (planned_ && *planned_ <= time)) {
        return;
    }
    planned_ = time;
    machine_.schedule.post(time - machine_.schedule.now(), [this, time, alive = alive_] {
        if (*alive && planned_ == time) {
            planned_.reset();
            wake();
        }
    });
}

void Recorder::wake() {
    // A handler may end with a fault that goes past here; the machine has to call again all the same.
    struct Planned {
        Recorder& recorder;
        ~Planned() { recorder.plan(); }
    } const planned{*this};
    if (handlers_ == 0) {
        untilHandled_ = false;
        release();
        catchUp();
        deliver(std::exchange(later_, {}));
        if (clock_.now() - lines_.toldTo() >= kLongestSilence) {
            write({});
        }
        if (clock_.now() - clockLook_ >= kLongestSilence) {
            tellClock();
        }
    }
}

void Recorder::plan() {
    const Milliseconds report = lines_.toldTo() + kLongestSilence;
    wakeAt(base_ + std::min(schedule_.nextDue().value_or(report), report));
}

void Recorder::write(std::string_view line) {
    if (running_) {
        lines_.command(clock_.now(), line);
    }
}

void Recorder::comment(std::string_view text) {
    lines_.remark(clock_.now(), text);
}

/// Writes the lines that are held, unless something else still has to come before them.
void Recorder::release() {
    if (questions_ == 0 && !untilHandled_) {
        lines_.flush();
    }
}

/// Records the PC's clock: at the begin, when it was set or the PC has slept, and now and then.
void Recorder::tellClock() {
    if (!wallClock_) {
        return;
    }
    const WallTime now = wallClock_();
    const Milliseconds ahead = now.sinceEpoch - machine_.schedule.now();
    clockLook_ = clock_.now();
    if (!running_ || std::abs(ahead - clockAhead_) > kClockStep || clockLook_ - clockTold_ >= kClockPeriod) {
        comment("clock " + isoText(now));
        clockAhead_ = ahead;
        clockTold_ = clockLook_;
    }
}

} // namespace quillon
