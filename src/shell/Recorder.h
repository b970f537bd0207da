#pragma once

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "runtime/Clock.h"
#include "runtime/Schedule.h"
#include "shell/Application.h"
#include "ui/Input.h"

namespace quillon {

/// Writes a session down as a scenario: the files in use, then what came in and what the operator did, and
/// when. Played again it gives the same frames at the same times. What the application did, and the faults
/// that have ended a handler, stand between as remarks.
///
/// The application runs on its own clock, stepped from due time to due time, so a replay does not drift from
/// the recording as real timers, always a little late, would make it. The clock begins when the application
/// has started, however long a message box kept it.
class Recorder {
public:
    /// Begins the file. The application gets platform() in place of the machine; both outlive the recorder's
    /// application.
    Recorder(const Platform& machine, std::unique_ptr<TextSink> file, std::string_view commandLine);
    ~Recorder();
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    [[nodiscard]] Platform platform();

    /// The application has started: its time begins to run.
    void begin(Application& application);
    /// Nothing more is recorded: the application is about to go.
    void end();

    /// Brings the application's time up to the machine's. For the front end, before it hands over a key, a
    /// size or a wish to close. No effect while a handler runs.
    void catchUp();
    void windowResized(Twips width, Twips height);
    void closeRequested();
    /// The system wants the program to end. What is held is to be let go before.
    void leaveRequested();

private:
    class Port;
    class Boxes;
    class Loop;

    void write(std::string_view line);
    void writeAhead(std::string_view line);
    void comment(std::string_view text);
    void put(std::string_view text);
    void flush();
    [[nodiscard]] bool holding() const { return questions_ > 0 || untilHandled_; }

    void gesture(Gesture gesture, const Control& control, std::string_view value);
    void received(std::string_view bytes);
    void deliver(std::string_view bytes);
    void opened(int port, bool succeeded);
    void wakeAt(Milliseconds time);
    void wake();
    void plan();

    Platform machine_;
    std::unique_ptr<TextSink> file_;
    VirtualClock clock_;
    Schedule schedule_{clock_};
    std::unique_ptr<Port> port_;
    std::unique_ptr<Boxes> boxes_;
    std::unique_ptr<Loop> loop_;

    bool running_ = false;
    Milliseconds base_ = 0;    // the machine's time when the application's began
    Milliseconds written_ = 0; // the time up to which the file tells
    bool moved_ = false;       // time went on, or something fell due, since then
    int handlers_ = 0;         // that run and must not be entered from below
    int questions_ = 0;        // that stand
    bool untilHandled_ = false;
    std::string held_;  // lines that wait for what has to stand in front of them
    std::string later_; // bytes that came while a handler ran
    std::set<int> failing_;
    std::optional<Milliseconds> planned_; // the machine's time of the next wake
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

} // namespace quillon
