// How a session ends: the generator becomes a healthy one and the operator leaves, level by level.

#include "Session.h"

#include <utility>

#include "console/ctrQuillonConsole.h"
#include "link/TorvaneSerial.h"

namespace quillon {

bool Session::running(std::string_view timer) {
    return application_->console().timer(timer).running();
}

void Session::clearWhatStands() {
    // A panel covers the rest: close it first.
    for (const std::string_view key :
         {"Error.cmbOK", "SelWSCal.cmdOK", "SelWSAutocal.cmdOK", "AutocalSelFocusOrParameter.cmbCancel",
          "AutocalWarning.cmbAutocalNo", "Quillon.cmdResetCounterNo", "TorvaneSerial.cmbAutocalDismiss"}) {
        (void)clickIfReachable(key);
    }
    if (!application_->console()["lblError"].caption().empty()) {
        (void)clickIfReachable("Quillon.cmbResetError");
    }
    if (!application_->console()["cmbClose"].enabled() && !running("tmrReadExposureCounters")) {
        // A reading that got no answer ends with the key that began it.
        (void)clickIfReachable("Quillon.cmbReadExposureCounters");
    }
    for (const auto& [screen, key] :
         {std::pair{"fraOrla", "cmdOrla"}, std::pair{"fraRemote", "cmdMultiRoom"}}) {
        if (application_->console()[screen].visible()) {
            (void)clickIfReachable(std::string("Quillon.") + key); // it keeps the mode keys
        }
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
        if (round == 8 && !application_->link().StatusUpdateEnable()) {
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

void Session::leave() {
    comeToRest();
    if (ended()) {
        return;
    }
    clearWhatStands();
    perform("wait 120000");
    watch_->checkRest();
    const Control& cmbClose = application_->console()["cmbClose"];
    if (!application_->input().reachable(cmbClose) || cmbClose.caption() != "Close") {
        watch_->violation("the operator is stuck: \"" + cmbClose.caption() + "\" " +
                          (cmbClose.enabled() ? "enabled" : "disabled"));
        return;
    }
    // A press a level: what a mode has covered may still be open.
    for (int presses = 0; presses < 5 && !ended(); ++presses) {
        clearWhatStands(); // a mode that was not reached is told
        (void)clickIfReachable("Quillon.cmbClose");
        perform("wait 60000");
    }
    if (!ended()) {
        watch_->violation("the application did not end");
    }
}

} // namespace quillon
