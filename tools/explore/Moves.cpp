#include "Moves.h"

#include <algorithm>
#include <array>

#include "Scenes.h"
#include "base/Phase.h"
#include "console/ServiceSession.h"
#include "console/ctrQuillonConsole.h"

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
    {"told",        {"-swsync", {},             std::nullopt,   kFromReady},      kReports},
    {"remote",      {"",        {"REMOTE=YES"}, std::nullopt,   kFromReady},      kReports},
    {"orla",        {"",        {"ORLA=YES"},   std::nullopt,   kFromReady},      kReports},
    {"simulated",   {"",        {"REMOTE=YES"}, "startphase=2", {"wait 17000"}}, kForced, true},
};

/// Keys that lead from one state to another. The effect of a long press is only seen in a wait.
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

constexpr std::array<std::string_view, 10> kRare{
    "gap 600000", "gap 5000", "close", "call Quillon.LeaveNow", "sim set stuck 1", "sim set wrong 50", "sim set twice 50",
    "sim set answer 2500", "sim set ack 1500", "sim drop 4"};
// clang-format on

const std::vector<std::string> kFullInstallation{
    "[TM]",          "TM=0",           "[ThirdTube]",    "ThirdTube=1", "[SolapeFocos]",
    "SolapeFocos=1", "[AutocalRetry]", "AutocalRetry=1", "[Extended]",  "E01=100"};

/// In a scene, and after it.
std::vector<std::string> sceneAnd(std::string_view name, const std::vector<std::string>& more) {
    const auto found = std::find_if(scenes().begin(), scenes().end(),
                                    [name](const Scene& scene) { return scene.name == name; });
    std::vector<std::string> lines = found->lines();
    lines.insert(lines.end(), more.begin(), more.end());
    return lines;
}
/// So that the pages of the main menu are in reach.
std::vector<std::string> lentAnd(const std::vector<std::string>& more) {
    return sceneAnd("the users", more);
}
/// With the wait until the console is about to tell that its generator is lost: it comes in what is begun
/// now, or goes on.
Plan beforeItsLoss(Plan plan) {
    constexpr Milliseconds kMost = 120'000;
    constexpr Milliseconds kStep = 50;
    Session session(plan);
    for (const std::string& line : plan.lines) {
        session.perform(line);
    }
    Milliseconds passed = 0;
    for (; passed < kMost && !session.application().console().session().generator().isLost();
         passed += kStep) {
        session.perform("wait " + std::to_string(kStep));
    }
    plan.lines.push_back("wait " + std::to_string(passed - 2 * kStep));
    return plan;
}
/// Where it can come at all, and what frees the poll for it.
struct SilentRow {
    std::string_view name;
    std::string_view scene;
    std::vector<std::string> first;
};
const std::vector<SilentRow> kSilent{
    {"calibration", "Calibration", {}},
    {"the seek", "before calibration", {"sim expose"}},
    {"handing over", "an exposure", {}},
    {"counters", "its screen", {}},
    {"the workstation", "Ready", {"sim expose", "click Quillon.cmbManualCalibration"}},
    {"the point", "Ready", {"sim expose", "click Quillon.cmbAutocalibration"}},
};

} // namespace

const std::vector<Ground>& grounds() {
    return kGrounds;
}

const std::vector<Ground>& groundsOfScenes() {
    static const std::vector<Ground> all = [] {
        std::vector<Ground> made;
        for (const Scene& scene : scenes()) {
            if (scene.run != Run::Closing) {
                made.push_back(
                    {std::string(scene.name), {"", {"REMOTE=YES"}, "startphase=2", scene.lines()}, kForced});
            }
        }
        return made;
    }();
    return all;
}

const std::vector<Ground>& groundsOfStarts() {
    static const std::vector<Ground> all = [] {
        std::vector<Ground> made{
            {"nothing is said", {"", {"ORLA=YES"}, std::nullopt, {"wait 500"}}, kReports},
            {"the port fails",
             {"", {"REMOTE=YES"}, "startphase=2", {"wait 5000", "port 1 ok"}, {"port 1 fail"}},
             kForced},
            {"a full installation",
             {"-swsync -ResetCounters",
              {},
              "startphase=2 techmode=0 thirdtube=1 autocalresult=error",
              {"wait 20000"},
              {},
              kFullInstallation},
             kForced},
            {"the counters of three tubes",
             {"",
              {},
              "startphase=2 thirdtube=1",
              {"wait 20000", "click Quillon.cmbReadExposureCounters", "wait 12000"},
              {},
              {"[ThirdTube]", "ThirdTube=1"}},
             kForced},
            {"overlapping focal spots",
             {"",
              {},
              "startphase=2",
              sceneAnd("the point",
                       {"click AutocalSelFocusOrParameter.cmbAutocalLargeFocus",
                        "click AutocalSelFocusOrParameter.cmbOKFocus", "click AutocalWarning.cmbAutocalYes"}),
              {},
              {"[SolapeFocos]", "SolapeFocos=1"}},
             kForced},
            {"the exposure control's page",
             {"", {}, "startphase=2", lentAnd({"msg MD8", "click TorvaneSerial.cmbMainMenu(1)"})},
             kForced},
            {"a digital workstation",
             {"", {}, "startphase=2", lentAnd({"click TorvaneSerial.cmbMainMenu(1)", "msg WM5"})},
             kForced},
            {"the fluoroscopy's page",
             {"", {}, "startphase=2", lentAnd({"msg WM3", "click TorvaneSerial.cmbMainMenu(3)"})},
             kForced},
            {"a brightness that is controlled",
             {"", {}, "startphase=2", lentAnd({"msg WM4", "msg FLA1", "click TorvaneSerial.cmbMainMenu(3)"})},
             kForced},
            {"exposure by software",
             {"-swsync", {}, "startphase=2", lentAnd({"msg WM1", "msg WSS1", "sim prepare", "wait 350"})},
             kForced},
            {"a wrong line", {"-S1 -P99", {}, "startphase=2", {"wait 20000"}}, kForced},
            {"wrong settings",
             {"", {"PORT=x", "Width=x", "REMOTE=YES"}, "startphase=2", {"wait 20000"}},
             kForced}};
        for (int phase = 1; phase <= kPhaseCount; ++phase) {
            made.push_back({"found in phase " + std::to_string(phase),
                            {"", {"REMOTE=YES"}, "startphase=" + std::to_string(phase), {"wait 20000"}},
                            kForced});
        }
        for (const SilentRow& row : kSilent) {
            std::vector<std::string> lines = sceneAnd(row.scene, row.first);
            lines.insert(lines.end(), {"wait 15000", "sim silence on"});
            made.push_back({"silent: " + std::string(row.name),
                            beforeItsLoss({"", {"REMOTE=YES"}, "startphase=2", lines}), kForced});
        }
        return made;
    }();
    return all;
}

std::vector<Ground> allGrounds() {
    std::vector<Ground> all = grounds();
    for (const auto* more : {&groundsOfScenes(), &groundsOfStarts()}) {
        all.insert(all.end(), more->begin(), more->end());
    }
    return all;
}

bool leadsOn(std::string_view name) {
    return std::find(kClicked.begin(), kClicked.end(), name) != kClicked.end();
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

std::vector<std::string> rareMovesFrom(Session& session) {
    std::vector<std::string> moves(kRare.begin(), kRare.end());
    if (session.held().contains("Quillon.cmbClose")) {
        moves.emplace_back("answer yes");
    }
    for (const std::string& name : session.reachable()) {
        const Control& control = *session.find(name);
        if (control.kind() == Kind::Button) {
            // One finger holds at most one key; a second one may come down on another.
            if (!session.held().contains(name) && session.held().size() < 2) {
                moves.push_back("press " + name);
                moves.push_back("hold " + name + " 15000");
            }
            if (!leadsOn(name)) {
                moves.push_back("click " + name);
            }
        } else if (control.kind() == Kind::TextBox) {
            moves.push_back("type " + name + " 50");
        } else if (control.kind() == Kind::Slider) {
            moves.push_back("slide " + name + " 100");
        } else {
            for (const std::string& item : control.items()) {
                moves.push_back(std::string("select ").append(name).append(" ").append(item));
            }
        }
    }
    return moves;
}

} // namespace quillon
