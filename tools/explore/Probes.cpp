#include "Probes.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include "Session.h"
#include "base/Numbers.h"
#include "console/KeyReasons.h"
#include "console/StatusLine.h"
#include "console/layout/PanelLayouts.h"
#include "link/InboundTable.h"
#include "link/OutboundTable.h"

namespace quillon {

namespace {

using T = ConsoleTexts;

// clang-format off
constexpr std::array<std::string_view, kWays> kWayNames{
    "a start anew", "Ready", "an exposure", "calibration", "configuration", "autocalibration", "a loss",
    "the key that closes"};

struct TextRow {
    std::string_view name;
    std::string T::*text;
};
constexpr std::array kBoxes{
    TextRow{"box restart",      &T::sShutdownQuestion},
    TextRow{"box refused",      &T::sRestartRefused},
    TextRow{"box no number",    &T::sNoNumber},
    TextRow{"box no speed",     &T::sNoBaudrate},
    TextRow{"box no port",      &T::sNoPort},
    TextRow{"box port",         &T::sCannotOpenPort},
};

/// Why a key is dead, as its window says it.
constexpr std::array kWhys{
    TextRow{"why an error stands",    &T::sWhyError},
    TextRow{"why no error stands",    &T::sWhyNoError},
    TextRow{"why an exposure",        &T::sWhyExposure},
    TextRow{"why nobody answers",     &T::sWhyUnheard},
    TextRow{"why a question",         &T::sWhyQuestion},
    TextRow{"why a panel",            &T::sWhyPanel},
    TextRow{"why a mode",             &T::sWhyMode},
    TextRow{"why not in a mode",      &T::sWhyNotIn},
    TextRow{"why not now",            &T::sWhyNotNow},
    TextRow{"why no action",          &T::sWhyNoAction},
    TextRow{"why not digital",        &T::sWhyNotDigital},
    TextRow{"why no field",           &T::sWhyNoField},
    TextRow{"why no density",         &T::sWhyNoDensity},
    TextRow{"why no brightness",      &T::sWhyNoBrightness},
    TextRow{"why a fixed kVp",        &T::sWhyFixedKVP},
    TextRow{"why no number",          &T::sWhyNoNumber},
    TextRow{"why a hot tube",         &T::sStateTubeTooHot},
    TextRow{"why a power-up",         &T::sPoweringUp},
    TextRow{"why the closing",        &T::sClosing},
    TextRow{"why a run",              &T::sPleaseWait},
    TextRow{"why settings",           &T::sReadingSettings},
};

struct PanelRow {
    std::string_view key;
    std::span<const ControlRow> rows;
};
constexpr std::array kPanels{
    PanelRow{"SelWSCal",                   kSelectWorkstationRows},
    PanelRow{"SelWSAutocal",               kSelectWorkstationRows},
    PanelRow{"AutocalSelFocusOrParameter", kSelectFocusRows},
    PanelRow{"AutocalWarning",             kWarningRows},
    PanelRow{"Error",                      kErrorRows},
};

/// What cannot be reached, and why; `*` at the end stands for any rest. One that is reached all the same
/// makes its reason a complaint.
struct Reason {
    std::string_view probe;
    std::string_view why;
};
constexpr std::string_view kHost = "a host sends it by an operation, and no key of the console does";
constexpr std::string_view kLent = "the keys are hidden while the machine is lent, and their page is when it is not";
constexpr std::string_view kDigitalPage = "the way to its page is barred while the machine is lent, and hidden when it is not";
constexpr std::string_view kOwnWays = "the console leads through the pages of the panel and takes its own ways away";
constexpr std::string_view kShort = "it holds the poll at first, and is over before a silence is long enough for a loss";
constexpr std::array kReasons{
    Reason{"command KV?", kHost},
    Reason{"command MA?", kHost},
    Reason{"command MS?", kHost},
    Reason{"command MX?", kHost},
    Reason{"command FO?", kHost},
    Reason{"command FI?", kHost},
    Reason{"command FN?", kHost},
    Reason{"command FS?", kHost},
    Reason{"command FLK?", kHost},
    Reason{"command FLT?", kHost},
    Reason{"command FLP?", kHost},
    Reason{"command FLA?", kHost},
    Reason{"command SA", kHost},
    Reason{"command SB", kHost},
    Reason{"command SC", kHost},
    Reason{"command SD", kHost},
    Reason{"command SE", kHost},
    Reason{"command AEC", kHost},
    Reason{"command KV", kHost},
    Reason{"command MS", kHost},
    Reason{"command MX", kHost},
    Reason{"command MA", kHost},
    Reason{"command FLK", kHost},
    Reason{"command FLT", kHost},
    Reason{"command KVTF", kHost},
    Reason{"command ABC", kHost},
    Reason{"command FLC", kHost},
    Reason{"command RM", kHost},
    Reason{"command BR", kHost},
    Reason{"command FLMA+", kHost},
    Reason{"command FLMA-", kHost},
    Reason{"command LE", kHost},
    Reason{"command RP?", kHost},
    Reason{"command C++", kHost},
    Reason{"command C--", kHost},
    Reason{"command CAR", kHost},
    Reason{"command TM", kLent},
    Reason{"command DOR", kLent},
    Reason{"command DO?", kLent},
    Reason{"command DOA?", kLent},
    Reason{"key TorvaneSerial.cmbDose*", kLent},
    Reason{"key TorvaneSerial.comboReadExposureCounter", kLent},
    Reason{"key TorvaneSerial.cmbReadExposureCounter", kLent},
    Reason{"key TorvaneSerial.cmbTM*", kLent},
    Reason{"command PH", kDigitalPage},
    Reason{"command BR-", kDigitalPage},
    Reason{"command BR--", kDigitalPage},
    Reason{"command DA", kDigitalPage},
    Reason{"key TorvaneSerial.cmbMainMenu(2)", kDigitalPage},
    Reason{"key TorvaneSerial.cmbDigitalAEC", kDigitalPage},
    Reason{"key TorvaneSerial.cmbPhotomultiplier", kDigitalPage},
    Reason{"key TorvaneSerial.cmbDAEC*", kDigitalPage},
    Reason{"key TorvaneSerial.cmbMinimize", kOwnWays},
    Reason{"key TorvaneSerial.Iconized", kOwnWays},
    Reason{"key TorvaneSerial.cmbGotoServiceMenu", kOwnWays},
    Reason{"key TorvaneSerial.cmbGotoMainMenu", kOwnWays},
    Reason{"key TorvaneSerial.cmbServiceMenu*", kOwnWays},
    Reason{"key TorvaneSerial.cmbConfiguration", kOwnWays},
    Reason{"key TorvaneSerial.cmbCalibration", kOwnWays},
    Reason{"key TorvaneSerial.cmbAutocalibration", kOwnWays},
    Reason{"key TorvaneSerial.comboResetExposureCounter", kOwnWays},
    Reason{"key TorvaneSerial.cmbResetExposureCounter", kOwnWays},
    Reason{"key TorvaneSerial.cmbComm*", kOwnWays},
    Reason{"key TorvaneSerial.cmbToggleDebug", kOwnWays},
    Reason{"key TorvaneSerial.lstExtendedPosition", "it is made hidden and shown by nobody"},
    Reason{"key Quillon.cmdSoftwareUpgrade", "it is disabled as long as it lives"},
    Reason{"wait TorvaneSerial.tmrAutorepFlKVP", "a host asks for it, and the console does not"},
    Reason{"entering configuration meets a loss", kShort},
    Reason{"leaving configuration meets a loss", kShort},
    Reason{"entering calibration meets a loss", kShort},
    Reason{"leaving autocalibration meets a loss", kShort},
    Reason{"box refused", "the PC of the scenario runner starts anew when it is asked to; ClosingTest has one that does not"},
};
// clang-format on

std::string meeting(Run run, Way way) {
    return std::string(rowOf(run).name) + " meets " +
           std::string(kWayNames.at(static_cast<std::size_t>(way)));
}

/// The way as which a phase is met; nothing for those that are none.
std::optional<Way> wayOf(int phase) {
    switch (phase) {
    case 1:
        return Way::Restart;
    case 2:
        return Way::Ready;
    case 3:
    case 4:
    case 5:
        return Way::Exposure;
    case 6:
        return Way::Calibration;
    case 8:
        return Way::Configuration;
    case 9:
    case 12:
    case 13:
        return Way::Autocalibration;
    default:
        return std::nullopt;
    }
}

/// What stands in the text before its first argument begins the words.
bool tells(std::string_view words, std::string_view text) {
    return words.starts_with(text.substr(0, text.find('%')));
}

/// The longest that the text begins with.
template <typename Table, typename Member>
std::string_view longest(const Table& table, Member member, std::string_view text) {
    std::string_view found;
    for (const auto& row : table) {
        if (text.starts_with(row.*member) && (row.*member).size() > found.size()) {
            found = row.*member;
        }
    }
    return found;
}

} // namespace

// What there is to reach ---------------------------------------------------------------------------------

const Probes& Probes::all() {
    static const Probes probes;
    return probes;
}

Probes::Probes() {
    addLine();
    addRuns();
    addScreen();
    addReasons();
}

void Probes::add(std::string name) {
    if (byName_.emplace(name, names_.size()).second) {
        names_.push_back(std::move(name));
    }
}

void Probes::addLine() {
    for (const OutboundRow& row : kOutboundTable) {
        add("command " + std::string(row.mnemonic));
    }
    for (const InboundRow& row : kInboundTable) {
        add("message " + std::string(row.key));
    }
}

void Probes::addRuns() {
    for (std::size_t i = 0; i < kRuns; ++i) {
        const Run run{static_cast<std::uint8_t>(i)};
        const std::string name(rowOf(run).name);
        for (std::size_t way = 0; way < kWays; ++way) {
            add(meeting(run, static_cast<Way>(way)));
        }
        if (run != Run::None) {
            add("begins " + name);
        }
        if (run != Run::None && run != Run::Closing) {
            add("ends " + name);
            add("gives way " + name);
        }
        if (rowOf(run).waits) {
            add("status " + name);
        }
    }
    for (std::size_t stand = 0; stand < kStands; ++stand) {
        add("stands " + std::string(rowOf(static_cast<Stand>(stand)).name));
    }
}

void Probes::addScreen() {
    Session session(Plan{});
    for (const ControlHost* host : {static_cast<const ControlHost*>(&session.application().console()),
                                    static_cast<const ControlHost*>(&session.application().link())}) {
        for (const auto& control : host->controls()) {
            if (takesSomething(*control)) {
                add("key " + nameOf(*control));
            } else if (control->kind() == Kind::Timer) {
                add("wait " + nameOf(*control));
            }
        }
    }
    for (const PanelRow& panel : kPanels) {
        add("panel " + std::string(panel.key));
        for (const ControlRow& row : panel.rows) {
            if (row.kind == Kind::Button) {
                add("key " + std::string(panel.key) + "." + std::string(row.name));
            }
        }
    }
    for (const std::string_view error : {"protocol", "dip switch"}) {
        add("panel Error " + std::string(error));
    }
    for (const TextRow& box : kBoxes) {
        add(std::string(box.name));
    }
    for (const TextRow& why : kWhys) {
        add(std::string(why.name));
    }
    add("box restart yes");
    add("box restart no");
    for (const std::string_view status :
         {"settings", "no answer", "count", "seconds left", "exposures made"}) {
        add("status " + std::string(status));
    }
}

void Probes::addReasons() {
    reasons_.resize(names_.size());
    for (const Reason& reason : kReasons) {
        bool used = false;
        for (std::size_t i = 0; i < names_.size(); ++i) {
            const std::string_view name = names_[i];
            const bool all = reason.probe.ends_with('*');
            if (all ? name.starts_with(reason.probe.substr(0, reason.probe.size() - 1))
                    : name == reason.probe) {
                reasons_[i] = reason.why;
                used = true;
            }
        }
        if (!used) {
            throw std::logic_error("there is no probe " + std::string(reason.probe));
        }
    }
}

std::size_t Probes::find(std::string_view name) const {
    const auto found = byName_.find(name);
    return found == byName_.end() ? names_.size() : found->second;
}

// What was reached ---------------------------------------------------------------------------------------

void Marks::reach(std::string_view probe) {
    if (any()) {
        reach(Probes::all().find(probe));
    }
}

bool Marks::reached(std::string_view probe) const {
    return any() && reached(Probes::all().find(probe));
}

std::size_t Marks::count() const {
    return static_cast<std::size_t>(std::count(bytes_.begin(), bytes_.end(), 1));
}

std::string Marks::figures() const {
    const Probes& probes = Probes::all();
    std::size_t excused = 0;
    for (std::size_t i = 0; i < bytes_.size(); ++i) {
        excused += bytes_[i] == 0 && !probes.reason(i).empty() ? 1 : 0;
    }
    return "reached " + std::to_string(count()) + " of " + std::to_string(probes.size()) + ", " +
           std::to_string(excused) + " more cannot be";
}

std::string Marks::complaints() const {
    const Probes& probes = Probes::all();
    std::string text;
    for (std::size_t i = 0; i < bytes_.size(); ++i) {
        const bool excused = !probes.reason(i).empty();
        if (bytes_[i] == 0 && !excused) {
            text += "missing: " + probes.name(i) + "\n";
        } else if (bytes_[i] != 0 && excused) {
            text += "reached against its reason: " + probes.name(i) + "\n";
        }
    }
    return text;
}

// How it is seen -----------------------------------------------------------------------------------------

Watch::Watch(Rig& rig, const Facts& facts, Marks marks) : rig_(rig), facts_(facts), marks_(marks) {
    const Probes& probes = Probes::all();
    for (std::size_t i = 0; i < kWhys.size(); ++i) {
        whys_.push_back(i);
    }
    for (const ControlHost* host : {static_cast<const ControlHost*>(&facts.console()),
                                    static_cast<const ControlHost*>(&facts.link())}) {
        for (const auto& control : host->controls()) {
            if (control->kind() == Kind::Timer) {
                const Timer& timer = static_cast<const TimerControl&>(*control).timer();
                waits_.push_back({&timer, probes.find("wait " + nameOf(*control)), false, 0});
            }
        }
    }
}

void Watch::frameWritten(std::string_view text) {
    marks_.reach("command " + std::string(longest(kOutboundTable, &OutboundRow::mnemonic, text)));
}

void Watch::reportHeard(std::string_view text) {
    const std::string_view key = longest(kInboundTable, &InboundRow::key, text);
    marks_.reach("message " + std::string(key));
    if (key == "ST") {
        if (const auto way = wayOf(static_cast<int>(toInt32(text.substr(2))))) {
            meets(*way);
        }
    }
}

void Watch::handAt(std::string_view name) {
    marks_.reach("key " + std::string(name));
}

void Watch::meets(Way way) {
    marks_.reach(meeting(facts_.doing().run(), way));
}

void Watch::look() {
    for (Wait& wait : waits_) {
        if (wait.ran && facts_.now() >= wait.due &&
            (!wait.timer->running() || wait.timer->due() != wait.due)) {
            marks_.reach(wait.probe);
        }
        wait.ran = wait.timer->running();
        wait.due = wait.timer->due();
    }
    const bool lost = facts_.doing().generator().isLost();
    if (lost && !lost_) {
        marks_.reach(meeting(run_, Way::Lost));
    }
    lost_ = lost;
    if (const Run run = facts_.doing().run(); run != run_) {
        marks_.reach((run == Run::None ? "ends " : "gives way ") + std::string(rowOf(run_).name));
        marks_.reach("begins " + std::string(rowOf(run).name));
        run_ = run;
    }
}

void Watch::moved() {
    if (facts_.atRest()) {
        marks_.reach("stands " + std::string(rowOf(standOf(facts_.doing().heard())).name));
    }
    watchStatus();
    watchPanels();
    watchBoxes();
    watchReasons();
}

void Watch::watchStatus() {
    const StatusLine& status = facts_.application().signs().status;
    const Progress progress = status.progress();
    if (!progress.what.empty()) {
        marks_.reach("status " + (facts_.doing().waits() ? std::string(rowOf(facts_.doing().run()).name)
                                                         : std::string("settings")));
    }
    if (status.line().words.find("no answer") != std::string::npos) {
        marks_.reach("status no answer");
    }
    if (progress.count.of > 0) {
        marks_.reach("status count");
    } else if (progress.ends) {
        marks_.reach("status seconds left");
    } else if (!status.howFar().empty()) {
        marks_.reach("status exposures made");
    }
}

void Watch::watchPanels() {
    const ConsoleTexts& texts = facts_.application().signs().texts;
    for (const PanelRow& row : kPanels) {
        const ControlHost* panel = facts_.console().keyed(row.key);
        if (panel == nullptr) {
            continue;
        }
        marks_.reach("panel " + std::string(row.key));
        if (const Control* caption = panel->find("myCaption")) {
            marks_.reach(caption->caption() == texts.sDipSwitchError ? "panel Error dip switch"
                                                                     : "panel Error protocol");
        }
    }
}

void Watch::watchReasons() {
    std::erase_if(whys_, [this](std::size_t at) { return marks_.reached(kWhys.at(at).name); });
    if (whys_.empty()) {
        return;
    }
    const Signs& signs = facts_.application().signs();
    for (const ControlHost* host : facts_.hosts()) {
        for (const auto& control : host->controls()) {
            const bool seen = takesSomething(*control) && control->shown();
            const std::string why = seen ? signs.reasons.why(*control) : std::string();
            for (const std::size_t at : whys_) {
                if (!why.empty() && tells(why, signs.texts.*kWhys.at(at).text)) {
                    marks_.reach(kWhys.at(at).name);
                }
            }
        }
    }
}

void Watch::watchBoxes() {
    const ConsoleTexts& texts = facts_.application().signs().texts;
    const auto& boxes = rig_.machine.desktop.boxes();
    for (; boxes_ < boxes.size(); ++boxes_) {
        for (const TextRow& row : kBoxes) {
            if (tells(boxes[boxes_].text, texts.*row.text)) {
                marks_.reach(row.name);
            }
        }
        if (boxes[boxes_].box == MemoryDesktop::Box::Question) {
            marks_.reach(boxes[boxes_].yes ? "box restart yes" : "box restart no");
        }
    }
}

} // namespace quillon
