#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "Watch.h"
#include "runtime/MemoryPlatform.h"
#include "shell/Application.h"
#include "sim/Generator.h"

namespace quillon {

/// What an operator, a generator and a line do to the application: a scenario file without its expectations.
struct Plan {
    std::string commandLine;
    std::vector<std::string> configuration; ///< lines of the section CONFIG
    std::string generator;                  ///< options of the simulated generator, blanks between
    std::vector<std::string> lines;         ///< scenario commands
};

/// The plan as a file for quillon-scenario.
[[nodiscard]] std::string scenarioOf(const Plan& plan);

/// The whole application against the simulated generator in virtual time, watched for what must never happen.
class Session {
public:
    /// Creates the application, shows it and connects the generator. The plan's lines are not carried out.
    explicit Session(const Plan& plan);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// Carries one scenario command out: wait, sim, msg, press, release, click, type, select, slide, answer.
    /// False when it names a control that is not there; nothing happens then.
    bool perform(std::string_view line);
    /// What the generator answers to a command of its own console.
    std::string ask(std::string_view command);
    /// The machine becomes a healthy one, and the operator leaves level by level until only "Close" is left.
    void comeToRest();
    /// The last level. A console that does not let its operator go is a violation.
    void leave();

    /// Names of all controls that a hand can reach now and that take something from it.
    [[nodiscard]] std::vector<std::string> reachable();
    [[nodiscard]] Control* find(std::string_view name);
    [[nodiscard]] const std::set<std::string>& held() const { return held_; }
    [[nodiscard]] bool ended() const { return application_->ended(); }

    /// The commands carried out, unless it does not keep them.
    [[nodiscard]] const std::vector<std::string>& done() const { return done_; }
    void keepDone(bool keep) { keepDone_ = keep; }
    [[nodiscard]] const std::vector<std::string>& violations() const { return watch_->violations(); }
    /// What becomes of bytes on the line: asked for each write of the console and each message of the
    /// generator.
    std::function<std::string(std::string_view bytes)> toGenerator;
    std::function<std::string(std::string_view bytes)> toConsole;
    /// Told of every frame on the line, without its end bytes.
    std::function<void(std::string_view frame)> onFrame;
    [[nodiscard]] std::uint64_t frameCount() const { return frameCount_; }
    [[nodiscard]] std::uint64_t reportCount() const { return reportCount_; }

    MemoryPlatform machine;
    [[nodiscard]] Application& application() { return *application_; }

private:
    void written(std::string_view bytes);
    void frameWritten(const std::string& text);
    void deliver(std::string_view bytes);
    void heard(std::string_view bytes);
    void wakeGenerator();
    void advance(Milliseconds ms);
    bool perform(std::string_view word, std::string_view rest);
    bool act(std::string_view word, const std::string& name, std::string_view value);
    bool clickIfReachable(std::string_view name);
    void clearWhatStands();
    [[nodiscard]] bool running(std::string_view timer);

    std::unique_ptr<simulator::Generator> generator_;
    std::unique_ptr<Application> application_;
    std::unique_ptr<Watch> watch_;
    std::string partialFrame_;
    std::string partialText_;
    std::optional<Milliseconds> wake_;
    bool writing_ = false;

    std::vector<std::string> done_;
    std::uint64_t frameCount_ = 0;
    std::uint64_t reportCount_ = 0;
    std::set<std::string> held_;
    bool keepDone_ = true;
    bool forced_ = false; ///< the generator was put into a phase from outside
};

} // namespace quillon
