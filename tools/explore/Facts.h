#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "base/Text.h"
#include "console/ServiceSession.h"
#include "console/ctrQuillonConsole.h"
#include "link/TorvaneSerial.h"
#include "tools/scenario/Rig.h"

namespace quillon {

/// Whether the operator can do something to the control.
[[nodiscard]] bool takesSomething(const Control& control);

/// Timers of the console that belong to no run.
inline constexpr std::array<std::string_view, 5> kOtherTimers{"tmrDelayShow", "tmrWaitStartGenerator",
                                                              "tmrWaitRefresh", "tmrDelay", "tmrShutdown"};

/// What is known from outside of a console in the middle of its work: what passed on the line, and whose
/// hands did what.
class Facts {
public:
    explicit Facts(Rig& rig) : rig_(rig) {}

    /// The console stands; its events are listened to from now on.
    void begin();
    /// A message of the generator on an open line, without its end bytes.
    void reportHeard(std::string_view text);
    /// A frame of the console, without its end bytes.
    void frameWritten(std::string_view text);
    /// The operator has touched a control that can be reached; its commands may go out now.
    void handAt(std::string_view name);
    /// The PC slept; nothing could happen.
    void slept(Milliseconds ms);
    /// The operator wants the PC to start anew.
    [[nodiscard]] bool restarts() const;
    /// To be called whenever something may have changed.
    void look();

    [[nodiscard]] Application& application() const { return rig_.application(); }
    [[nodiscard]] const ctrQuillonConsole& console() const { return application().console(); }
    [[nodiscard]] const ServiceSession& doing() const { return console().session(); }
    [[nodiscard]] const TorvaneSerialV3_07_QLC1& link() const { return application().link(); }
    [[nodiscard]] bool reaches(const Control& control) const {
        return application().input().reachable(control);
    }
    [[nodiscard]] bool portOpen() const { return rig_.machine.port.isOpen(); }
    /// A timer of the console.
    [[nodiscard]] bool running(std::string_view timer) const;
    /// Nothing is under way or to be answered, and no wait runs that could change what is on the screen.
    [[nodiscard]] bool atRest() const;
    /// The key that closes goes down, or comes up.
    void closeDown();
    void closeUp(Run before);
    [[nodiscard]] Milliseconds now() const { return rig_.machine.time.now(); }
    /// The console, the link control, and the panels that are open.
    [[nodiscard]] std::vector<const ControlHost*> hosts() const;
    /// The panel in front; empty when there is none.
    [[nodiscard]] const ControlHost* panel() const;
    /// All that a hand can reach and that takes something from it.
    [[nodiscard]] std::vector<const Control*> inReach() const;

    std::set<std::string> held;   ///< keys under a finger
    std::string frame;            ///< the last that was written
    std::int32_t phase = 0;       ///< as last reported, 1 to 13; 0 before
    Milliseconds greetedAt = 0;   ///< when the console was about to greet, at the latest
    Milliseconds phaseAt = 0;     ///< when a phase above 1 was reported last
    std::string rays;             ///< the last word to the generator about X-rays
    bool raysByGenerator = false; ///< it has said since whether they are allowed
    Run run = Run::None;          ///< what the console does, and
    Run runBefore = Run::None;    ///< what it did before
    std::int16_t busy = 0;
    bool enableAsked = false;                  ///< by the generator, since the queue was empty
    std::set<std::int32_t> masks{0};           ///< of phases, all that stood since the queue was empty
    std::map<std::string_view, int> allowance; ///< transmissions that keys have paid for
    Milliseconds pollAway = -1;                ///< since when nothing asks, and nothing holds it; -1: it asks
    std::optional<bool> raysBefore;            ///< what was allowed before a press that came to nothing
    bool handedOver = false;                   ///< to its users, at the end of the wait for that
    bool frameTaken = false;                   ///< by a key that does nothing else in this mode
    std::string entered; ///< the last command into a service mode that no way out followed
    std::string stood;   ///< what the simulated generator says of itself

private:
    void phaseHeard(std::string_view value);
    void watchPoll();
    void watchUsers();

    bool arriving_ = false;  ///< the wait for the users' machine ran
    bool refreshed_ = false; ///< the wait after a refresh ran, whose end cancels that
    bool raysAtPress_ = false;
    bool raysTold_ = false; ///< by somebody else, since the press
    Rig& rig_;
    std::int32_t mask_ = 0;
};

} // namespace quillon
