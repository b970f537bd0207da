#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

#include "FarEnd.h"
#include "Report.h"
#include "runtime/MemoryPlatform.h"
#include "runtime/Operations.h"
#include "runtime/Signal.h"
#include "shell/Application.h"
#include "shell/Recorder.h"

namespace quillon {

/// The whole application on a machine in memory, with everything that happens reported.
class Rig {
public:
    explicit Rig(std::ostream& out);
    ~Rig();
    Rig(const Rig&) = delete;
    Rig& operator=(const Rig&) = delete;

    MemoryPlatform machine;
    Report report;
    FarEnd farEnd;
    std::string commandLine;

    /// Writes what happens from the start on down as the program's recorder does.
    void record(std::unique_ptr<TextSink> file) { recordTo_ = std::move(file); }

    /// Creates the application and shows it.
    void start();
    /// The application is there, and nothing has happened to it yet.
    std::function<void()> onStarted;
    [[nodiscard]] bool started() const { return application_ != nullptr; }
    [[nodiscard]] bool ended() const { return started() && application_->ended(); }
    [[nodiscard]] Application& application() { return *application_; }

    /// Lets time pass, no further than to the end of the application.
    void wait(Milliseconds ms);
    /// What the operator does to the application passes here, so that it is recorded.
    void resize(Twips width, Twips height);
    void requestClose();
    void leaveRequested();
    /// The operator is about to act: what is recorded is up to date.
    void catchUp();

    /// "frmMain", "Quillon", "TorvaneSerial" or the key of an open panel; empty when there is none such.
    [[nodiscard]] ControlHost* findHost(std::string_view name);
    /// "OWNER.NAME", "OWNER.NAME(INDEX)" or the name of a host alone; empty when there is none such.
    [[nodiscard]] Control* find(std::string_view name);

    /// A public operation or property: whose it is, and its name.
    struct Member {
        const Operations& operations;
        std::string_view owner;
        std::string_view name;
    };
    /// "NAME" of the link control, or with its owner in front.
    [[nodiscard]] Member member(std::string_view name);

private:
    void reportMachine();
    void reportEvents();
    template <typename... Arguments>
    void reportEvent(std::string_view owner, std::string_view name, Signal<Arguments...>& signal);

    std::unique_ptr<TextSink> recordTo_;
    std::unique_ptr<Recorder> recorder_;
    std::unique_ptr<Application> application_;
};

} // namespace quillon
