#include "Invariants.h"

#include <algorithm>
#include <array>
#include <set>
#include <vector>

#include "ScreenAtRest.h"
#include "console/Runs.h"
#include "console/ServiceSession.h"
#include "link/OutboundTable.h"

namespace quillon {

namespace {

// clang-format off
constexpr std::array<PanelTimer, 5> kLinkTimers{
    "tmrAutoRepeat", "tmrAutorepFlKVP", "tmrWarning", "tmrBlinking", "tmrBlinkingOff"};
constexpr std::array<ConsoleControl, 8> kFrames{
    "fraTorvaneSerial", "fraExposureCounters", "fraResetCounterConfirm", "fraOrla", "fraRemote", "lblErrorDescription",
    "cmbGoToUserMode", "lblHelp"};
// clang-format on

template <typename List, typename What> bool holds(const List& list, const What& what) {
    return std::find(std::begin(list), std::end(list), what) != std::end(list);
}

/// The row of the longest mnemonic that the frame begins with; empty when there is none.
const OutboundRow* outboundRow(std::string_view frame) {
    const OutboundRow* longest = nullptr;
    for (const OutboundRow& row : kOutboundTable) {
        if (frame.starts_with(row.mnemonic) &&
            (longest == nullptr || row.mnemonic.size() > longest->mnemonic.size())) {
            longest = &row;
        }
    }
    return longest;
}

bool exposing(const Facts& facts) {
    return isExposure(facts.doing().lastPhase());
}

// What must hold -----------------------------------------------------------------------------------------

std::string phaseOfCommand(const Facts& facts) {
    const OutboundRow* row = outboundRow(facts.frame);
    // The generator may ask in any phase whether exposures are enabled, and is answered.
    // The last word on the line allows X-rays, whatever the phase.
    const bool last = facts.doing().is(Run::Closing) || facts.restarts();
    if (row == nullptr || (row->mnemonic == "RX" && (facts.enableAsked || last))) {
        return {};
    }
    const bool allowed = std::any_of(facts.masks.begin(), facts.masks.end(),
                                     [row](std::int32_t mask) { return (mask & row->phases) == mask; });
    return allowed ? "" : inQuotes(facts.frame) + " went out in a phase that does not allow it";
}

std::string keyOfCommand(const Facts& facts) {
    for (const auto& [command, left] : facts.allowance) {
        if (left < 0 && facts.frame.starts_with(command)) {
            return inQuotes(facts.frame) + " without its key, or more often than that";
        }
    }
    return {};
}

std::string repeatedKey(const Facts& facts) {
    return facts.held.empty() && facts.link().timer("tmrAutoRepeat").running()
               ? "a key repeats that nobody holds"
               : "";
}

std::string shownPhase(const Facts& facts) {
    if (facts.phase == 0 || !facts.portOpen()) {
        return {};
    }
    const std::string& shown = facts.link()["txtPHASE"].caption();
    const std::string_view told = rowOf(Phase{facts.phase}).caption;
    return shown == told ? "" : "the screen says " + inQuotes(shown) + ", the last report " + inQuotes(told);
}

std::string reachBehindPanel(const Facts& facts) {
    const ControlHost* front = facts.panel();
    if (front == nullptr) {
        return {};
    }
    const bool spares = front == facts.console().keyed("SelWSCal");
    for (const Control* control : facts.inReach()) {
        if (control->host() != front && !(spares && control->name() == "cmbResetError")) {
            return nameOf(*control) + " is in reach behind a panel";
        }
    }
    return {};
}

std::string errorWithoutKey(const Facts& facts) {
    const bool stands = !facts.console()["lblError"].caption().empty() && facts.panel() == nullptr;
    const bool settled = !facts.doing().is(Run::Closing) && !facts.running("tmrDelayShow");
    return stands && settled && !facts.reaches(facts.console()["cmbResetError"])
               ? "an error stands and its key is dead"
               : "";
}

std::string foreignParts(const Facts& facts) {
    const RunRow& own = rowOf(facts.doing().run());
    const auto outlives = [](std::string_view timer) {
        const auto rows = waitRows();
        return std::any_of(rows.begin(), rows.end(), [&](const WaitRow& row) { return row.timer == timer; });
    };
    for (std::size_t run = 0; run < kRuns; ++run) {
        const RunRow& row = rowOf(static_cast<Run>(run));
        for (const std::string_view timer : row.timers) {
            if (facts.running(timer) && !holds(own.timers, timer) && !outlives(timer)) {
                return std::string(timer) + " runs in " + std::string(own.name);
            }
        }
        for (const std::string_view panel : row.panels) {
            if (!panel.empty() && facts.console().keyed(panel) != nullptr && !holds(own.panels, panel)) {
                return std::string(panel) + " stands in " + std::string(own.name);
            }
        }
    }
    return {};
}

/// Somebody can act: the operator by a key, the generator by the end of an exposure, or time.
std::string deadEnd(const Facts& facts) {
    const ctrQuillonConsole& console = facts.console();
    const ServiceSession& doing = facts.doing();
    const auto reaches = [&](ConsoleControl key) { return facts.reaches(console[key]); };
    const bool byKey = facts.panel() != nullptr || reaches("cmbClose") ||
                       (doing.mode() == Phase::Configuration && reaches("cmbConfiguration")) ||
                       (doing.countersActive() && reaches("cmbReadExposureCounters")) ||
                       (console["fraOrla"].visible() && reaches("cmdOrla")) ||
                       (console["fraRemote"].visible() && reaches("cmdMultiRoom"));
    // A question and a result belong to autocalibration; told outside of it they are the generator's affair.
    const bool byGenerator =
        exposing(facts) || doing.lastPhase() <= Phase::Initialization || doing.lastPhase() == Phase::Error ||
        doing.lastPhase() == Phase::TubeTooHot || doing.lastPhase() == Phase::ConfirmDismiss ||
        (endsAutocalibration(doing.lastPhase()) && doing.mode() != Phase::Autocalibration);
    bool byTime = doing.is(Run::Closing) || facts.running("tmrDelayShow");
    for (const std::string_view timer : rowOf(doing.run()).timers) {
        byTime = byTime || facts.running(timer);
    }
    for (const WaitRow& wait : waitRows()) {
        byTime = byTime || facts.running(wait.timer);
    }
    return byKey || byGenerator || byTime ? "" : std::string(rowOf(doing.run()).name) + " has no end";
}

std::string busyAndIdle(const Facts& facts) {
    return facts.doing().idle() && facts.busy != 0 ? "the host was told that the console is busy" : "";
}

std::string runningAtRest(const Facts& facts) {
    std::set<std::string_view> timers(kOtherTimers.begin(), kOtherTimers.end());
    for (std::size_t run = 0; run < kRuns; ++run) {
        const auto& own = rowOf(static_cast<Run>(run)).timers;
        timers.insert(own.begin(), own.end());
    }
    for (const std::string_view timer : timers) {
        if (facts.running(timer)) {
            return std::string(std::string_view(timer)) + " runs on though nothing is open";
        }
    }
    for (const PanelTimer timer : kLinkTimers) {
        if (facts.link().timer(timer).running()) {
            return std::string(std::string_view(timer)) + " runs on though nothing is open";
        }
    }
    return {};
}

std::string notReady(const Facts& facts) {
    const ServiceSession& doing = facts.doing();
    if (facts.phase != 2 || doing.lastPhase() != Phase::NormalOperation ||
        doing.mode() != Phase::NormalOperation) {
        return "the generator is in phase " + std::to_string(facts.phase) + ", for the console in " +
               std::to_string(numberOf(doing.lastPhase())) + " of mode " +
               std::to_string(numberOf(doing.mode()));
    }
    return doing.idle() && !doing.lent() ? "" : std::string(rowOf(doing.run()).name) + " goes on";
}

std::string deadKeys(const Facts& facts) {
    for (const ConsoleControl key : std::initializer_list<ConsoleControl>{
             "cmbClose", "cmbConfiguration", "cmbManualCalibration", "cmbAutocalibration",
             "cmbReadExposureCounters", "cmbResetError"}) {
        if (!facts.reaches(facts.console()[key])) {
            return std::string(std::string_view(key)) + " is dead";
        }
    }
    const std::string& caption = facts.console()["cmbClose"].caption();
    return caption == "Close" ? "" : "the key that closes says " + inQuotes(caption);
}

std::string pollAway(const Facts& facts) {
    return facts.link().polls() ? "" : "nothing asks the generator where it stands";
}

std::string onShow(const Facts& facts) {
    for (const ConsoleControl name : kFrames) {
        if (facts.console()[name].shown()) {
            return std::string(std::string_view(name)) + " is on show in Ready";
        }
    }
    return facts.console()["imgQuillonConsole"].visible() ? "" : "the picture at rest is away";
}

std::string notClosed(const Facts& facts) {
    if (!facts.application().ended()) {
        return "the application did not end: " + inQuotes(facts.console()["cmbClose"].caption()) + " is " +
               (facts.reaches(facts.console()["cmbClose"]) ? "in reach" : "dead");
    }
    return facts.portOpen() ? "the line is still open" : "";
}

std::string raysForbidden(const Facts& facts) {
    // A generator that powers up takes no command, and allows X-rays only when it is told to.
    return facts.rays == "RX0" && facts.phase != 1 ? "the generator is left without X-rays" : "";
}

std::string pollStaysAway(const Facts& facts) {
    constexpr Milliseconds kLongest = 31000;
    return facts.pollAway >= 0 && facts.now() - facts.pollAway > kLongest
               ? "nothing asks the generator where it stands, and nothing holds the poll"
               : "";
}

std::string raysTakenByNothing(const Facts& facts) {
    constexpr Phases kAtRest = Phases{Phase::NormalOperation} | kServiceModes;
    if (!facts.raysBefore || !facts.held.empty() || !facts.doing().idle() ||
        !kAtRest.has(facts.doing().lastPhase())) {
        return {};
    }
    const bool now = facts.doing().holdings().allowsXRays();
    return now == *facts.raysBefore
               ? ""
               : std::string("a press that did nothing has left X-rays ") + (now ? "allowed" : "forbidden");
}

std::string lentWithoutRays(const Facts& facts) {
    const ServiceSession& doing = facts.doing();
    return facts.held.empty() && facts.handedOver && doing.idle() &&
                   doing.lastPhase() == Phase::NormalOperation && !facts.link().mirror().RXEnable &&
                   !facts.raysByGenerator && facts.panel() == nullptr
               ? "the machine is lent without X-rays"
               : "";
}

/// A key whose press leads somewhere from here.
std::string nothingToPress(const Facts& facts) {
    const ctrQuillonConsole& console = facts.console();
    const ServiceSession& doing = facts.doing();
    if (exposing(facts) || doing.is(Run::Closing) || doing.lastPhase() == Phase::TubeTooHot) {
        return {}; // the one who exposes ends it; a hot tube changes nothing
    }
    const auto offers = [&](Key key) {
        const Control& control = console[nameOf(key)];
        return facts.reaches(control) && !control.blocked();
    };
    const Phase mode = doing.mode();
    const bool close = offers(Key::Close);
    const bool byMode =
        (offers(Key::Configuration) && (mode == Phase::Configuration || mode == Phase::NormalOperation)) ||
        (offers(Key::ManualCalibration) && (mode == Phase::Calibration || mode == Phase::NormalOperation));
    const bool error = facts.reaches(console["cmbResetError"]) &&
                       (!console["lblError"].caption().empty() || doing.lastPhase() == Phase::Error);
    const bool answer = facts.reaches(facts.link()["cmbAutocalConfirm"]);
    const bool counters = (doing.countersActive() && offers(Key::ReadCounters)) ||
                          (console["fraOrla"].visible() && facts.reaches(console["cmdOrla"])) ||
                          (console["fraRemote"].visible() && facts.reaches(console["cmdMultiRoom"]));
    return facts.panel() != nullptr || close || byMode || error || answer || counters ? ""
                                                                                      : "no key leads on";
}

std::string modeLeftBehind(const Facts& facts) {
    // One that was lost takes no command of a phase: nobody knows where it stands.
    const bool leaves =
        facts.application().ended() && !facts.restarts() && !facts.doing().generator().isLost();
    return leaves && !facts.stood.empty() && !facts.entered.empty()
               ? "behind " + inQuotes(facts.entered) + " the generator is left in " + facts.stood
               : "";
}

constexpr std::array kInvariants{
    Invariant{"ACommandGoesOutInItsPhases", When::Frame, phaseOfCommand},
    Invariant{"ACommandFollowsItsKey", When::Frame, keyOfCommand},
    Invariant{"AKeyRepeatsOnlyWhileItIsHeld", When::Always, repeatedKey},
    Invariant{"TheScreenShowsTheLastReport", When::Moved, shownPhase},
    Invariant{"OnlyThePanelInFrontIsInReach", When::Moved, reachBehindPanel},
    Invariant{"AnErrorCanBeReset", When::Moved, errorWithoutKey},
    Invariant{"OneWorkflowRuns", When::Moved, foreignParts},
    Invariant{"AWorkflowHasAnEnd", When::Moved, deadEnd},
    Invariant{"BusyEndsWithTheWorkflow", When::Moved, busyAndIdle},
    Invariant{"TheScreenIsWhatStands", When::Moved, otherThanItStands},
    Invariant{"APromptNamesARunThatGoesOn", When::Moved, wordsOfNoRun},
    Invariant{"AQuestionComesWithItsKeys", When::Moved, questionWithoutKeys},
    Invariant{"NothingBlinksAtRest", When::Moved, blinksAtRest},
    Invariant{"ThePollComesBack", When::Moved, pollStaysAway},
    Invariant{"APressThatDoesNothingTakesNoXRays", When::Moved, raysTakenByNothing},
    Invariant{"ALentMachineHasXRays", When::Moved, lentWithoutRays},
    Invariant{"AKeyLeadsOn", When::Stood, nothingToPress},
    Invariant{"AClosedConsoleLeavesNoMode", When::Closed, modeLeftBehind},
    Invariant{"NothingRunsOnInReady", When::Rest, runningAtRest},
    Invariant{"ThereIsAWayBackToReady", When::Rest, notReady},
    Invariant{"KeysAreAliveInReady", When::Rest, deadKeys},
    Invariant{"ThePollGoesOnInReady", When::Rest, pollAway},
    Invariant{"NothingIsLeftOnShowInReady", When::Rest, onShow},
    Invariant{"TheConsoleCloses", When::Closed, notClosed},
    Invariant{"AClosedConsoleLeavesXRaysAllowed", When::Closed, raysForbidden},
};

} // namespace

std::span<const Invariant> invariants() {
    return kInvariants;
}

} // namespace quillon
