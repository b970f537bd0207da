#include "Facts.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/Numbers.h"
#include "base/Text.h"
#include "console/Runs.h"

namespace quillon {

namespace {

// clang-format off
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
// clang-format on

} // namespace

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

bool Facts::running(std::string_view timer) const {
    return !timer.empty() && console().ControlHost::timer(timer).running();
}

bool Facts::atRest() const {
    if (!doing().idle() || panel() != nullptr || console()["fraOrla"].visible() ||
        console()["fraRemote"].visible() || !portOpen() || !held.empty() || link().answering()) {
        return false;
    }
    const auto& timers = kOtherTimers;
    bool waits =
        std::any_of(timers.begin(), timers.end(), [&](std::string_view timer) { return running(timer); });
    waits = waits || doing().follows();
    for (std::size_t each = 0; each < kRuns; ++each) {
        for (const std::string_view timer : rowOf(static_cast<Run>(each)).timers) {
            waits = waits || running(timer);
        }
    }
    for (const WaitRow& wait : waitRows()) {
        waits = waits || running(wait.timer);
    }
    return !waits;
}

void Facts::closeDown() {
    raysAtPress_ = doing().holdings().allowsXRays();
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
                       !held.empty() || !portOpen() || doing().generator().poweringUp() ||
                       panel() != nullptr || phase == 0;
    if (holds || link().polls()) {
        pollAway = -1;
    } else if (pollAway < 0) {
        pollAway = now();
    }
}

void Facts::watchUsers() {
    const bool refreshes = running("tmrWaitRefresh");
    if (!doing().lent()) {
        handedOver = false;
    } else if (arriving_ && !running("tmrGotoUserMode")) {
        handedOver = doing().mode() == Phase::NormalOperation && !(refreshed_ && !refreshes);
    }
    arriving_ = running("tmrGotoUserMode");
    refreshed_ = refreshes;
}

void Facts::handAt(std::string_view name) {
    for (const KeyRow& row : kKeys) {
        if (std::find(row.keys.begin(), row.keys.end(), name) != row.keys.end()) {
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
    if (running("tmrDelayShow")) {
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
