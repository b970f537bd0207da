// Everything that the console can be doing, against everything that can happen to it from outside, before the
// simulated generator. Whatever the two are, there is a key that leads on, and once the generator is Ready
// again nothing is left of it and the operator can leave.

#include <algorithm>
#include <array>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "base/Colours.h"
#include "base/Text.h"
#include "console/Indicators.h"
#include "console/ServiceSession.h"
#include "console/StatusLine.h"
#include "console/ctrQuillonConsole.h"
#include "explore/Scenes.h"
#include "explore/Session.h"
#include "link/TorvaneSerial.h"

namespace quillon {
namespace {

// clang-format off
constexpr std::array<std::string_view, kStimuli> kStimulusNames{"phase 1", "phase 2", "an exposure", "phase 6", "phase 8", "phase 9", "a loss", "cmbClose"};

/// Ends of a run, before its own, that give the X-rays back whatever had been taken.
constexpr std::array kGiveBack{Run::EnteringCalibration, Run::LeavingCalibration, Run::Lending};
// clang-format on

template <typename List, typename What> bool holds(const List& list, const What& what) {
    return std::find(list.begin(), list.end(), what) != list.end();
}

class Cell {
public:
    explicit Cell(const Scene& begun) : scene(begun) {
        session_.perform("wait 20000");
        session_.onFrame = [this](std::string_view frame) { raysTaken = raysTaken || frame == "RX0"; };
        application().console().events.Busy.connect([this](std::int16_t state) { busy = state; });
        carryOut(scene.how);
    }

    Application& application() { return session_.application(); }
    [[nodiscard]] bool ended() const { return session_.ended(); }
    [[nodiscard]] bool running(std::string_view timer) {
        return application().console().ControlHost::timer(timer).running();
    }
    [[nodiscard]] bool reaches(std::string_view name) { return holds(session_.reachable(), name); }
    [[nodiscard]] const ServiceSession& doing() { return application().console().session(); }
    [[nodiscard]] Control& control(std::string_view name) {
        return application().console().ControlHost::at(name);
    }
    [[nodiscard]] bool polls() { return application().link().polls(); }
    [[nodiscard]] bool allowsXRays() {
        return session_.ask("status").find("x-rays enabled") != std::string::npos;
    }
    [[nodiscard]] std::string complaints() const { return session_.complaints(); }
    void perform(std::string_view line) { session_.perform(line); }

    void befall(Stimulus stimulus) {
        const char phase = session_.ask("status").at(6); // "phase N"
        switch (stimulus) {
        case Stimulus::Restart:
            carryOut("sim set powerup 115000;sim power off;sim power on");
            break;
        case Stimulus::Exposure:
            carryOut("sim phase 3;wait 1000;sim phase 4;wait 1000");
            perform(phase == '1' ? "sim phase 11" : std::string("sim phase ") + (phase == '3' ? '9' : phase));
            break;
        case Stimulus::Lost: // the ticks of the poll that nothing answers, all at once
            perform("sim silence on");
            application().link().setStatusUpdateEnable(true);
            for (int tick = 0; tick < 40 && !doing().generator().isLost(); ++tick) {
                application().link().timer("timerStatusUpdate").start(1);
                perform("wait 1");
            }
            break;
        case Stimulus::CloseKey:
            carryOut("cmbClose");
            break;
        default:
            perform(std::string("sim phase ") + "12-689"[static_cast<std::size_t>(stimulus)]);
            break;
        }
    }

    /// The generator is as it should be and Ready, and its operator has answered all that stands in front.
    void comeBack(Stimulus stimulus) {
        carryOut("sim silence off;sim set modechange 300");
        perform(stimulus == Stimulus::Restart ? "wait 6000" : "sim phase 2");
        perform("wait 20000");
        clear();
        perform("wait 35000"); // a poll that nothing holds is back by then
    }
    void clear() {
        for (const char* key :
             {"Error.cmbOK", "SelWSCal.cmdOK", "SelWSAutocal.cmdOK", "Quillon.cmdResetCounterNo",
              "AutocalSelFocusOrParameter.cmbCancel", "AutocalWarning.cmbAutocalNo"}) {
            if (reaches(key)) {
                perform("click " + std::string(key));
            }
        }
    }

    /// A key that is no dead end.
    [[nodiscard]] bool hasWayOn() {
        const std::vector<std::string> keys = session_.reachable();
        const Phase mode = doing().mode();
        return std::any_of(keys.begin(), keys.end(), [&](const std::string& name) {
            return name == "Quillon.cmbClose" ||
                   (name == "Quillon.cmbConfiguration" && mode == Phase::Configuration) ||
                   (name == "Quillon.cmbReadExposureCounters" && doing().countersActive()) ||
                   !(name.starts_with("Quillon.") || name.starts_with("TorvaneSerial."));
        });
    }
    /// What runs and should not.
    [[nodiscard]] std::string leftRunning() {
        std::set<std::string_view> timers;
        for (std::size_t run = 0; run < kRuns; ++run) {
            timers.insert(rowOf(quillon::Run(run)).timers.begin(), rowOf(quillon::Run(run)).timers.end());
        }
        for (const WaitRow& wait : waitRows()) {
            timers.insert(wait.timer);
        }
        timers.erase("");
        if (scene.run == Run::LeavingAutocalibration) {
            timers.erase("tmrAutocalON"); // goes on behind a short end
        }
        std::string left;
        for (const std::string_view timer : timers) {
            left += running(timer) ? std::string(timer) + " " : "";
        }
        for (const PanelTimer timer : {PanelTimer("tmrConfirm"), PanelTimer("tmrDismiss")}) {
            left +=
                application().link().timer(timer).running() ? std::string(std::string_view(timer)) + " " : "";
        }
        return left;
    }

    const Scene& scene;
    bool raysTaken = false;
    std::int16_t busy = 0;

private:
    /// Commands with ';' between; a name alone is clicked, and must be in reach.
    void carryOut(std::string_view lines) {
        for (const std::string_view line : split(lines, ";")) {
            if (line.empty() || line.find(' ') != std::string_view::npos) {
                perform(line);
                continue;
            }
            const std::string key =
                (line.find('.') == std::string_view::npos ? "Quillon." : "") + std::string(line);
            EXPECT_TRUE(reaches(key)) << key;
            perform("click " + key);
        }
    }

    Session session_{Plan{"", {"REMOTE=YES"}, "startphase=2", {}}};
};

/// What must be on the screen in a mode, with nothing under way.
struct InMode {
    Phase mode;
    std::string_view key;
    std::string_view prompt;
};
constexpr std::array kInModes{
    InMode{Phase::NormalOperation, "", ""},
    InMode{Phase::Calibration, "cmbManualCalibration", ""},
    InMode{Phase::Configuration, "cmbConfiguration", ""},
    InMode{Phase::Autocalibration, "cmbAutocalibration", "Press Prep and Expose"},
};

void checkMode(Cell& cell) {
    const ServiceSession& doing = cell.doing();
    const auto row = std::find_if(kInModes.begin(), kInModes.end(),
                                  [&](const InMode& each) { return each.mode == doing.mode(); });
    if (!doing.idle() || doing.generator().isLost() || doing.generator().poweringUp() ||
        cell.reaches("Error.cmbOK") || row == kInModes.end()) {
        return;
    }
    EXPECT_TRUE(cell.polls());
    EXPECT_EQ(cell.control("fraTorvaneSerial").shown(), !row->key.empty() || doing.lent());
    const std::string prompt = cell.control("lblHelp").visible() ? cell.control("lblHelp").caption() : "";
    const bool left = cell.scene.run == Run::LeavingAutocalibration; // that the generator did not follow
    if (doing.lastPhase() == doing.mode() && !cell.reaches("TorvaneSerial.cmbAutocalConfirm")) {
        // A mode that was not handed over to the operator, or was left, asks for nothing.
        EXPECT_TRUE(prompt.empty() || (prompt == row->prompt && !left)) << prompt;
    }
    for (const Key key : {Key::Configuration, Key::ManualCalibration, Key::Autocalibration}) {
        const bool lit = cell.control(nameOf(key)).backColour() == kActiveColour;
        if (!left || key != Key::Autocalibration) { // an exit that came to nothing leaves it dark
            EXPECT_EQ(lit, nameOf(key) == row->key) << std::string_view(nameOf(key));
        }
    }
    if (!row->key.empty() && !isExposure(doing.lastPhase())) {
        EXPECT_TRUE(cell.reaches("Quillon.cmbClose"));
        EXPECT_EQ(cell.control("cmbClose").caption(), "Exit");
        EXPECT_TRUE(cell.reaches("Quillon." + std::string(row->key)));
    }
}

void checkReady(Cell& cell, Stimulus stimulus) {
    const Run run = cell.doing().run();
    const bool counters = cell.doing().countersActive();
    const bool noAnswer = run == Run::ReadingCounters;
    EXPECT_TRUE(run == Run::None || counters) << rowOf(run).name;
    EXPECT_EQ(cell.doing().mode(), Phase::NormalOperation);
    EXPECT_TRUE(cell.polls());
    EXPECT_EQ(cell.busy, noAnswer ? 1 : 0);
    EXPECT_EQ(cell.leftRunning(), "");
    EXPECT_EQ(cell.control("lblHelp").visible() && !noAnswer, false) << cell.control("lblHelp").caption();
    EXPECT_EQ(cell.control("cmdMultiRoom").visible(), !cell.doing().lent() && (!counters || noAnswer));
    EXPECT_TRUE(cell.reaches("Quillon.cmbClose") || noAnswer);
    EXPECT_TRUE(cell.reaches("Quillon.cmbManualCalibration") || counters || cell.doing().lent() ||
                cell.control("fraRemote").visible());

    EXPECT_EQ(cell.allowsXRays(), cell.application().link().mirror().RXEnable);
    const bool broken = stimulus == Stimulus::Restart || stimulus == Stimulus::Lost;
    EXPECT_FALSE(broken && cell.doing().lent());
    if (!cell.raysTaken || (broken && holds(kGiveBack, cell.scene.run))) {
        EXPECT_TRUE(cell.allowsXRays());
    } else if (cell.scene.run == Run::None && stimulus == Stimulus::CloseKey &&
               cell.scene.name != "the users") {
        EXPECT_FALSE(cell.allowsXRays()); // the way out of a mode keeps them
    }
}

class Matrix : public testing::TestWithParam<Scene> {};

TEST_P(Matrix, LeavesAWayOnAndNothingBehind) {
    for (std::size_t each = 0; each < kStimuli; ++each) {
        const Stimulus stimulus{static_cast<std::uint8_t>(each)};
        SCOPED_TRACE(std::string(rowOf(GetParam().run).name) + ", " + std::string(GetParam().name) + ": " +
                     std::string(kStimulusNames.at(each)));
        Cell cell(GetParam());
        ASSERT_EQ(cell.doing().run(), GetParam().run);
        if (stimulus == Stimulus::CloseKey && !GetParam().closes) {
            EXPECT_FALSE(cell.reaches("Quillon.cmbClose"));
            continue;
        }
        cell.befall(stimulus);
        cell.perform("wait 110000");
        if (!cell.ended()) {
            EXPECT_TRUE(cell.hasWayOn());
            checkMode(cell);
            cell.comeBack(stimulus);
            if (GetParam().run != Run::ChoosingWorkstation || stimulus == Stimulus::Restart ||
                stimulus == Stimulus::Lost) {
                checkReady(cell, stimulus); // its panel has no way back, and leads into calibration
            }
        }
        for (int level = 0; level < 6 && !cell.ended(); ++level) {
            cell.clear();
            if (cell.reaches("Quillon.cmbReadExposureCounters") && cell.doing().is(Run::ReadingCounters)) {
                cell.perform("click Quillon.cmbReadExposureCounters");
            }
            cell.perform("click Quillon.cmbClose");
            cell.perform("wait 60000");
        }
        EXPECT_TRUE(cell.ended());
        EXPECT_EQ(cell.complaints(), "");
        // Phase 1 takes no command.
        EXPECT_TRUE(cell.allowsXRays() || (GetParam().run == Run::Closing && stimulus == Stimulus::Restart));
    }
}

INSTANTIATE_TEST_SUITE_P(Scenes, Matrix, testing::ValuesIn(scenes()), [](const auto& scene) {
    std::string name = std::string(rowOf(scene.param.run).name) + "_" + std::string(scene.param.name);
    std::replace_if(
        name.begin(), name.end(), [](char c) { return !std::isalnum(c); }, '_');
    return name;
});

TEST(MatrixScenes, TheStatusBarTellsWhatIsWaitedForAndUntilWhen) {
    constexpr std::array kOperators{Run::None, Run::ChoosingWorkstation, Run::ChoosingAutocalibration,
                                    Run::ShowingCounters, Run::Closing};
    const std::map<quillon::Run, std::string_view> lastWaits{
        {Run::EnteringConfiguration, "tmrConfigON"},
        {Run::LeavingConfiguration, "tmrConfigOFF"},
        {Run::EnteringCalibration, "tmrCalON"},
        {Run::Lending, "tmrGotoUserMode"},
        {Run::EnteringAutocalibration, "tmrDelayAutocal"},
        {Run::HandingOver, "tmrDelayAutocal"},
        {Run::LeavingAutocalibration, "tmrAutocalOFF"}};
    for (const Scene& scene : scenes()) {
        SCOPED_TRACE(std::string(rowOf(scene.run).name) + ", " + std::string(scene.name));
        Cell cell(scene);
        const Progress progress = cell.application().indicators().status.progress();
        const bool waits = !holds(kOperators, scene.run) && cell.doing().lastPhase() != Phase::ConfirmDismiss;
        EXPECT_EQ(cell.doing().waits(), waits);
        const auto last = lastWaits.find(scene.run);
        const bool ends = waits && last != lastWaits.end() && cell.running(last->second) &&
                          cell.application().console().ControlHost::timer(last->second).interval() >= 2000;
        EXPECT_EQ(!progress.what.empty(), waits || cell.running("tmrResetTubeCounter")) << progress.what;
        EXPECT_EQ(progress.ends.has_value(), ends);
    }
}

TEST(MatrixScenes, ThereIsOneOfEveryRun) {
    std::set<quillon::Run> runs;
    std::transform(scenes().begin(), scenes().end(), std::inserter(runs, runs.end()),
                   [](const Scene& scene) { return scene.run; });
    EXPECT_EQ(runs.size(), kRuns);
}

} // namespace
} // namespace quillon
