#include "Moves.h"

#include <algorithm>
#include <array>

#include "Scenes.h"
#include "link/InboundTable.h"

namespace quillon {

namespace {

// clang-format off
const std::vector<std::string> kFromReady{"ack 20", "msg ST1", "wait 500", "msg ST2", "wait 17000"};
const std::vector<std::string> kReports{
    "msg ST1", "msg ST2", "msg ST3", "msg ST4", "msg ST5", "msg ST6", "msg ST7", "msg ST8", "msg ST9", "msg ST10",
    "msg ST11", "msg ST12", "msg ST13", "msg CAU0", "msg CAU1", "msg ER12", "ack off", "ack 20"};
const std::vector<std::string> kForced{
    "sim phase 1", "sim phase 2", "sim phase 3", "sim phase 4", "sim phase 6", "sim phase 7", "sim phase 8",
    "sim phase 9", "sim phase 11", "sim phase 12", "sim phase 13", "sim power off", "sim power on", "sim silence on",
    "sim silence off", "sim error 12", "sim prepare", "sim expose", "sim set dipswitch 0", "sim set modechange 90000"};

/// A search begins in Ready, where every workflow is at hand.
const std::vector<Ground> kGrounds{
    {"told",        {"-swsync", {},             std::nullopt,  kFromReady},      kReports},
    {"remote",      {"",        {"REMOTE=YES"}, std::nullopt,  kFromReady},      kReports},
    {"orla",        {"",        {"ORLA=YES"},   std::nullopt,  kFromReady},      kReports},
    {"simulated",   {"",        {"REMOTE=YES"}, "startphase=2", {"wait 17000"}}, kForced},
};

/// Keys that lead from one state to another. What comes of a press that lasts is only seen in a wait.
constexpr std::array<std::string_view, 22> kClicked{
    "Quillon.cmbConfiguration", "Quillon.cmbManualCalibration", "Quillon.cmbAutocalibration",
    "Quillon.cmbReadExposureCounters", "Quillon.cmbGoToUserMode", "Quillon.cmbClose", "Quillon.cmbResetError",
    "Quillon.cmdOrla", "Quillon.cmdMultiRoom", "Quillon.cmdResetCounterYes", "Quillon.cmdResetCounterNo",
    "SelWSCal.cmdOK", "SelWSAutocal.cmdOK", "AutocalSelFocusOrParameter.cmbAutocalSmallFocus",
    "AutocalSelFocusOrParameter.cmbOKFocus", "AutocalSelFocusOrParameter.cmbCancel", "AutocalWarning.cmbAutocalYes",
    "AutocalWarning.cmbAutocalNo", "Error.cmbOK", "TorvaneSerial.cmbAutocalConfirm", "TorvaneSerial.cmbAutocalDismiss",
    "TorvaneSerial.cmbAutocalibration"};
constexpr std::array<std::string_view, 2> kHeld{"Quillon.cmdResetT1", "Quillon.cmbClose"};
constexpr std::array<std::string_view, 2> kWaits{"wait 12000", "wait 61000"};

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
constexpr std::array<std::string_view, 12> kValues{
    "", "0", "1", "2", "3", "50", "100", "-1", "12.5", "40000", "99999999999", "x"};
// clang-format on

bool leadsOn(const std::string& name) {
    return std::find(kClicked.begin(), kClicked.end(), name) != kClicked.end();
}

} // namespace

const std::vector<Ground>& grounds() {
    return kGrounds;
}

std::vector<Ground> groundsOfScenes() {
    std::vector<Ground> all;
    for (const Scene& scene : scenes()) {
        if (scene.run != Run::Closing) {
            all.push_back({scene.name, {"", {"REMOTE=YES"}, "startphase=2", scene.lines()}, kForced});
        }
    }
    return all;
}

std::vector<std::string> movesFrom(Session& session, const Ground& ground) {
    std::vector<std::string> moves;
    for (const std::string_view key : kClicked) {
        if (session.reaches(key)) {
            moves.push_back("click " + std::string(key));
        }
    }
    for (const std::string_view key : kHeld) {
        if (session.held().empty() && session.reaches(key)) {
            moves.push_back("press " + std::string(key));
        }
    }
    for (const std::string& key : session.held()) {
        moves.push_back("release " + key);
        moves.push_back("release " + key + " outside");
    }
    moves.insert(moves.end(), ground.generator.begin(), ground.generator.end());
    moves.push_back("wait " + std::to_string(session.nextWait()));
    moves.insert(moves.end(), kWaits.begin(), kWaits.end());
    return moves;
}

Plan Chance::plan() {
    Plan plan = ground_.start;
    if (plan.generator) {
        plan.commandLine = oneOf(kSwitches);
        plan.configuration.clear();
        if (below(2) == 0) {
            plan.configuration.push_back(below(2) == 0 ? "REMOTE=YES" : "ORLA=YES");
        }
        plan.generator = "seed=" + std::to_string(below(1000)) + " " + std::string(oneOf(kGenerators));
    }
    return plan;
}

std::string Chance::next(Session& session) {
    const std::size_t roll = below(100);
    if (roll < 50) {
        return hand(session);
    }
    if (roll < 80) {
        return below(4) == 0 ? "wait " + std::to_string(session.nextWait())
                             : "wait " + std::to_string(oneOf(kAnyWait));
    }
    return roll < 94 ? mishap() : report();
}

std::string Chance::hand(Session& session) {
    if (!session.held().empty() && below(3) != 0) {
        return "release " + *session.held().begin() + (below(4) == 0 ? " outside" : "");
    }
    const std::vector<std::string> names = session.reachable();
    if (names.empty()) {
        return "wait 1000";
    }
    // Keys that begin or end a mode come more often than chance would bring them.
    std::vector<std::string> modes;
    std::copy_if(names.begin(), names.end(), std::back_inserter(modes), leadsOn);
    const std::string name = !modes.empty() && below(3) == 0 ? oneOf(modes) : oneOf(names);
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
    if (!ground_.start.generator) {
        return oneOf(ground_.generator);
    }
    if (below(8) == 0) {
        return "sim phase " + std::to_string(1 + below(13));
    }
    return "sim " + std::string(oneOf(kMishaps));
}

std::string Chance::report() {
    // Values that the generator would not send just now, or ever. A phase that a simulated one is not in
    // would leave both sides with their own idea of the truth.
    const InboundRow& row = oneOf(kInboundTable);
    return row.key == "ST" ? "wait 350" : "msg " + std::string(row.key) + std::string(oneOf(kValues));
}

} // namespace quillon
