#include <algorithm>
#include <functional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "explore/Session.h"

namespace quillon {
namespace {

constexpr int kNever = 1'000'000'000; // ms

/// Something that a console must never do, done by hand.
struct Misdeed {
    std::string_view invariant;
    std::function<void(Session& session, ctrQuillonConsole& console, TorvaneSerialV3_07_QLC1& link)> act;
    bool seenAtTheEnd = false;
};
std::ostream& operator<<(std::ostream& out, const Misdeed& misdeed) {
    return out << misdeed.invariant;
}

void say(ctrQuillonConsole& console, std::string_view words) {
    console["lblHelp"].setCaption(words);
    console["lblHelp"].setVisible(true);
}

// clang-format off
const std::vector<Misdeed> kMisdeeds{
    {"ACommandGoesOutInItsPhases",       [](auto&, auto&, auto& link) { link.SendMessage("WM+", 16383); }},
    {"ACommandFollowsItsKey",            [](auto&, auto&, auto& link) { link.SendMessage("XR1", 16383); }},
    {"AKeyRepeatsOnlyWhileItIsHeld",     [](auto&, auto&, auto& link) { link.timer("tmrAutoRepeat").start(kNever); }},
    {"TheScreenShowsTheLastReport",      [](auto&, auto&, auto& link) { link["txtPHASE"].setCaption("Preparation"); }},
    {"OnlyThePanelInFrontIsInReach",     [](auto& session, auto& console, auto&) {
        session.perform("click Quillon.cmbManualCalibration");
        console.operations().call("ErrorMessage", {std::int32_t{0}});
        console.keyed("SelWSCal")->bringToFront();
    }},
    {"AnErrorCanBeReset",                [](auto&, auto& console, auto&) {
        console["lblError"].setCaption("12");
        console["cmbResetError"].setEnabled(false);
    }},
    {"OneWorkflowRuns",                  [](auto&, auto& console, auto&) { console.timer("tmrConfigON").start(kNever); }},
    {"AWorkflowHasAnEnd",                [](auto&, auto& console, auto&) { console["cmbClose"].setEnabled(false); }},
    {"BusyEndsWithTheWorkflow",          [](auto&, auto& console, auto&) { console.events.Busy.raise(1); }},
    {"TheScreenIsWhatStands",            [](auto&, auto& console, auto&) { console["cmbConfiguration"].setVisible(false); }},
    {"APromptNamesARunThatGoesOn",       [](auto&, auto& console, auto&) { say(console, "Exiting Configuration"); }},
    {"AQuestionComesWithItsKeys",        [](auto&, auto& console, auto&) { say(console, "Press Confirm to Start"); }},
    {"NothingBlinksAtRest",              [](auto&, auto& console, auto&) { console.timer("tmrIniAutocal").start(kNever); }},
    {"ThePollComesBack",                 [](auto& session, auto&, auto& link) {
        link.setStatusUpdateEnable(false);
        session.perform("wait 32000");
        session.perform("wait 1000");
    }},
    {"APressThatDoesNothingTakesNoXRays", [](auto& session, auto&, auto& link) {
        session.perform("press Quillon.cmbClose");
        session.perform("release Quillon.cmbClose outside");
        link.setRXEnable(false);
    }},
    {"ALentMachineHasXRays",             [](auto& session, auto&, auto& link) {
        for (const char* key : {"Quillon.cmbManualCalibration", "SelWSCal.cmdOK", "Quillon.cmbGoToUserMode"}) {
            session.perform(std::string("click ") + key);
            session.perform("wait 12000");
        }
        link.setRXEnable(false);
    }},
    {"AKeyLeadsOn",                      [](auto& session, auto& console, auto&) {
        for (const ConsoleControl key : kKeyNames) {
            console[key].setEnabled(false);
        }
        session.stand();
    }},
    {"AClosedConsoleLeavesNoMode",       [](auto& session, auto&, auto& link) {
        session.perform("click Quillon.cmbClose");
        link.SendMessage("CA1", 16383);
    }, true},
    {"NothingRunsOnInReady",             [](auto&, auto&, auto& link) { link.timer("tmrBlinkingOff").start(kNever); }, true},
    {"ThereIsAWayBackToReady",           [](auto& session, auto&, auto&) {
        session.toConsole = [](std::string_view) { return std::string(); };
    }, true},
    {"KeysAreAliveInReady",              [](auto&, auto& console, auto&) { console["cmbResetError"].setVisible(false); }, true},
    {"ThePollGoesOnInReady",             [](auto& session, auto&, auto& link) {
        session.onFrame = [&link](std::string_view) { link.setStatusUpdateEnable(false); };
    }, true},
    {"NothingIsLeftOnShowInReady",       [](auto&, auto& console, auto&) { console["fraTorvaneSerial"].setVisible(true); }, true},
    {"TheConsoleCloses",                 [](auto&, auto& console, auto&) { console["cmbClose"].setVisible(false); }, true},
    {"AClosedConsoleLeavesXRaysAllowed", [](auto& session, auto&, auto&) {
        session.perform("press Quillon.cmbClose");
        session.perform("wait 900");
        session.machine().port.setGone(true);
    }, true},
};
// clang-format on

class Invariants : public testing::TestWithParam<Misdeed> {};

TEST_P(Invariants, AreSeenToBeBroken) {
    Session session(Plan{"", {}, "startphase=2", {}});
    session.perform("wait 20000");
    ASSERT_EQ(session.complaints(), "");
    GetParam().act(session, session.application().console(), session.application().link());
    session.perform("wait 1000");
    if (GetParam().seenAtTheEnd) {
        session.leave();
    }
    EXPECT_THAT(session.complaints(), testing::HasSubstr(" " + std::string(GetParam().invariant) + ": "));
}

INSTANTIATE_TEST_SUITE_P(All, Invariants, testing::ValuesIn(kMisdeeds),
                         [](const auto& each) { return std::string(each.param.invariant); });

TEST(InvariantList, HasAMisdeedForEach) {
    for (const Invariant& invariant : invariants()) {
        EXPECT_EQ(std::count_if(kMisdeeds.begin(), kMisdeeds.end(),
                                [&](const Misdeed& each) { return each.invariant == invariant.name; }),
                  1)
            << invariant.name;
    }
}

} // namespace
} // namespace quillon
