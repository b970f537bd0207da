#include "Session.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <stdexcept>

#include "base/Numbers.h"
#include "base/Text.h"
#include "console/ctrQuillonConsole.h"
#include "link/OutboundTable.h"
#include "link/TorvaneSerial.h"
#include "sim/Options.h"
#include "ui/ControlTable.h"

namespace quillon {

namespace {

constexpr std::string_view kFrameEnd = "\r\n\x03";
constexpr std::array<std::string_view, 5> kPanels{"SelWSCal", "SelWSAutocal", "AutocalSelFocusOrParameter",
                                                  "AutocalWarning", "Error"};

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

/// Timers of workflows. None may run when the operator has nothing open and the generator is in order.
constexpr std::array<std::string_view, 17> kWorkflowTimers{
    "tmrDelayShow", "tmrWaitStartGenerator", "tmrWaitRefresh", "tmrDelay", "tmrConfigON", "tmrConfigOFF",
    "tmrCalON", "tmrCalOFF", "tmrAutocalON", "tmrAutocalOFF", "tmrDelayAutocal", "tmrIniAutocal",
    "tmrReadExposureCounters", "tmrResetTubeCounter", "tmrFlRefresh", "tmrGotoUserMode", "tmrShutdown"};
/// The two that wait for the generator's answer to "Confirm" and "Dismiss" do so for as long as it takes.
constexpr std::array<std::string_view, 5> kPanelTimers{"tmrAutoRepeat", "tmrAutorepFlKVP", "tmrWarning",
                                                       "tmrBlinking", "tmrBlinkingOff"};
// clang-format on

/// The first word, and what stands behind it.
std::pair<std::string_view, std::string_view> firstWord(std::string_view text) {
    const auto blank = std::min(text.find(' '), text.size());
    return {text.substr(0, blank), trim(text.substr(blank))};
}

/// The row of the longest mnemonic that the frame begins with; empty when there is none.
const OutboundRow* rowOf(std::string_view frame) {
    const OutboundRow* longest = nullptr;
    for (const OutboundRow& row : kOutboundTable) {
        if (frame.starts_with(row.mnemonic) &&
            (longest == nullptr || row.mnemonic.size() > longest->mnemonic.size())) {
            longest = &row;
        }
    }
    return longest;
}

simulator::Options optionsOf(const std::string& text) {
    simulator::Options options;
    for (const std::string_view word : split(text, " ")) {
        if (!word.empty()) {
            if (const std::string problem = simulator::applyOption(options, word); !problem.empty()) {
                throw std::invalid_argument(problem);
            }
        }
    }
    return options;
}

std::string nameOf(const ControlHost& host, const Control& control) {
    std::string name = host.name() + "." + control.name();
    return control.index() ? name + "(" + std::to_string(*control.index()) + ")" : name;
}

} // namespace

std::string scenarioOf(const Plan& plan) {
    std::string text;
    if (!plan.commandLine.empty()) {
        text += "args " + plan.commandLine + "\n";
    }
    text += "file Quillon.ini\n[CONFIG]\n";
    for (const std::string& line : plan.configuration) {
        text += line + "\n";
    }
    text += "end\nstart\nsimulate " + plan.generator + "\n";
    for (const std::string& line : plan.lines) {
        text += line + "\n";
    }
    return text;
}

Session::Session(const Plan& plan) {
    std::string configuration = "[CONFIG]\r\n";
    for (const std::string& line : plan.configuration) {
        configuration += line + "\r\n";
    }
    machine.folder.put("Quillon.ini", configuration);
    machine.port.onWritten = [this](std::string_view bytes) { written(bytes); };
    application_ =
        std::make_unique<Application>(Platform{machine.time.schedule(), machine.time, machine.port,
                                               machine.store, machine.folder, machine.desktop, machine.power},
                                      plan.commandLine);
    application_->start();
    sending_ = &application_->link().timer("tmrProtocolHandshaking");
    holding_ = &application_->link().timer("tmrWaitAfterRx");
    generator_ = std::make_unique<simulator::Generator>(
        optionsOf(plan.generator), [this](std::string_view bytes) { deliver(bytes); }, machine.time.now());
    wakeGenerator();
}

Session::~Session() {
    machine.port.onWritten = {};
}

// The line -----------------------------------------------------------------------------------------------

void Session::written(std::string_view bytes) {
    writing_ = true;
    machine.port.takeWritten(); // what a session has no use for must not pile up over its days
    partialFrame_ += bytes;
    for (auto end = partialFrame_.find(kFrameEnd); end != std::string::npos;
         end = partialFrame_.find(kFrameEnd)) {
        const std::string text = partialFrame_.substr(0, end);
        partialFrame_.erase(0, end + kFrameEnd.size());
        frameWritten(text);
    }
    if (generator_) {
        generator_->receive(toGenerator ? toGenerator(bytes) : std::string(bytes), machine.time.now());
        wakeGenerator();
    }
    writing_ = false;
}

void Session::frameWritten(const std::string& text) {
    ++frameCount_;
    checkMask(text);
    checkKeys(text);
    if (onFrame) {
        onFrame(text);
    }
}

void Session::deliver(std::string_view bytes) {
    if (writing_) {
        machine.time.schedule().post(0, [this, later = std::string(bytes)] { deliver(later); });
        return;
    }
    const std::string arriving = toConsole ? toConsole(bytes) : std::string(bytes);
    if (machine.port.isOpen()) {
        heard(arriving);
    }
    machine.port.receive(arriving);
}

void Session::heard(std::string_view bytes) {
    for (const char c : bytes) {
        if (c != '\r' && c != '\n' && c != '\x03') {
            partialText_ += c;
            continue;
        }
        ++reportCount_;
        if (partialText_.size() >= 2 && equalsNoCase(partialText_.substr(0, 2), "ST")) {
            phaseHeard(std::string_view(partialText_).substr(2));
        }
        enableAsked_ = enableAsked_ || partialText_.starts_with("RX?");
        partialText_.clear();
    }
}

void Session::phaseHeard(std::string_view value) {
    if (!isNumeric(value)) {
        return;
    }
    const double phase = std::floor(toDouble(value));
    if (phase >= 1 && phase <= 13) {
        phaseText_ = kPhaseTexts[static_cast<std::size_t>(phase) - 1];
    }
    if (phase < 32) {
        mask_ = phase < 1 ? 0 : static_cast<std::int32_t>(1U << static_cast<unsigned>(phase - 1));
        masks_.insert(mask_);
    }
}

void Session::wakeGenerator() {
    const auto due = generator_->nextDue();
    if (!due || (wake_ && *wake_ <= *due)) {
        return;
    }
    wake_ = due;
    machine.time.schedule().post(*due - machine.time.now(), [this, at = *due] {
        if (wake_ == at) {
            wake_.reset();
            generator_->advance(machine.time.now());
            wakeGenerator();
        }
    });
}

void Session::advance(Milliseconds ms) {
    machine.time.advance(ms, [this] {
        watch();
        return ended();
    });
    watch();
}

// What must never happen ---------------------------------------------------------------------------------

void Session::violation(const std::string& what) {
    if (violations_.size() < 20) {
        violations_.push_back(std::to_string(machine.time.now()) + " " + what);
    }
}

void Session::watch() {
    // Nothing is left of the queue when nothing waits for its turn.
    if (!sending_->running() && !holding_->running()) {
        masks_ = {mask_};
        enableAsked_ = false;
    }
    if (held_.empty() && application_->link().timer("tmrAutoRepeat").running()) {
        violation("a key repeats that nobody holds");
        application_->link().timer("tmrAutoRepeat").stop();
    }
}

void Session::checkScreen() {
    const std::string& shown = application_->link()["txtPHASE"].caption();
    if (phaseText_ != "-" && shown != phaseText_ && machine.port.isOpen()) {
        violation("the screen says \"" + shown + "\", the last report \"" + phaseText_ + "\"");
        phaseText_ = shown;
    }
}

void Session::checkMask(std::string_view text) {
    const OutboundRow* row = rowOf(text);
    // The generator may ask in any phase whether exposures are enabled, and is answered.
    if (row == nullptr || (row->mnemonic == "RX" && enableAsked_)) {
        return;
    }
    const bool covered = std::any_of(masks_.begin(), masks_.end(),
                                     [row](std::int32_t mask) { return (mask & row->phase) == mask; });
    if (!covered) {
        violation("\"" + std::string(text) + "\" went out in a phase that does not allow it");
    }
}

void Session::checkKeys(std::string_view text) {
    for (const KeyRow& row : kKeys) {
        if (text.starts_with(row.command) && --allowance_[row.command] < 0) {
            violation("\"" + std::string(text) + "\" without its key, or more often than that");
            allowance_[row.command] = 0;
        }
    }
}

void Session::paidFor(std::string_view name) {
    for (const KeyRow& row : kKeys) {
        if (std::find(row.keys.begin(), row.keys.end(), name) != row.keys.end()) {
            allowance_[row.command] += row.transmissions;
        }
    }
}

// The operator -------------------------------------------------------------------------------------------

Control* Session::find(std::string_view name) {
    const auto dot = name.find('.');
    if (dot == std::string_view::npos) {
        return nullptr;
    }
    const std::string_view owner = name.substr(0, dot);
    const ControlHost* host = equalsNoCase(owner, "Quillon") ? &application_->console()
                              : equalsNoCase(owner, "TorvaneSerial")
                                  ? static_cast<ControlHost*>(&application_->link())
                                  : application_->console().keyed(owner);
    if (host == nullptr) {
        return nullptr;
    }
    const auto [plain, index] = indexedName(name.substr(dot + 1));
    return host->find(plain, index < 0 ? std::nullopt : std::optional(index));
}

std::vector<std::string> Session::reachable() {
    std::vector<std::string> names;
    std::vector<ControlHost*> hosts{&application_->console(), &application_->link()};
    for (const std::string_view key : kPanels) {
        if (ControlHost* panel = application_->console().keyed(key)) {
            hosts.push_back(panel);
        }
    }
    for (const ControlHost* host : hosts) {
        for (const auto& control : host->controls()) {
            const Kind kind = control->kind();
            const bool touched = kind == Kind::Button || kind == Kind::Slider || kind == Kind::List ||
                                 (kind == Kind::TextBox && !control->readOnly());
            if (touched && application_->input().reachable(*control)) {
                names.push_back(nameOf(*host, *control));
            }
        }
    }
    return names;
}

bool Session::perform(std::string_view line) {
    const auto [word, rest] = firstWord(line);
    if (ended() || !perform(word, rest)) {
        return false;
    }
    if (keepDone_) {
        done_.emplace_back(line);
    }
    if (!ended()) {
        watch();
        checkScreen();
    }
    return true;
}

bool Session::perform(std::string_view word, std::string_view rest) {
    if (word == "wait") {
        advance(toInt32(rest));
    } else if (word == "sim") {
        forced_ = forced_ || rest.starts_with("phase");
        const std::string answer = generator_->command(rest, machine.time.now());
        wakeGenerator();
        return !answer.starts_with('?');
    } else if (word == "msg") {
        deliver(std::string(rest) + "\r\n");
    } else if (word == "answer") {
        machine.desktop.answer(rest == "yes" ? MemoryDesktop::Answer::Yes : MemoryDesktop::Answer::No);
    } else {
        const auto [name, value] = firstWord(rest);
        return act(word, std::string(name), value);
    }
    return true;
}

bool Session::act(std::string_view word, const std::string& name, std::string_view value) {
    Input& input = application_->input();
    Control* control = find(name);
    if (control == nullptr || (word == "release" && !held_.contains(name))) {
        held_.erase(name); // what was taken off the screen is held no more
        return false;
    }
    if (word != "release" && input.reachable(*control)) {
        paidFor(name);
    }
    if (word == "press") {
        held_.insert(name);
        if (!input.press(*control)) {
            held_.erase(name);
        }
    } else if (word == "release") {
        input.release(*control);
        held_.erase(name);
    } else if (word == "click") {
        input.click(*control);
        held_.erase(name);
    } else if (word == "type") {
        input.type(*control, value);
    } else if (word == "select") {
        input.select(*control, value);
    } else {
        input.slide(*control, toInt32(value));
    }
    return true;
}

bool Session::clickIfReachable(std::string_view name) {
    const Control* control = find(name);
    return control != nullptr && application_->input().reachable(*control) &&
           perform("click " + std::string(name));
}

bool Session::running(std::string_view owner, std::string_view timer) {
    const ControlHost& host =
        owner == "Quillon" ? static_cast<ControlHost&>(application_->console()) : application_->link();
    return host.timer(timer).running();
}

void Session::clearWhatStands() {
    // A slip of paper on the screen is in front of everything else.
    for (const std::string_view key :
         {"Error.cmbOK", "SelWSCal.cmdOK", "SelWSAutocal.cmdOK", "AutocalSelFocusOrParameter.cmbCancel",
          "AutocalWarning.cmbAutocalNo", "Quillon.cmdResetCounterNo", "TorvaneSerial.cmbAutocalDismiss"}) {
        (void)clickIfReachable(key);
    }
    if (!application_->console()["lblError"].caption().empty()) {
        (void)clickIfReachable("Quillon.cmbResetError");
    }
    if (!application_->console()["cmbClose"].enabled() && !running("Quillon", "tmrReadExposureCounters")) {
        // A reading that got no answer ends with the key that began it.
        (void)clickIfReachable("Quillon.cmbReadExposureCounters");
    }
}

/// Two workflows wait for the generator without an end: the seek of a point that it does not have, and the
/// way out of calibration when it stays there. Its own reset ends them.
void Session::endEndlessWaits() {
    if (!ended() && !application_->console()["cmbClose"].enabled() &&
        (running("Quillon", "tmrAutocalON") || running("Quillon", "tmrCalOFF"))) {
        perform("sim phase 2");
    }
}

void Session::comeToRest() {
    while (!held_.empty() && !ended()) {
        perform("release " + std::string(*held_.begin()));
    }
    for (const std::string_view command :
         {"sim power on", "sim silence off", "sim noise 0", "sim drop every 0", "sim drop 0", "sim heat 0",
          "sim set dipswitch 1", "sim set ack 20", "sim door 0", "sim rotor 0", "sim release",
          "sim fluoro off"}) {
        perform(command);
    }
    if (forced_) {
        // It may be in a phase that it has no way out of by itself.
        perform("sim phase 2");
        forced_ = false;
    }
    perform("wait 60000");
    for (int round = 0; round < 16 && !ended(); ++round) {
        clearWhatStands();
        endEndlessWaits();
        if (round == 8 && !application_->link().get<bool>("StatusUpdateEnable")) {
            // A report that was lost on the way out of a mode is not asked for again, since the poll stays
            // off there. The generator tells its phase when it is switched on.
            perform("sim power off");
            perform("sim power on");
        }
        if (application_->console()["cmbClose"].caption() == "Exit") {
            (void)clickIfReachable("Quillon.cmbClose");
        } else if (round >= 3) {
            return;
        }
        perform("wait 40000");
    }
}

void Session::checkRest() {
    for (const std::string_view timer : kWorkflowTimers) {
        // The way out of calibration waits for normal operation without an end.
        const bool waits = timer == "tmrCalOFF" && phaseText_ != kPhaseTexts[1];
        if (running("Quillon", timer) && !waits) {
            violation(std::string(timer) + " runs on though nothing is open");
        }
    }
    for (const std::string_view timer : kPanelTimers) {
        if (running("TorvaneSerial", timer)) {
            violation(std::string(timer) + " runs on though nothing is open");
        }
    }
}

void Session::leave() {
    comeToRest();
    if (ended()) {
        return;
    }
    clearWhatStands();
    perform("wait 120000");
    checkRest();
    const Control& cmbClose = application_->console()["cmbClose"];
    if (!application_->input().reachable(cmbClose) || cmbClose.caption() != "Close") {
        violation("the operator is stuck: \"" + cmbClose.caption() + "\" " +
                  (cmbClose.enabled() ? "enabled" : "disabled"));
        return;
    }
    // A press a level: what a mode has covered may still be open.
    for (int presses = 0; presses < 5 && !ended(); ++presses) {
        (void)clickIfReachable("Quillon.cmbClose");
        perform("wait 60000");
        endEndlessWaits();
    }
    if (!ended()) {
        violation("the application did not end");
    }
}

} // namespace quillon
