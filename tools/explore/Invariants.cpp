#include "Invariants.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>
#include <vector>

#include "base/Colours.h"
#include "base/Numbers.h"
#include "base/Text.h"
#include "console/Runs.h"
#include "console/Standing.h"
#include "link/OutboundTable.h"

namespace quillon {

namespace {

// clang-format off
constexpr std::array<std::string_view, 13> kPhaseTexts{
    "Initialization", "Normal Operation", "Preparation", "RAD Exposure", "FL Exposure", "Calibration", "ERROR",
    "Configuration", "Autocalibration", "Tube Too Hot", "Confirm/Dismiss", "Autocal error", "Autocal OK"};

/// Commands that change the machine, and the keys without which none of them may go out.
struct KeyRow {
    std::string_view command;
    std::vector<std::string_view> keys;
    int transmissions = 4; ///< that one press can bring, when nothing acknowledges it
};
const std::array<KeyRow, 9> kKeys{
    KeyRow{"XR1",  {"TorvaneSerial.cmdSWExposure"}},
    KeyRow{"CF1",  {"Quillon.cmbConfiguration", "TorvaneSerial.cmbConfiguration"}},
    KeyRow{"CF0",  {"Quillon.cmbConfiguration", "TorvaneSerial.cmbConfiguration", "Quillon.cmbClose"}},
    KeyRow{"CA1",  {"SelWSCal.cmdOK", "AutocalWarning.cmbAutocalYes", "TorvaneSerial.cmbCalibration",
                    "Quillon.cmbManualCalibration", "Quillon.cmbClose"}},
    KeyRow{"CAU1", {"AutocalWarning.cmbAutocalYes", "TorvaneSerial.cmbAutocalibration", "TorvaneSerial.cmbAutocalConfirm"}, 8}, // said once more when nothing answers
    KeyRow{"TCR",  {"Quillon.cmdResetCounterYes", "TorvaneSerial.cmbResetExposureCounter"}},
    KeyRow{"DOR",  {"TorvaneSerial.cmbDoseReset"}},
    KeyRow{"CFD",  {"TorvaneSerial.cmbDfltConfig"}},
    KeyRow{"CS",   {"TorvaneSerial.cmbStoreCalValue"}},
};

constexpr std::array<std::string_view, 5> kPanelTimers{
    "tmrAutoRepeat", "tmrAutorepFlKVP", "tmrWarning", "tmrBlinking", "tmrBlinkingOff"};
/// Timers of the console that belong to no run.
constexpr std::array<std::string_view, 5> kOtherTimers{
    "tmrDelayShow", "tmrWaitStartGenerator", "tmrWaitRefresh", "tmrDelay", "tmrShutdown"};
constexpr std::array<std::string_view, 8> kFrames{
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

bool running(const Facts& facts, std::string_view timer) {
    return !timer.empty() && facts.console().timer(timer).running();
}

std::string inQuotes(std::string_view text) {
    return "\"" + std::string(text) + "\"";
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
                                     [row](std::int32_t mask) { return (mask & row->phase) == mask; });
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
    const std::string_view told = kPhaseTexts.at(static_cast<std::size_t>(facts.phase) - 1);
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
    const bool settled = !facts.doing().is(Run::Closing) && !running(facts, "tmrDelayShow");
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
            if (running(facts, timer) && !holds(own.timers, timer) && !outlives(timer)) {
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
    const auto reaches = [&](std::string_view key) { return facts.reaches(console[key]); };
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
    bool byTime = doing.is(Run::Closing) || running(facts, "tmrDelayShow");
    for (const std::string_view timer : rowOf(doing.run()).timers) {
        byTime = byTime || running(facts, timer);
    }
    for (const WaitRow& wait : waitRows()) {
        byTime = byTime || running(facts, wait.timer);
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
        if (running(facts, timer)) {
            return std::string(timer) + " runs on though nothing is open";
        }
    }
    for (const std::string_view timer : kPanelTimers) {
        if (facts.link().timer(timer).running()) {
            return std::string(timer) + " runs on though nothing is open";
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
    for (const std::string_view key : {"cmbClose", "cmbConfiguration", "cmbManualCalibration",
                                       "cmbAutocalibration", "cmbReadExposureCounters", "cmbResetError"}) {
        if (!facts.reaches(facts.console()[key])) {
            return std::string(key) + " is dead";
        }
    }
    const std::string& caption = facts.console()["cmbClose"].caption();
    return caption == "Close" ? "" : "the key that closes says " + inQuotes(caption);
}

std::string pollAway(const Facts& facts) {
    return facts.link().polls() ? "" : "nothing asks the generator where it stands";
}

std::string onShow(const Facts& facts) {
    for (const std::string_view name : kFrames) {
        if (facts.console()[name].shown()) {
            return std::string(name) + " is on show in Ready";
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

// What stands ---------------------------------------------------------------------------------------------

constexpr std::array<std::string_view, 5> kNamesOfRuns{"Entering ", "Exiting ", "Aborting ", "Initializing ",
                                                       "Reading "};

std::string prompt(const Facts& facts) {
    const Control& help = facts.console()["lblHelp"];
    return help.visible() ? std::string(help.caption()) : std::string();
}

bool says(const Facts& facts, std::string_view words) {
    return prompt(facts).find(words) != std::string::npos;
}

std::string wrongArea(const Facts& facts, Area area) {
    const ctrQuillonConsole& console = facts.console();
    const bool link = console["fraTorvaneSerial"].visible();
    const bool picture = console["lblQuillonConsole"].visible();
    if (area == Area::Picture) {
        return picture && !link ? "" : "the picture at rest is not on show";
    }
    const bool behindIt = facts.doing().lent(); // the report of Ready has left it there
    return link && (!picture || behindIt) ? "" : "the link control is not on show";
}

std::string wrongPage(const Facts& facts, Page page) {
    const TorvaneSerialV3_07_QLC1& link = facts.link();
    const bool main = link["fraMainMenu"].visible();
    const auto shows = [&](int number) { return !main && link.at("fraServiceMenuItem", number).visible(); };
    const bool right = page == Page::AsLeft || (page == Page::Main && main) ||
                       (page == Page::Configuration && shows(0)) || (page == Page::Calibration && shows(1));
    return right ? "" : "another page of the link control is on show; ";
}

std::string wrongKeys(const Facts& facts, const StandingRow& row) {
    const ctrQuillonConsole& console = facts.console();
    const Keys watched = kModeKeys | Key::GoToUserMode;
    std::string wrong;
    for (std::size_t i = 0; i < kKeyNames.size(); ++i) {
        const Key key{static_cast<std::uint8_t>(i)};
        const Control& control = console[nameOf(key)];
        const std::string name(nameOf(key));
        const bool hiddenAsLeft = key == Key::GoToUserMode && !control.visible() && control.offered();
        const bool asTaken = key == Key::LinkControl && facts.frameTaken;
        if (row.inReach.has(key) && !(control.visible() && control.offered()) && !hiddenAsLeft && !asTaken) {
            wrong += name + " is not in reach; ";
        }
        const bool laidOut = row.stand != Stand::Calibration; // there they are as left
        if (laidOut && row.shown.has(key) && !control.visible()) {
            wrong += name + " is hidden; ";
        }
        if (laidOut && watched.has(key) && !row.shown.has(key) && control.visible()) {
            wrong += name + " is on show; ";
        }
        const bool lit = control.visible() && control.backColour() == kActiveColour;
        if (watched.has(key) && control.visible() && lit != row.lit.has(key)) {
            wrong += name + (lit ? " is lit; " : " is not lit; ");
        }
    }
    return wrong;
}

std::string wrongWords(const Facts& facts, Says words) {
    const auto expect = [&](std::string_view text) {
        return says(facts, text) ? std::string()
                                 : "the prompt says " + inQuotes(prompt(facts)) + ", not " + inQuotes(text);
    };
    if (says(facts, "POWER UP") && facts.phaseAt <= facts.greetedAt) {
        return {}; // nothing was reported since these words came
    }
    switch (words) {
    case Says::None:
        return prompt(facts).empty() ? "" : "the prompt says " + inQuotes(prompt(facts));
    case Says::Lost:
        return expect("Communications ERROR");
    case Says::PoweringUp:
        return prompt(facts).empty() ? "" : expect("Powering Up");
    case Says::Question: // the generator's own word may have ended it without a report
        return prompt(facts).empty() && !facts.link()["cmbAutocalConfirm"].visible()
                   ? ""
                   : expect("Press Confirm");
    case Says::Expose:
        return expect("Press Prep and Expose");
    case Says::ResultError:
        return expect("ERROR");
    case Says::ResultOk:
        return expect("OK");
    case Says::AsLeft:
        break;
    }
    return {};
}

std::string otherThanItStands(const Facts& facts) {
    if (!facts.atRest() || facts.phase == 0 || facts.doing().lastPhase() == Phase::TubeTooHot) {
        return {};
    }
    const StandingRow row = standingOf(facts.doing().heard());
    const ctrQuillonConsole& console = facts.console();
    std::string wrong = wrongPage(facts, row.page) + wrongArea(facts, row.area);
    if (const std::string keys = wrongKeys(facts, row); !keys.empty()) {
        wrong += (wrong.empty() ? "" : "; ") + keys;
    }
    if (const std::string words = wrongWords(facts, row.words); !words.empty()) {
        wrong += (wrong.empty() ? "" : "; ") + words;
    }
    const std::string& caption = console["cmbClose"].caption();
    if (row.caption != Caption::Stays && caption != (row.caption == Caption::Exit ? "Exit" : "Close")) {
        wrong += "; the key that closes says " + inQuotes(caption);
    }
    if (row.positioner == Offer::Hidden &&
        (console["cmdOrla"].visible() || console["cmdMultiRoom"].visible())) {
        wrong += "; the positioner's key is on show";
    }
    return wrong.empty() ? "" : std::string(row.name) + ": " + wrong;
}

std::string wordsOfNoRun(const Facts& facts) {
    if (!facts.doing().idle() || facts.panel() != nullptr) {
        return {};
    }
    for (const std::string_view name : kNamesOfRuns) {
        if (says(facts, name)) {
            return "the prompt says " + inQuotes(prompt(facts)) + " and nothing is under way";
        }
    }
    return {};
}

std::string questionWithoutKeys(const Facts& facts) {
    if (!says(facts, "Press Confirm") || facts.panel() != nullptr || running(facts, "tmrDelay") ||
        facts.frameTaken) {
        return {};
    }
    const bool keys =
        facts.reaches(facts.link()["cmbAutocalConfirm"]) && facts.reaches(facts.link()["cmbAutocalDismiss"]);
    return keys ? "" : "the operator is to press Confirm, which is not in reach";
}

std::string blinksAtRest(const Facts& facts) {
    return facts.doing().idle() && running(facts, "tmrIniAutocal")
               ? "the prompt blinks and nothing is under way"
               : "";
}

std::string pollStaysAway(const Facts& facts) {
    constexpr Milliseconds kLongest = 31000;
    return facts.pollAway >= 0 && facts.now() - facts.pollAway > kLongest
               ? "nothing asks the generator where it stands, and nothing holds the poll"
               : "";
}

std::string raysTakenByNothing(const Facts& facts) {
    constexpr Phases kAtRest{Phase::NormalOperation, Phase::Calibration, Phase::Configuration,
                             Phase::Autocalibration};
    if (!facts.raysBefore || !facts.held.empty() || !facts.doing().idle() ||
        !kAtRest.has(facts.doing().lastPhase())) {
        return {};
    }
    const bool now = facts.doing().allowsXRays();
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
        return facts.reaches(control) && !control.keptBack();
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
    return facts.application().ended() && !facts.restarts() && !facts.stood.empty() && !facts.entered.empty()
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

bool takesSomething(const Control& control) {
    const Kind kind = control.kind();
    return (kind == Kind::Button && !control.lamp()) || kind == Kind::Slider || kind == Kind::List ||
           (kind == Kind::TextBox && !control.readOnly());
}

void Facts::begin() {
    application().console().events.Busy.connect([this](std::int16_t state) { busy = state; });
}

void Facts::reportHeard(std::string_view text) {
    if (text.size() >= 2 && equalsNoCase(text.substr(0, 2), "ST")) {
        phaseHeard(text.substr(2));
    }
    enableAsked = enableAsked || text.starts_with("RX?");
    raysTold_ = raysTold_ || text.starts_with("RX");
    if (text.starts_with("RX") && !text.starts_with("RX?")) {
        raysByGenerator = true;
        raysBefore.reset();
    }
}

void Facts::phaseHeard(std::string_view value) {
    if (!isNumeric(value)) {
        return;
    }
    const double number = std::floor(toDouble(value));
    if (number > 1) {
        phaseAt = now();
    }
    frameTaken = frameTaken && number == phase;
    if (number >= 1 && number <= 13) {
        phase = static_cast<std::int32_t>(number);
    }
    if (number < 32) {
        mask_ = number < 1 ? 0 : static_cast<std::int32_t>(1U << static_cast<unsigned>(number - 1));
        masks.insert(mask_);
    }
}

void Facts::frameWritten(std::string_view text) {
    frame = text;
    if (frame == "RX0" || frame == "RX1") {
        rays = frame;
        raysByGenerator = false;
    }
    for (const KeyRow& row : kKeys) {
        if (frame.starts_with(row.command)) {
            --allowance[row.command];
        }
    }
    if (frame == "CA1" || frame == "CF1" || frame == "CAU1") {
        entered = frame;
    } else if (frame == "CA0" || frame == "CF0") {
        entered.clear();
    }
}

bool Facts::atRest() const {
    if (!doing().idle() || panel() != nullptr || console()["fraOrla"].visible() ||
        console()["fraRemote"].visible() || !portOpen() || !held.empty() || link().answering()) {
        return false;
    }
    const auto& timers = kOtherTimers;
    bool waits = std::any_of(timers.begin(), timers.end(),
                             [&](std::string_view timer) { return running(*this, timer); });
    waits = waits || doing().follows();
    for (std::size_t each = 0; each < kRuns; ++each) {
        for (const std::string_view timer : rowOf(static_cast<Run>(each)).timers) {
            waits = waits || running(*this, timer);
        }
    }
    for (const WaitRow& wait : waitRows()) {
        waits = waits || running(*this, wait.timer);
    }
    return !waits;
}

void Facts::closeDown() {
    raysAtPress_ = doing().allowsXRays();
    raysTold_ = false;
    raysBefore.reset();
}

void Facts::closeUp(Run before) {
    if (before == doing().run() && doing().idle() && !raysTold_) {
        raysBefore = raysAtPress_;
    }
}

bool Facts::restarts() const {
    const auto& boxes = rig_.machine.desktop.boxes();
    return !boxes.empty() && boxes.back().yes;
}

void Facts::slept(Milliseconds ms) {
    if (pollAway >= 0) {
        pollAway += ms;
    }
}

void Facts::watchPoll() {
    const bool holds = !doing().idle() || link().answering() || link().timer("tmrAutoRepeat").running() ||
                       !held.empty() || !portOpen() || doing().poweringUp() || panel() != nullptr ||
                       phase == 0;
    if (holds || link().polls()) {
        pollAway = -1;
    } else if (pollAway < 0) {
        pollAway = now();
    }
}

void Facts::watchUsers() {
    const bool refreshes = running(*this, "tmrWaitRefresh");
    if (!doing().lent()) {
        handedOver = false;
    } else if (arriving_ && !running(*this, "tmrGotoUserMode")) {
        handedOver = doing().mode() == Phase::NormalOperation && !(refreshed_ && !refreshes);
    }
    arriving_ = running(*this, "tmrGotoUserMode");
    refreshed_ = refreshes;
}

void Facts::handAt(std::string_view name) {
    for (const KeyRow& row : kKeys) {
        if (holds(row.keys, name)) {
            allowance[row.command] += row.transmissions;
        }
    }
}

void Facts::look() {
    // Nothing is left of the queue when nothing waits for its turn.
    if (!link().timer("tmrProtocolHandshaking").running() && !link().timer("tmrWaitAfterRx").running()) {
        masks = {mask_};
        enableAsked = false;
    }
    if (const Run now = doing().run(); now != run) {
        runBefore = std::exchange(run, now);
        raysBefore.reset();
        raysTold_ = true; // by that
    }
    if (running(*this, "tmrDelayShow")) {
        greetedAt = now();
    }
    watchPoll();
    watchUsers();
}

std::vector<const ControlHost*> Facts::hosts() const {
    std::vector<const ControlHost*> all{&console(), &link()};
    for (const std::string_view key :
         {"SelWSCal", "SelWSAutocal", "AutocalSelFocusOrParameter", "AutocalWarning", "Error"}) {
        if (const ControlHost* panel = console().keyed(key)) {
            all.push_back(panel);
        }
    }
    return all;
}

const ControlHost* Facts::panel() const {
    const ControlHost* front = nullptr;
    for (const ControlHost* host : hosts()) {
        const bool isPanel = host != &console() && host != &link();
        if (isPanel && (front == nullptr || host->zOrder() > front->zOrder())) {
            front = host;
        }
    }
    return front;
}

std::vector<const Control*> Facts::inReach() const {
    std::vector<const Control*> all;
    for (const ControlHost* host : hosts()) {
        for (const auto& control : host->controls()) {
            if (takesSomething(*control) && reaches(*control)) {
                all.push_back(control.get());
            }
        }
    }
    return all;
}

} // namespace quillon
