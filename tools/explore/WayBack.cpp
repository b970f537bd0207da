// How a session ends: the generator is made faultless and the operator leaves panels, mode and screens in
// turn.

#include "Session.h"

#include <array>
#include <cstdlib>
#include <utility>

namespace quillon {

namespace {

// clang-format off
constexpr std::array<std::string_view, 18> kHealthy{
    "sim power on", "port 1 ok", "sim set stuck 0", "sim set wrong 0", "sim set twice 0", "sim set answer 40", "sim silence off", "sim noise 0", "sim drop every 0", "sim drop 0", "sim heat 0",
    "sim set dipswitch 1", "sim set modechange 300", "sim set ack 20", "sim door 0", "sim rotor 0", "sim release", "sim fluoro off"};

/// Panels in front of everything else, and the key that closes each.
constexpr std::array<std::string_view, 7> kInFront{
    "Error.cmbOK", "SelWSCal.cmdOK", "SelWSAutocal.cmdOK", "AutocalSelFocusOrParameter.cmbCancel",
    "AutocalWarning.cmbAutocalNo", "Quillon.cmdResetCounterNo", "TorvaneSerial.cmbAutocalDismiss"};
// clang-format on

constexpr int kRounds = 16;
constexpr int kLevels = 5; ///< a screen that a mode has covered may still be open

/// The generator stays in these until something is done that the console has no key for.
constexpr Phases kNoWayOut = Phases::of(PhaseKind::Exposure) | Phases::of(PhaseKind::Halted);

} // namespace

void Session::clearWhatStands() {
    for (const std::string_view key : kInFront) {
        (void)clickIfReachable(key);
    }
    const ctrQuillonConsole& console = application().console();
    if (!console["lblError"].caption().empty() || console["lblErrorDescription"].visible()) {
        (void)clickIfReachable("Quillon.cmbResetError");
    }
    if (!console["cmbClose"].enabled() && !console.timer("tmrReadExposureCounters").running()) {
        // A reading that got no answer ends with the key that began it, and so does a mode that an exposure
        // was made in.
        (void)clickIfReachable(doing().mode() == Phase::Configuration ? "Quillon.cmbConfiguration"
                                                                      : "Quillon.cmbReadExposureCounters");
    }
    for (const auto& [screen, key] : {std::pair{ConsoleControl("fraOrla"), "Quillon.cmdOrla"},
                                      std::pair{ConsoleControl("fraRemote"), "Quillon.cmdMultiRoom"}}) {
        if (console[screen].visible()) {
            (void)clickIfReachable(key); // it keeps the mode keys
        }
    }
}

void Session::becomeHealthy() {
    if (ended()) {
        return;
    }
    if (!rig_.farEnd.simulated()) {
        // An honest one stands where it was last said to stand.
        const int phase = facts_.phase == 0 ? 2 : facts_.phase;
        perform("simulate startphase=" + std::to_string(phase));
        // It asks, and tells how it went, on the way through its modes only.
        forced_ = kNoWayOut.has(static_cast<Phase>(phase)) ||
                  (phase == 11 && !reaches("TorvaneSerial.cmbAutocalDismiss")) ||
                  (phase > 11 && doing().mode() != Phase::Autocalibration);
    }
    for (const std::string_view command : kHealthy) {
        perform(command);
    }
    if (forced_) {
        perform("sim phase 2");
        forced_ = false;
    }
}

void Session::comeToRest() {
    while (!held().empty() && !ended()) {
        perform("release " + std::string(*held().begin()));
    }
    becomeHealthy();
    perform("wait 60000");
    for (int round = 0; round < kRounds && !ended(); ++round) {
        clearWhatStands();
        if (application().console()["cmbClose"].caption() == "Exit" || !atRest()) {
            (void)clickIfReachable("Quillon.cmbClose");
        } else if (round >= 3) {
            break;
        }
        perform("wait 40000");
    }
    bringKeysBack();
}

bool Session::atRest() {
    return doing().idle() && doing().mode() == Phase::NormalOperation && !doing().lent();
}

void Session::bringKeysBack() {
    // An exposure, or a mode that the generator went through by itself, leaves only one of the mode keys
    // alive; the others come with the way through calibration.
    if (!atRest() || (reaches("Quillon.cmbConfiguration") && reaches("Quillon.cmbAutocalibration") &&
                      reaches("Quillon.cmbReadExposureCounters"))) {
        return;
    }
    for (const std::string_view step : {"Quillon.cmbManualCalibration", "SelWSCal.cmdOK"}) {
        (void)clickIfReachable(step);
        perform("wait 10000");
    }
    if (doing().mode() == Phase::Calibration) {
        (void)clickIfReachable("Quillon.cmbClose");
        perform("wait 10000");
    }
}

void Session::stand() {
    while (!held().empty() && !ended()) {
        perform("release " + std::string(*held().begin()));
    }
    perform("wait 130000");
    if (!ended()) {
        check(When::Stood);
    }
}

void Session::leave() {
    comeToRest();
    if (!ended()) {
        clearWhatStands();
        perform("wait 120000");
        if (!ended() && facts_.portOpen()) {
            check(When::Rest);
        }
    }
    for (int level = 0; level < kLevels && !ended(); ++level) {
        clearWhatStands(); // a mode that was not reached is told
        (void)clickIfReachable("Quillon.cmbClose");
        perform("wait 60000");
    }
    if (ended() && honest_ && !led_) {
        machine().time.advance(5000); // what it was told last may still be on the way to it
        const Phase phase{std::atoi(ask("status").substr(6, 2).c_str())};
        const bool configuration = phase == Phase::Configuration;
        const bool calibration =
            phase == Phase::Calibration || phase == Phase::Autocalibration || kAsksOrTells.has(phase);
        const bool same = facts_.entered == "CF1" ? configuration : calibration;
        facts_.stood = same ? ask("status").substr(0, 8) : "";
    }
    check(When::Closed);
}

} // namespace quillon
