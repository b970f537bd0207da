// What the window does with a key follows from one question: would a press of it come to nothing now? Asked
// of every key in reach, in every situation and phase, and compared with what a press does.

#include <algorithm>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "console/KeyReasons.h"
#include "console/PendingKeys.h"
#include "console/ServiceSession.h"
#include "console/ctrQuillonConsole.h"
#include "explore/Scenes.h"
#include "explore/Session.h"
#include "link/TorvaneSerial.h"

namespace quillon {
namespace {

/// What the generator reports before the keys are pressed, one after the other; 0 is the loss.
const std::vector<std::vector<int>> kMeanwhile{{}, {3}, {5}, {7}, {10}, {11}, {3, 2}, {10, 0}};

constexpr std::string_view kAutotracking = "Autotracking";

/// Counts what a press changes on the screen.
class Changes final : public ChangeSink {
public:
    void controlChanged(Control& /*control*/) override { ++count; }
    void controlAdded(Control& /*control*/) override { ++count; }
    void controlRemoved(Control& /*control*/) override { ++count; }
    int count = 0;
};

/// What the link asks by itself; and X-rays, which the press of "Close" takes, and one that comes to nothing
/// gives back.
bool isByTheWay(std::string_view frame) {
    return frame == "ST" || frame == "HU" || frame == "ER?" || frame.starts_with("RX");
}

class Situation {
public:
    Situation(const Scene& scene, const std::vector<int>& phases)
        : session_(Plan{"", // a switch would take the positioner away
                        {scene.name == kAutotracking ? "ORLA=YES" : "REMOTE=YES"},
                        "startphase=2",
                        {}}) {
        for (const std::string& line : scene.lines()) {
            session_.perform(line);
        }
        for (const int phase : phases) {
            if (phase > 0) {
                session_.perform("sim phase " + std::to_string(phase));
            } else {
                lose();
            }
            session_.perform("wait 50");
        }
        application().setScreen(&changes_);
        session_.onFrame = [this](std::string_view frame) {
            if (!isByTheWay(frame)) {
                frames.insert(std::string(frame));
            }
        };
        application().link().events().WrongPhase.connect([this](const std::string& frame) {
            if (!isByTheWay(frame)) {
                refused.insert(frame);
            }
        });
        application().indicators().pending.sent.connect([this](const Control*) { ++queued; });
    }
    ~Situation() { application().setScreen(nullptr); }

    Application& application() { return session_.application(); }
    /// The ticks of the poll that nothing answers, all at once.
    void lose() {
        session_.perform("sim silence on");
        application().link().setStatusUpdateEnable(true);
        for (int tick = 0; tick < 40 && !application().console().session().generator().isLost(); ++tick) {
            application().link().timer("timerStatusUpdate").start(1);
            session_.perform("wait 1");
        }
    }
    [[nodiscard]] KeyReasons& reasons() { return application().indicators().reasons; }
    [[nodiscard]] Control& key(std::string_view name) { return *session_.find(name); }
    [[nodiscard]] std::vector<std::string> keys() {
        std::vector<std::string> all = session_.reachable();
        std::erase_if(all, [this](const std::string& name) { return key(name).kind() != Kind::Button; });
        return all;
    }

    /// As the window does it.
    void letTheWindowAsk() {
        application().input().blocks = [this](const Control& at) { return reasons().blocks(at); };
    }
    /// As long as it has to be held, if it is taken.
    bool press(const std::string& name) {
        const Run before = application().console().session().run();
        changes_.count = 0;
        refused.clear();
        queued = 0;
        const bool taken = application().input().press(key(name));
        if (const int hold = key(name).holdTime(); taken && hold > 0) {
            session_.perform("wait " + std::to_string(hold + 1));
        }
        if (Control* still = session_.find(name)) {
            application().input().release(*still);
        }
        changed = changes_.count;
        const Run now = application().console().session().run();
        begun = now != before;
        ended = begun && (now == Run::None || now == Run::Closing);
        return taken;
    }
    /// What comes of it in the next moment.
    void pass() {
        frames.clear();
        session_.perform("wait 3000");
    }

    std::set<std::string> frames; ///< but for the poll's
    int changed = 0;
    std::set<std::string> refused;
    int queued = 0;
    bool begun = false; ///< another run
    bool ended = false; ///< the run, or the program

private:
    Changes changes_;
    Session session_;
};

/// A key of a panel. Pressed where its choice stands already, or at its end, it changes nothing.
bool answers(std::string_view name) {
    return !name.starts_with("Quillon.") && !name.starts_with("TorvaneSerial.");
}

class Keys : public testing::TestWithParam<Scene> {
protected:
    /// The key is alive.
    static void checkAlive(Situation& fresh, const Situation& untouched, const std::string& name) {
        EXPECT_EQ(fresh.reasons().why(fresh.key(name)), "");
        EXPECT_TRUE(fresh.press(name));
        const std::set<std::string> refused = fresh.refused;
        fresh.pass();
        const bool sends = fresh.queued > 0 || fresh.frames != untouched.frames;
        EXPECT_TRUE(sends || fresh.changed > 0 || fresh.begun || answers(name)) << "nothing comes of it";
        EXPECT_TRUE(sends || fresh.ended || refused.empty()) << "it is refused";
        // A run that begins for nothing; but an answer leads out of its panel at least.
        EXPECT_TRUE(sends || !fresh.begun || fresh.ended || fresh.refused.empty() || answers(name))
            << *fresh.refused.begin() << " is refused";
    }
    /// The key is kept back, and the window does not ask before it is pressed: nothing is lost by that.
    static void checkKeptBack(Situation& asked, const Situation& untouched, const std::string& name) {
        // Nobody is kept in a program that has lost its generator: where an exit comes to nothing, the next
        // closes.
        const ServiceSession& doing = asked.application().console().session();
        EXPECT_TRUE(name != "Quillon.cmbClose" || !doing.generator().isLost() || doing.is(Run::Closing) ||
                    asked.key(name).blocked());
        asked.press(name);
        EXPECT_FALSE(asked.ended);
        if (!name.starts_with("Quillon.")) {
            EXPECT_EQ(asked.queued, 0);
        } else { // its command comes later
            const Phase then = doing.lastPhase();
            asked.pass();
            for (const std::string& frame : asked.frames) {
                // What kept it back may have ended with its phase.
                EXPECT_TRUE(untouched.frames.contains(frame) || doing.lastPhase() != then) << frame;
            }
        }
    }
};

TEST_P(Keys, AreAliveWhereAPressDoesSomethingAndNowhereElse) {
    for (const std::vector<int>& phases : kMeanwhile) {
        Situation shown(GetParam(), phases);
        Situation untouched(GetParam(), phases);
        untouched.pass();
        std::optional<Situation> panel; // its keys that are kept back change nothing
        shown.letTheWindowAsk();
        for (const std::string& name : shown.keys()) {
            SCOPED_TRACE(std::string(GetParam().name) + ", phases " + testing::PrintToString(phases) + ": " +
                         name);
            if (!shown.reasons().blocks(shown.key(name))) {
                Situation fresh(GetParam(), phases);
                checkAlive(fresh, untouched, name);
                continue;
            }
            EXPECT_NE(shown.reasons().why(shown.key(name)), "");
            EXPECT_FALSE(shown.press(name)) << "it is handed on";
            EXPECT_TRUE(shown.changed == 0 && shown.refused.empty() && !shown.begun);
            if (name.starts_with("Quillon.")) {
                Situation fresh(GetParam(), phases);
                checkKeptBack(fresh, untouched, name);
            } else {
                if (!panel) {
                    panel.emplace(GetParam(), phases);
                }
                checkKeptBack(*panel, untouched, name);
            }
        }
    }
}

/// The scenes of every run, the other pages of the keyboard, and the other positioner.
std::vector<Scene> everywhere() {
    std::vector<Scene> all = scenes();
    const auto users =
        std::find_if(all.begin(), all.end(), [](const Scene& at) { return at.name == "the users"; });
    const std::string lent = users->how;
    const auto page = [&](std::string_view name, const std::string& reports, int number) {
        const std::string way = "wait 100;TorvaneSerial.cmbMainMenu(" + std::to_string(number) + ")";
        all.push_back({Run::None, name, true, lent + ";" + reports + way});
    };
    page("AEC", "msg MD8;", 1);
    page("AEC, few densities", "msg MD6;", 1);
    page("AEC, no density known", "", 1);
    page("DAEC", "msg WM5;msg MD8;", 2);
    page("DAEC, no density known", "msg WM5;", 2);
    page("Fluoro", "msg WM4;", 3);
    all.push_back({Run::None, kAutotracking, true, "cmdOrla;wait 2000"});
    return all;
}

INSTANTIATE_TEST_SUITE_P(Everywhere, Keys, testing::ValuesIn(everywhere()), [](const auto& scene) {
    std::string name(rowOf(scene.param.run).name);
    name.append("_").append(scene.param.name);
    std::replace_if(
        name.begin(), name.end(), [](char c) { return std::isalnum(static_cast<unsigned char>(c)) == 0; },
        '_');
    return name;
});

} // namespace
} // namespace quillon
