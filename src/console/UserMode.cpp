#include "console/UserMode.h"

namespace quillon {

namespace {

constexpr int kRefreshDelay = 5000; // ms, when calibration has been left
constexpr int kArrivalDelay = 9000; // ms until the machine is handed over

} // namespace

UserMode::UserMode(ConsoleContext& context, CalibrationMode& calibration)
    : context_(context), screen_(context), calibration_(calibration),
      tmrFlRefresh_(context.console.timer("tmrFlRefresh")),
      tmrGotoUserMode_(context.console.timer("tmrGotoUserMode")) {
    context_.console["cmbGoToUserMode"].on.click = [this] { goToUserMode(); };
    tmrFlRefresh_.setTick([this] { refreshTick(); });
    tmrGotoUserMode_.setTick([this] { arrivalTick(); });
}

void UserMode::goToUserMode() {
    if (screen_.errorOnShow()) {
        return;
    }
    context_.link.setRXEnable(true);
    context_.link.setTempUserMode(true);
    calibration_.ToggleCalibrationMode();
    tmrFlRefresh_.start(kRefreshDelay);
    tmrGotoUserMode_.start(kArrivalDelay);
    screen_.disable({"cmbManualCalibration"});
    screen_.hide({"fraActualExposureParameters"});
}

void UserMode::refreshTick() {
    tmrFlRefresh_.stop();
    context_.link.call("FlRefresh");
}

void UserMode::arrivalTick() {
    tmrGotoUserMode_.stop();
    if (context_.state.m_ServiceMode != 2 || !context_.link.TempUserMode()) {
        return;
    }
    screen_.enable({"fraTorvaneSerial"});
    context_.link.setRXEnable(true);
    screen_.on({"cmbGoToUserMode"});
    screen_.clearActualExposure();
    context_.console["cmbClose"].setCaption(context_.texts.m_ExitCaption);
    screen_.enable({"cmbClose", "cmbManualCalibration"});
}

} // namespace quillon
