#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "Invariants.h"
#include "Watch.h"
#include "tools/scenario/Rig.h"

namespace quillon {

/// What an operator, a generator and a line do to the application: a scenario file without its expectations.
struct Plan {
    std::string commandLine;
    std::vector<std::string> configuration; ///< lines of the section CONFIG
    std::optional<std::string>
        generator;                  ///< options of the simulated one; nothing: the lines tell what it says
    std::vector<std::string> lines; ///< scenario commands
    std::vector<std::string> before = {};       ///< the same, before the start
    std::vector<std::string> installation = {}; ///< lines of "temp.ini"
};

/// The plan as a file for quillon-scenario.
[[nodiscard]] std::string scenarioOf(const Plan& plan);

/// The whole application on the scenario runner's rig, watched for what must never happen.
class Session {
public:
    /// Creates the application, shows it and connects the generator. The plan's lines are not carried out.
    /// What it reaches is marked.
    explicit Session(const Plan& plan, Marks marks = {});
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// Carries one scenario command out: wait, gap, sim, simulate, msg, ack, port, press, release, hold,
    /// click, type, select, slide, close, answer, call without arguments. False when it names a control that
    /// is not there; nothing happens then.
    bool perform(std::string_view line);
    void play(const std::vector<std::string>& lines) {
        for (const std::string& line : lines) {
            perform(line);
        }
    }
    /// What the generator answers to a command of its own console.
    std::string ask(std::string_view command) { return rig_.farEnd.command(command); }
    /// The machine is made faultless, and the operator leaves panels, mode and screens one after the other
    /// until only "Close" is left.
    void comeToRest();
    /// Nobody does anything for 130 s.
    void stand();
    /// The last level, with what must hold at rest and at the end.
    void leave();

    /// Names of all controls that a hand can reach now and that take something from it.
    [[nodiscard]] std::vector<std::string> reachable();
    [[nodiscard]] bool reaches(std::string_view name);
    [[nodiscard]] Control* find(std::string_view name) { return rig_.find(name); }
    [[nodiscard]] const std::set<std::string>& held() const { return facts_.held; }
    [[nodiscard]] bool ended() const { return rig_.ended(); }
    /// Whether two sessions stand in the same place, as far as there is more to do from one than from the
    /// other: the keys in reach and those held, the frames on show, the timers that run, the phase, the run,
    /// the switches of X-rays and poll. No texts, no values, no time that is left.
    [[nodiscard]] std::uint64_t situation();
    /// A hand was at this control, in whatever session marks the same probes.
    [[nodiscard]] bool touched(std::string_view name) const;
    /// The shortest of the console's waits; the poll's pace while it waits for nothing.
    [[nodiscard]] Milliseconds nextWait();

    /// The commands carried out, unless it does not keep them.
    [[nodiscard]] const std::vector<std::string>& done() const { return done_; }
    void keepDone(bool keep) { keepDone_ = keep; }
    /// What did not hold.
    [[nodiscard]] const std::vector<Violation>& violations() const { return violations_; }
    /// The same as text, a line each.
    [[nodiscard]] std::string complaints() const;
    /// Told of every frame on the line, without its end bytes.
    std::function<void(std::string_view frame)> onFrame;
    /// Told of every message that comes to an open line, the same way.
    std::function<void(std::string_view report)> onReport;
    [[nodiscard]] std::uint64_t frameCount() const { return frameCount_; }
    [[nodiscard]] std::uint64_t reportCount() const { return reportCount_; }

    [[nodiscard]] Application& application() { return rig_.application(); }
    [[nodiscard]] MemoryPlatform& machine() { return rig_.machine; }
    /// Its line can be given faults.
    [[nodiscard]] FarEnd& farEnd() { return rig_.farEnd; }
    std::function<std::string(std::string_view bytes)> toConsole;

private:
    void frameWritten(std::string_view text);
    std::string arriving(std::string_view bytes);
    void heard(std::string_view bytes);
    void look();
    bool perform(std::string_view word, std::string_view rest);
    bool befalls(std::string_view word, std::string_view rest);
    void restartIfAsked();
    bool act(std::string_view word, const std::string& name, std::string_view value);
    bool clickIfReachable(std::string_view name);
    void clearWhatStands();
    void becomeHealthy();
    void bringKeysBack();
    [[nodiscard]] bool atRest();
    [[nodiscard]] const ServiceSession& doing() { return application().console().session(); }
    void check(When when);

    std::ostream nowhere_{nullptr};
    Rig rig_{nowhere_};
    Facts facts_{rig_};
    Marks marks_;
    std::optional<Watch> watch_;
    std::vector<Violation> violations_;
    std::string partialText_;
    std::vector<std::string> done_;
    std::uint64_t frameCount_ = 0;
    std::uint64_t reportCount_ = 0;
    std::size_t answeredBoxes_ = 0; ///< up to this one boxes have their answers
    std::size_t restarts_ = 0;
    bool keepDone_ = true;
    bool acknowledges_ = false;
    bool honest_ = false; ///< one simulated generator from the start to the end
    bool led_ = false;    ///< the generator was led elsewhere than by its console, at some time
    bool forced_ = false; ///< the generator was put into a phase from outside
};

} // namespace quillon
