#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "runtime/Clock.h"
#include "runtime/Schedule.h"
#include "runtime/WallTime.h"
#include "shell/Application.h"
#include "shell/RecordingLines.h"
#include "ui/Input.h"

namespace quillon {

/// Writes a session down as a scenario: the files in use, then what came in and what the operator did, and
/// when. Played again it gives the same frames at the same times. What the application did, and the faults
/// that have ended a handler, stand between as remarks.
///
/// What the file does not take for a while is lost, and a line in the file says so.
///
/// The application runs on its own clock, stepped from due time to due time, so a replay does not drift from
/// the recording as real timers, always a little late, would make it. The clock begins when the application
/// has started, or with a message box that keeps it from that: timers and the line go on behind the box.
class Recorder {
public:
    /// Begins the file. The application gets platform() in place of the machine; both outlive the recorder's
    /// application. The PC's own clock stands in remarks, where there is one.
    Recorder(const Platform& machine, std::unique_ptr<TextSink> file, std::string_view commandLine,
             std::function<WallTime()> wallClock = {});
    ~Recorder();
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    [[nodiscard]] Platform platform();

    /// The application is about to start.
    void begin(Application& application);
    /// It has started.
    void started();
    /// Nothing more is recorded: the application is about to go.
    void end();

    /// Brings the application's time up to the machine's. For the front end, before it hands over a key, a
    /// size or a wish to close. No effect while a handler runs.
    void catchUp();
    void windowResized(Twips width, Twips height);
    void closeRequested();
    /// A touch of the control that the window did not hand on, and what it said.
    void refused(const Control& control, std::string_view why);
    /// The system wants the program to end. What is held is to be let go before.
    void leaveRequested();

private:
    class Port;
    class Boxes;
    class Power;
    class Loop;

    void write(std::string_view line);
    void comment(std::string_view text);
    void release();
    void tellClock();
    void runTime();

    void gesture(Gesture gesture, const Control& control, std::string_view value);
    void received(std::string_view bytes);
    void deliver(std::string_view bytes);
    void opened(int port, bool succeeded);
    void wakeAt(Milliseconds time);
    void wake();
    void plan();

    Platform machine_;
    RecordingLines lines_;
    std::function<WallTime()> wallClock_;
    VirtualClock clock_;
    Schedule schedule_{clock_};
    std::unique_ptr<Port> port_;
    std::unique_ptr<Boxes> boxes_;
    std::unique_ptr<Power> power_;
    std::unique_ptr<Loop> loop_;

    bool running_ = false;
    bool starting_ = false;
    Milliseconds base_ = 0;       // the machine's time when the application's began
    Milliseconds clockLook_ = 0;  // when the PC's clock was looked at last,
    Milliseconds clockTold_ = 0;  // was told,
    Milliseconds clockAhead_ = 0; // and how far it was ahead of the machine's time then
    int handlers_ = 0;            // that run and must not be entered from below
    int questions_ = 0;           // that stand
    bool untilHandled_ = false;
    std::string later_; // bytes that came while a handler ran
    std::set<int> failing_;
    std::optional<Milliseconds> planned_; // the machine's time of the next wake
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

} // namespace quillon
