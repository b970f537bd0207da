#include <array>

#include "Scenes.h"
#include "Ways.h"
#include "link/TorvaneSerial.h"

namespace quillon {

namespace {

constexpr std::string_view kLocked =
    "COM1: /dev/ttyUSB0: Permission denied, locked by process 1234 (minicom), /var/lock/LCK..ttyUSB0";

// ---- keys that would do nothing

void lent(Stage& stage) {
    stage.answer("CA0", "ST2");
    calibrationStation(stage);
    stage.click("cmbGoToUserMode");
    stage.wait(15000);
    stage.report("ST2 HE35 WM4 WS3 KV081 MA0500 MS0125 MX062.5 FO10 FO21");
    stage.wait(500);
}

void refusedByError(Stage& stage) {
    calibrationStation(stage);
    stage.report("ST7 ER44");
    stage.wait(600);
    stage.tapInVain("link.cmbStoreCalValue");
}

void errorBehindPrompt(Stage& stage) {
    calibrationStation(stage);
    stage.click("cmbManualCalibration");
    stage.wait(600);
    stage.report("ST7 ER44");
    stage.wait(600);
}

void noStep(Stage& stage) {
    calibrationStation(stage);
    stage.tapInVain("link.cmbMSCalUp");
}

void fixedKVP(Stage& stage) {
    autocalExposures(stage);
    stage.tapInVain("link.cmbKVPCalUp");
}

void wrongMode(Stage& stage) {
    autocalExposures(stage);
    stage.report("ST7 ER44");
    stage.wait(600);
    stage.click("cmbResetError");
    stage.report("AR0 ST6");
    stage.wait(2000);
    stage.tapInVain("cmbConfiguration");
}

void workstationAsked(Stage& stage) {
    configuration(stage);
    stage.click("link.cmbWS(4)");
    stage.wait(1500);
}

void workstationNotReported(Stage& stage) {
    workstationAsked(stage);
    stage.wait(9000);
}

void lentFluoroscopy(Stage& stage) {
    lent(stage);
    stage.report("ST5");
    stage.wait(600);
    stage.tapInVain("cmbManualCalibration");
}

void exposures(Stage& stage) {
    lent(stage);
    for (const std::string_view values : {"PD050062.500125", "PD050050.000100"}) {
        stage.report("ST3 ST4");
        stage.wait(100);
        stage.report("ST2");
        stage.report(values);
        stage.wait(200);
    }
}

void valueChanged(Stage& stage) {
    calibrationStation(stage);
    stage.slide("link.sldCalValue", 1500);
    stage.report("CV1500");
    stage.wait(1500);
}

void valueLeft(Stage& stage) {
    valueChanged(stage);
    stage.press("link.cmbMACalUp");
    stage.wait(200);
    stage.report("MA0125");
}

void behindPanel(Stage& stage) {
    workstation(stage);
    stage.tapInVain("cmbReadExposureCounters");
}

void highDose(Stage& stage) {
    lent(stage);
    stage.click("link.cmbMainMenu(3)");
    stage.tapInVain("link.cmbFlHighDose");
}

void tooShort(Stage& stage) {
    configuration(stage);
    stage.screen().tellHold(stage.control("link.cmbDfltConfig"));
}

void besideHandle(Stage& stage) {
    calibrationStation(stage);
    stage.screen().tellHandle(stage.control("link.sldCalValue"));
}

void counterHold(Stage& stage) {
    ready(stage);
    stage.answer("TC0", "TC0_128406");
    stage.answer("TC1", "TC1_73911");
    stage.answer("TC2", "TC2_5562");
    stage.click("cmbReadExposureCounters");
    stage.wait(12000);
    stage.press("cmdResetT1");
    stage.wait(3000);
}

// ---- the line

void portMissing(Stage& stage) {
    stage.wait(5000);
}

void cableOut(Stage& stage) {
    ready(stage);
    stage.unplug();
}

void portClosed(Stage& stage) {
    ready(stage);
    stage.application().link().setPortOpen(false);
    stage.wait(100);
}

// clang-format off
constexpr std::array kStatusScenes{
    Scene{"status-error",           &refusedByError},
    Scene{"status-prompt",          &errorBehindPrompt},
    Scene{"status-no-step",         &noStep},
    Scene{"status-wrong-mode",      &wrongMode},
    Scene{"status-workstation",     &workstationAsked},
    Scene{"status-not-reported",    &workstationNotReported},
    Scene{"status-fluoroscopy",     &lentFluoroscopy},
    Scene{"status-hold",            &counterHold},
    Scene{"status-not-stored",      &valueChanged},
    Scene{"status-left",            &valueLeft},
    Scene{"status-exposures",       &exposures},
    Scene{"status-fixed-kvp",       &fixedKVP},
    Scene{"status-panel",           &behindPanel},
    Scene{"status-high-dose",       &highDose},
    Scene{"status-too-short",       &tooShort},
    Scene{"status-beside-handle",   &besideHandle},
    Scene{"status-port-missing",    &portMissing, {.failure = kLocked}},
    Scene{"status-cable-out",       &cableOut},
    Scene{"status-port-closed",     &portClosed},
};
// clang-format on

} // namespace

std::span<const Scene> statusScenes() {
    return kStatusScenes;
}

} // namespace quillon
