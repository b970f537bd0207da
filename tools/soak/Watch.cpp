#include "Watch.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/Numbers.h"
#include "base/Text.h"
#include "console/ctrQuillonConsole.h"
#include "link/OutboundTable.h"
#include "link/TorvaneSerial.h"

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

/// Timers of workflows. None may run when the operator has nothing open and the generator is in order.
constexpr std::array<std::string_view, 17> kWorkflowTimers{
    "tmrDelayShow", "tmrWaitStartGenerator", "tmrWaitRefresh", "tmrDelay", "tmrConfigON", "tmrConfigOFF",
    "tmrCalON", "tmrCalOFF", "tmrAutocalON", "tmrAutocalOFF", "tmrDelayAutocal", "tmrIniAutocal",
    "tmrReadExposureCounters", "tmrResetTubeCounter", "tmrFlRefresh", "tmrGotoUserMode", "tmrShutdown"};
/// The two that wait for the generator's answer to "Confirm" and "Dismiss" do so for as long as it takes.
constexpr std::array<std::string_view, 5> kPanelTimers{"tmrAutoRepeat", "tmrAutorepFlKVP", "tmrWarning",
                                                       "tmrBlinking", "tmrBlinkingOff"};
// clang-format on

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

} // namespace

Watch::Watch(Application& application, const MemoryPlatform& machine)
    : application_(application), machine_(machine),
      sending_(application.link().timer("tmrProtocolHandshaking")),
      holding_(application.link().timer("tmrWaitAfterRx")) {}

void Watch::frameWritten(std::string_view text) {
    checkMask(text);
    checkKeys(text);
}

void Watch::reportHeard(std::string_view text) {
    if (text.size() >= 2 && equalsNoCase(text.substr(0, 2), "ST")) {
        phaseHeard(text.substr(2));
    }
    enableAsked_ = enableAsked_ || text.starts_with("RX?");
}

void Watch::phaseHeard(std::string_view value) {
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

void Watch::violation(const std::string& what) {
    if (violations_.size() < 20) {
        violations_.push_back(std::to_string(machine_.time.now()) + " " + what);
    }
}

void Watch::look(bool anyHeld) {
    // Nothing is left of the queue when nothing waits for its turn.
    if (!sending_.running() && !holding_.running()) {
        masks_ = {mask_};
        enableAsked_ = false;
    }
    if (!anyHeld && application_.link().timer("tmrAutoRepeat").running()) {
        violation("a key repeats that nobody holds");
        application_.link().timer("tmrAutoRepeat").stop();
    }
}

void Watch::checkScreen() {
    const std::string& shown = application_.link()["txtPHASE"].caption();
    if (phaseText_ != "-" && shown != phaseText_ && machine_.port.isOpen()) {
        violation("the screen says \"" + shown + "\", the last report \"" + phaseText_ + "\"");
        phaseText_ = shown;
    }
}

void Watch::checkMask(std::string_view text) {
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

void Watch::checkKeys(std::string_view text) {
    for (const KeyRow& row : kKeys) {
        if (text.starts_with(row.command) && --allowance_[row.command] < 0) {
            violation("\"" + std::string(text) + "\" without its key, or more often than that");
            allowance_[row.command] = 0;
        }
    }
}

void Watch::paidFor(std::string_view name) {
    for (const KeyRow& row : kKeys) {
        if (std::find(row.keys.begin(), row.keys.end(), name) != row.keys.end()) {
            allowance_[row.command] += row.transmissions;
        }
    }
}

void Watch::checkRest() {
    for (const std::string_view timer : kWorkflowTimers) {
        // The way out of calibration waits for normal operation without an end.
        const bool waits = timer == "tmrCalOFF" && phaseText_ != kPhaseTexts[1];
        if (application_.console().timer(timer).running() && !waits) {
            violation(std::string(timer) + " runs on though nothing is open");
        }
    }
    for (const std::string_view timer : kPanelTimers) {
        if (application_.link().timer(timer).running()) {
            violation(std::string(timer) + " runs on though nothing is open");
        }
    }
}

} // namespace quillon
