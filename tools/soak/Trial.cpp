#include "Trial.h"

#include <algorithm>
#include <array>

#include "link/InboundTable.h"
#include "ui/Control.h"

namespace quillon {

namespace {

// clang-format off
constexpr std::array<int, 10> kWaits{50, 200, 350, 500, 1000, 3000, 5000, 12000, 25000, 50000};
constexpr std::array<std::string_view, 34> kMishaps{
    "silence on", "silence off", "silence off", "noise 30", "noise 0", "drop 1", "drop 6", "drop every 3",
    "drop every 0", "power off", "power on", "power on", "error 12", "error 0", "error L3", "warning 5",
    "warning 40", "aec 1", "aec 2", "heat 99", "heat 10", "door 1", "door 0", "rotor 1", "rotor 0", "prepare",
    "expose", "expose", "release", "fluoro on", "fluoro off", "set dipswitch 0", "set dipswitch 1", "set ack off"};
constexpr std::array<std::string_view, 8> kGenerators{
    "", "startphase=2", "startphase=6", "startphase=8", "autoexpose=1 startphase=2",
    "type=rad thirdtube=1", "techmode=0 end=lfetx answer=300 ack=200", "end=etx modechange=4000 startphase=2"};
constexpr std::array<std::string_view, 5> kSwitches{"", "", "", "-swsync -ResetCounters", "-P2 -ORLA -logFile"};
constexpr std::array<std::string_view, 12> kValues{
    "", "0", "1", "2", "3", "50", "100", "-1", "12.5", "40000", "99999999999", "x"};
// clang-format on

/// Keys that begin or end a mode come more often than chance would bring them.
constexpr std::array<std::string_view, 14> kModeKeys{"Quillon.cmbConfiguration",
                                                     "Quillon.cmbManualCalibration",
                                                     "Quillon.cmbAutocalibration",
                                                     "Quillon.cmbReadExposureCounters",
                                                     "Quillon.cmbGoToUserMode",
                                                     "Quillon.cmbResetError",
                                                     "SelWSCal.cmdOK",
                                                     "SelWSAutocal.cmdOK",
                                                     "AutocalSelFocusOrParameter.cmbOKFocus",
                                                     "AutocalSelFocusOrParameter.cmbOKParameter",
                                                     "AutocalWarning.cmbAutocalYes",
                                                     "Error.cmbOK",
                                                     "TorvaneSerial.cmbAutocalConfirm",
                                                     "TorvaneSerial.cmbAutocalDismiss"};

bool same(const std::string& a, const std::string& b) {
    // Times differ while lines are taken out; what went wrong does not.
    return a.substr(a.find(' ')) == b.substr(b.find(' '));
}

} // namespace

Plan Chance::plan() {
    Plan plan;
    plan.commandLine = oneOf(kSwitches);
    if (below(2) == 0) {
        plan.configuration.push_back(below(2) == 0 ? "REMOTE=YES" : "ORLA=YES");
    }
    plan.generator = "seed=" + std::to_string(below(1000)) + " " + std::string(oneOf(kGenerators));
    return plan;
}

std::string Chance::next(Session& session) {
    const std::size_t roll = below(100);
    if (roll < 50) {
        return hand(session);
    }
    if (roll < 80) {
        return "wait " + std::to_string(oneOf(kWaits));
    }
    if (roll < 94) {
        return mishap();
    }
    return report();
}

std::string Chance::hand(Session& session) {
    if (!session.held().empty() && below(3) != 0) {
        return "release " + *session.held().begin() + (below(4) == 0 ? " outside" : "");
    }
    std::vector<std::string> names = session.reachable();
    // Who closes the line by hand and leaves the page with the key has closed his only way back.
    std::erase(names, "TorvaneSerial.cmbCommOnOff");
    // A message leaves some keys behind it alive. Who presses those with the message still open gets panels
    // over panels, and keys as the wrong panel found them; see docs/safety.md.
    const auto onPanel = [](const std::string& name) {
        return !name.starts_with("Quillon.") && !name.starts_with("TorvaneSerial.");
    };
    if (std::any_of(names.begin(), names.end(), onPanel)) {
        std::erase_if(names, [&](const std::string& name) { return !onPanel(name); });
    }
    if (names.empty()) {
        return "wait 1000";
    }
    std::vector<std::string> modes;
    std::copy_if(names.begin(), names.end(), std::back_inserter(modes), [](const std::string& name) {
        return std::find(kModeKeys.begin(), kModeKeys.end(), name) != kModeKeys.end();
    });
    std::string name = !modes.empty() && below(3) == 0 ? oneOf(modes) : oneOf(names);
    // A session that says goodbye early has little to tell.
    if (name == "Quillon.cmbClose" && session.find(name)->caption() == "Close" && below(20) != 0) {
        return "wait 500";
    }
    return touch(session, name);
}

std::string Chance::touch(Session& session, const std::string& name) {
    const Control& control = *session.find(name);
    if (control.kind() == Kind::TextBox) {
        return "type " + name + " " + std::string(oneOf(kValues));
    }
    if (control.kind() == Kind::Slider) {
        return "slide " + name + " " + std::to_string(below(200));
    }
    if (control.kind() == Kind::List) {
        return control.items().empty() ? "wait 200" : "select " + name + " " + oneOf(control.items());
    }
    return (below(3) == 0 ? "press " : "click ") + name;
}

std::string Chance::mishap() {
    if (below(8) == 0) {
        return "sim phase " + std::to_string(1 + below(13));
    }
    return "sim " + std::string(oneOf(kMishaps));
}

std::string Chance::report() {
    // Values that the generator would not send just now, or ever. A phase it is not in would leave both sides
    // with their own idea of the truth, so phases come from the generator alone.
    const InboundRow& row = oneOf(kInboundTable);
    return row.key == "ST" ? "wait 350" : "msg " + std::string(row.key) + std::string(oneOf(kValues));
}

std::vector<std::string> violationsOf(std::uint32_t seed, int commands, Plan& played) {
    Chance chance(seed);
    played = chance.plan();
    Session session(played);
    for (int i = 0; i < commands && !session.ended() && session.violations().empty(); ++i) {
        session.perform(chance.next(session));
    }
    played.lines = session.done();
    session.leave();
    return session.violations();
}

std::vector<std::string> violationsOf(const Plan& plan) {
    Session session(plan);
    for (const std::string& line : plan.lines) {
        session.perform(line);
    }
    session.leave();
    return session.violations();
}

std::vector<std::string> shortest(std::vector<std::string> lines,
                                  const std::function<bool(const std::vector<std::string>&)>& fails) {
    for (std::size_t size = lines.size(); size > 0; size /= 2) {
        for (std::size_t at = 0; at < lines.size();) {
            std::vector<std::string> less = lines;
            const auto first = less.begin() + static_cast<std::ptrdiff_t>(at);
            less.erase(first, first + static_cast<std::ptrdiff_t>(std::min(size, lines.size() - at)));
            if (fails(less)) {
                lines = std::move(less);
            } else {
                at += size;
            }
        }
    }
    return lines;
}

Failure shrunk(std::uint32_t seed, Plan plan) {
    Failure failure{seed, violationsOf(plan), plan};
    if (failure.violations.empty()) {
        return failure;
    }
    plan.lines = shortest(plan.lines, [&](const std::vector<std::string>& lines) {
        Plan less = plan;
        less.lines = lines;
        const auto found = violationsOf(less);
        return std::any_of(found.begin(), found.end(),
                           [&](const auto& each) { return same(each, failure.violations.front()); });
    });
    // What the end adds is part of the story.
    Session session(plan);
    for (const std::string& line : plan.lines) {
        session.perform(line);
    }
    session.leave();
    failure.violations = session.violations();
    plan.lines = session.done();
    failure.plan = std::move(plan);
    return failure;
}

std::string Failure::text() const {
    std::string text;
    for (const std::string& violation : violations) {
        text += violation + "\n";
    }
    return text + "seed " + std::to_string(seed) + "; as a scenario:\n" + scenarioOf(plan);
}

} // namespace quillon
