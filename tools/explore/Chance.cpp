#include "Chance.h"

#include <algorithm>
#include <array>

#include "base/Phase.h"
#include "link/InboundTable.h"

namespace quillon {

namespace {

// clang-format off
constexpr std::array<int, 11> kAnyWait{50, 200, 350, 500, 1000, 3000, 5000, 12000, 25000, 50000, 61000};
constexpr std::array<std::string_view, 35> kMishaps{
    "silence on", "silence off", "silence off", "noise 30", "noise 0", "drop 1", "drop 6", "drop every 3",
    "drop every 0", "power off", "power on", "power on", "error 12", "error 0", "error L3", "warning 5",
    "warning 40", "aec 1", "aec 2", "heat 99", "heat 10", "door 1", "door 0", "rotor 1", "rotor 0", "prepare",
    "expose", "expose", "release", "fluoro on", "fluoro off", "set dipswitch 0", "set dipswitch 1", "set ack off",
    "set modechange 90000"};
constexpr std::array<std::string_view, 8> kGenerators{
    "", "startphase=2", "startphase=6", "startphase=8", "autoexpose=1 startphase=2",
    "type=rad thirdtube=1", "techmode=0 end=lfetx answer=300 ack=200", "end=etx modechange=4000 startphase=2"};
constexpr std::array<std::string_view, 5> kSwitches{"", "", "", "-swsync -ResetCounters", "-P2 -ORLA -logFile"};
constexpr std::array<std::string_view, 10> kValueFaults{
    "stuck 1", "stuck 0", "wrong 20", "wrong 100", "wrong 0", "twice 50", "twice 0", "answer 2500", "answer 40", "ack 1500"};
constexpr std::array<std::string_view, 6> kMachineFaults{
    "gap 2000", "gap 60000", "gap 3600000", "port 1 fail", "port 1 ok", "port 1 ok"};
constexpr std::array<std::string_view, 12> kValues{
    "", "0", "1", "2", "3", "50", "100", "-1", "12.5", "40000", "99999999999", "x"};
// clang-format on

/// By how much a walk's odds differ from the usual ones.
constexpr std::array kFactors{0, 1, 1, 2, 5};

} // namespace

// clang-format off
const std::array<Chance::Sort, Chance::kSorts> Chance::kTable{{
    {16, &Chance::shortWait}, {14, &Chance::anyWait}, {12, &Chance::modeKey}, {12, &Chance::anyKey}, // always
    {8, &Chance::newKey}, {5, &Chance::hold}, {7, &Chance::letGo}, {3, &Chance::slideOff}, {3, &Chance::phase},
    {10, &Chance::mishap}, {5, &Chance::report}, {2, &Chance::valueFault}, {1, &Chance::answer}, {1, &Chance::machineFault},
    {1, &Chance::end},
}};
// clang-format on

Chance::Chance(const Ground& ground, Dice& dice) : ground_(ground), dice_(dice) {
    constexpr std::size_t kAlways = 4;
    for (std::size_t i = 0; i < kSorts; ++i) {
        const int factor = dice_.oneOf(kFactors);
        odds_[i] = kTable[i].usual * (i < kAlways && factor == 0 ? 1 : factor);
    }
    mayEnd_ = dice_.below(4) == 0;
}

Plan Chance::plan() {
    Plan plan = ground_.start;
    if (ground_.varies) {
        plan.commandLine = dice_.oneOf(kSwitches);
        plan.configuration.clear();
        if (dice_.below(2) == 0) {
            plan.configuration.emplace_back(dice_.below(2) == 0 ? "REMOTE=YES" : "ORLA=YES");
        }
        if (dice_.below(4) == 0) {
            plan.installation = {"[TM]",        "TM=1",           "[ThirdTube]",
                                 "ThirdTube=1", "[AutocalRetry]", "AutocalRetry=1"};
        }
        plan.generator =
            "seed=" + std::to_string(dice_.below(1000)) + " " + std::string(dice_.oneOf(kGenerators));
    }
    return plan;
}

std::string Chance::next(Session& session) {
    std::size_t all = 0;
    for (const int odds : odds_) {
        all += static_cast<std::size_t>(odds);
    }
    std::size_t roll = dice_.below(all);
    std::size_t at = 0;
    for (; roll >= static_cast<std::size_t>(odds_[at]); ++at) {
        roll -= static_cast<std::size_t>(odds_[at]);
    }
    return (this->*kTable[at].move)(session);
}

// The operator -------------------------------------------------------------------------------------------

std::string Chance::modeKey(Session& session) {
    // Keys that begin or end a mode come more often than chance would bring them.
    std::vector<std::string> names = session.reachable();
    std::erase_if(names, [](const std::string& name) { return !leadsOn(name); });
    return touch(session, names);
}

std::string Chance::anyKey(Session& session) {
    return touch(session, session.reachable());
}

std::string Chance::newKey(Session& session) {
    std::vector<std::string> names = session.reachable();
    std::erase_if(names, [&](const std::string& name) { return session.touched(name); });
    return names.empty() ? modeKey(session) : touch(session, names);
}

std::string Chance::touch(Session& session, const std::vector<std::string>& names) {
    if (names.empty()) {
        return "wait 1000";
    }
    const std::string& name = dice_.oneOf(names);
    const Control& control = *session.find(name);
    // A session that ends early reaches little.
    if (name == "Quillon.cmbClose" && control.caption() == "Close" && !mayEnd_) {
        return "wait 500";
    }
    switch (control.kind()) {
    case Kind::TextBox:
        return "type " + name + " " + std::string(dice_.oneOf(kValues));
    case Kind::Slider:
        return "slide " + name + " " + std::to_string(dice_.below(200));
    case Kind::List:
        return control.items().empty() ? "wait 200" : "select " + name + " " + dice_.oneOf(control.items());
    default:
        return "click " + name;
    }
}

std::string Chance::hold(Session& session) {
    // A finger that is down already makes this the second one.
    std::vector<std::string> names = session.reachable();
    std::erase_if(names, [&](const std::string& name) { return session.find(name)->kind() != Kind::Button; });
    if (names.empty()) {
        return "wait 1000";
    }
    const std::string& name = dice_.oneOf(names);
    return dice_.below(4) == 0 ? "hold " + name + " 15000" : "press " + name;
}

std::string Chance::letGo(Session& session) {
    const std::vector<std::string> held(session.held().begin(), session.held().end());
    return held.empty() ? hold(session) : "release " + dice_.oneOf(held);
}

std::string Chance::slideOff(Session& session) {
    return session.held().empty() ? hold(session) : "release " + *session.held().begin() + " outside";
}

std::string Chance::answer(Session&) {
    // The PC starts anew when it is asked to.
    return dice_.below(2) == 0 && mayEnd_ ? "answer yes" : "answer no";
}

std::string Chance::end(Session&) {
    if (!mayEnd_) {
        return "close"; // which refuses
    }
    return dice_.below(8) == 0 ? "call Quillon.LeaveNow" : "wait 500";
}

// Time, the generator, the machine -----------------------------------------------------------------------

std::string Chance::shortWait(Session& session) {
    return dice_.below(2) == 0 ? "wait " + std::to_string(session.nextWait()) : "wait 350";
}

std::string Chance::anyWait(Session&) {
    return "wait " + std::to_string(dice_.oneOf(kAnyWait));
}

std::string Chance::phase(Session& session) {
    return ground_.start.generator ? "sim phase " + std::to_string(1 + dice_.below(kPhaseRows.size()))
                                   : mishap(session);
}

std::string Chance::mishap(Session&) {
    return ground_.start.generator ? "sim " + std::string(dice_.oneOf(kMishaps))
                                   : dice_.oneOf(ground_.generator);
}

std::string Chance::report(Session&) {
    // Values that the generator would not send just now, or ever. A phase that a simulated one is not in
    // would leave both sides with their own idea of the truth.
    const InboundRow& row = dice_.oneOf(kInboundTable);
    return row.key == "ST" ? "wait 350" : "msg " + std::string(row.key) + std::string(dice_.oneOf(kValues));
}

std::string Chance::valueFault(Session& session) {
    return ground_.start.generator ? "sim set " + std::string(dice_.oneOf(kValueFaults)) : report(session);
}

std::string Chance::machineFault(Session&) {
    return std::string(dice_.oneOf(kMachineFaults));
}

} // namespace quillon
