#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "console/Indicators.h"
#include "runtime/EventLoop.h"
#include "runtime/Platform.h"
#include "runtime/Schedule.h"
#include "ui/ControlHost.h"
#include "ui/Input.h"

namespace quillon {

class frmMain;
class ctrQuillonConsole;
class TorvaneSerialV3_07_QLC1;

/// The machine that the application runs on. All of it must outlive the application.
struct Platform {
    Schedule& schedule;
    EventLoop& loop;
    SerialPort& port;
    UserStore& store;
    Folder& folder;
    Desktop& desktop;
    PowerControl& power;
};

/// The whole application behind its one window: form, console, link control and the operator's input.
class Application {
public:
    /// Creates the controls, inner ones first. Nothing is shown and no port is opened yet.
    Application(const Platform& platform, std::string_view commandLine);
    ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    /// The form's load step, then everything is shown.
    void start();

    [[nodiscard]] ControlHost& form();
    [[nodiscard]] frmMain& main();
    [[nodiscard]] ctrQuillonConsole& console();
    [[nodiscard]] TorvaneSerialV3_07_QLC1& link();
    [[nodiscard]] Input& input();
    /// What a front end shows beside the controls.
    [[nodiscard]] Indicators indicators();

    /// Told of every change on the screen. Not owned.
    void setScreen(ChangeSink* screen);
    /// The operator gave the window another size.
    void resizeWindow(Twips width, Twips height);
    /// The window's close button: refused until the console has said goodbye.
    void requestClose();
    /// The system wants the program to end: the generator is given back and the window unloads by itself,
    /// within a few seconds.
    void leave();
    /// The window has unloaded: the process ends.
    [[nodiscard]] bool ended() const;
    /// Called once when it unloads.
    std::function<void()> onEnded;

private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace quillon
