#include <array>

#include "Scenes.h"
#include "Ways.h"
#include "console/ctrQuillonConsole.h"

namespace quillon {

namespace {

constexpr Installation kThreeTubes{"-FitToScreen -ResetCounters", {}, "[ThirdTube]\r\nThirdTube=1\r\n"};

// ---- at rest

void powerUp(Stage& stage) {
    stage.wait(4000);
    stage.report("ST1");
}

void noGenerator(Stage& stage) {
    stage.fallSilent();
    stage.wait(4000);
}

void readyPressed(Stage& stage) {
    ready(stage);
    stage.press("cmbConfiguration");
}

void communicationsError(Stage& stage) {
    ready(stage);
    stage.fallSilent();
    stage.wait(60000);
}

void error(Stage& stage) {
    ready(stage);
    stage.report("ER44");
    stage.wait(600);
}

void backUpTimer(Stage& stage) {
    ready(stage);
    stage.report("AR1");
    stage.wait(600);
}

void aecSelection(Stage& stage) {
    ready(stage);
    stage.report("AR2");
}

void protocolError(Stage& stage) {
    ready(stage);
    stage.application().console().operations().call("ErrorMessage", std::array{Value{std::int16_t{0}}});
}

void dipSwitchError(Stage& stage) {
    ready(stage);
    stage.application().console().operations().call("ErrorMessage", std::array{Value{std::int16_t{1}}});
}

void modeReachedLate(Stage& stage) {
    ready(stage);
    stage.click("cmbConfiguration");
    stage.wait(4000);
    stage.report("ST8");
    stage.wait(1000);
}

// ---- configuration

void enteringConfiguration(Stage& stage) {
    ready(stage);
    stage.click("cmbConfiguration");
    stage.wait(100);
}

void leavingConfiguration(Stage& stage) {
    configuration(stage);
    stage.click("cmbConfiguration");
}

// ---- counters

void readingCounters(Stage& stage) {
    ready(stage);
    stage.click("cmbReadExposureCounters");
    stage.wait(100);
}

void counters(Stage& stage) {
    ready(stage);
    stage.answer("TC0", "TC0_128406");
    stage.answer("TC1", "TC1_73911");
    stage.answer("TC2", "TC2_5562");
    stage.answer("TC3", "TC3_104");
    stage.click("cmbReadExposureCounters");
    stage.wait(12000);
}

void counterQuestion(Stage& stage, std::string_view key) {
    counters(stage);
    stage.press(key);
    stage.wait(10100);
}

void questionTube1(Stage& stage) {
    counterQuestion(stage, "cmdResetT1");
}
void questionTube2(Stage& stage) {
    counterQuestion(stage, "cmdResetT2");
}
void questionTube3(Stage& stage) {
    counterQuestion(stage, "cmdResetT3");
}
void questionFluoro(Stage& stage) {
    counterQuestion(stage, "cmdResetFluoro");
}

// ---- calibration

void calibrationParameter(Stage& stage) {
    stage.answer("CA1", "ST6 KV080 MAS_E07 MXS_012 FO11 FO20 CV0042");
    enteringCalibration(stage);
    stage.wait(7000);
}

void leavingCalibration(Stage& stage) {
    calibrationStation(stage);
    stage.click("cmbManualCalibration");
}

// ---- autocalibration

void autocalFocus(Stage& stage) {
    ready(stage);
    stage.click("cmbAutocalibration");
    stage.click("SelWSAutocal.cmdOK");
    stage.click("AutocalSelFocusOrParameter.cmbAutocalSmallFocus");
}

void autocalWarning(Stage& stage) {
    autocalFocus(stage);
    stage.click("AutocalSelFocusOrParameter.cmbOKFocus");
}

void enteringAutocal(Stage& stage) {
    stage.answer("CA1", "ST6 KV080 MA0050 MS0100 MX010.0 FO11 FO20 CV1234");
    stage.answer("CAU1", "ST11");
    autocalWarning(stage);
    stage.click("AutocalWarning.cmbAutocalYes");
    stage.wait(100);
}

void autocalConfirm(Stage& stage) {
    enteringAutocal(stage);
    stage.wait(12000);
}

void dismissingAutocal(Stage& stage) {
    autocalConfirm(stage);
    stage.click("link.cmbAutocalDismiss");
}

void autocalInitializing(Stage& stage) {
    autocalConfirm(stage);
    stage.click("link.cmbAutocalConfirm");
    stage.wait(1200);
}

void autocalExpose(Stage& stage) {
    autocalInitializing(stage);
    stage.report("CAU1 ST9 INFExposures_to_come:_3");
    stage.wait(6000);
}

void autocalOk(Stage& stage) {
    autocalExpose(stage);
    stage.report("ST13");
    stage.wait(500);
}

void autocalError(Stage& stage) {
    autocalExpose(stage);
    stage.report("ST12 ER44");
    stage.wait(500);
}

void leavingAutocal(Stage& stage) {
    autocalOk(stage);
    stage.click("cmbClose");
    stage.wait(100);
}

// ---- the end

void closing(Stage& stage) {
    ready(stage);
    stage.click("cmbClose");
    stage.wait(300);
}

// clang-format off
constexpr std::array kModeScenes{
    Scene{"power-up",               &powerUp},
    Scene{"no-generator",           &noGenerator},
    Scene{"ready",                  &ready},
    Scene{"ready-key-pressed",      &readyPressed},
    Scene{"communications-error",   &communicationsError},
    Scene{"error",                  &error},
    Scene{"error-back-up-timer",    &backUpTimer},
    Scene{"error-aec-selection",    &aecSelection},
    Scene{"message-protocol",       &protocolError},
    Scene{"message-dip-switch",     &dipSwitchError},
    Scene{"message-mode-reached",   &modeReachedLate},
    Scene{"configuration-entering", &enteringConfiguration},
    Scene{"configuration",          &configuration},
    Scene{"configuration-leaving",  &leavingConfiguration},
    Scene{"counters-reading",       &readingCounters},
    Scene{"counters",               &counters},
    Scene{"counters-three-tubes",   &counters, kThreeTubes},
    Scene{"counters-question",      &questionTube2, kThreeTubes},
    Scene{"counters-question-1",    &questionTube1, kThreeTubes},
    Scene{"counters-question-3",    &questionTube3, kThreeTubes},
    Scene{"counters-question-fluoro", &questionFluoro, kThreeTubes},
    Scene{"workstation",            &workstation},
    Scene{"calibration-entering",   &enteringCalibration},
    Scene{"calibration-station",    &calibrationStation},
    Scene{"calibration-focus",      &calibrationFocus},
    Scene{"calibration-parameter",  &calibrationParameter},
    Scene{"calibration-leaving",    &leavingCalibration},
    Scene{"autocal-focus",          &autocalFocus},
    Scene{"autocal-warning",        &autocalWarning},
    Scene{"autocal-entering",       &enteringAutocal},
    Scene{"autocal-confirm",        &autocalConfirm},
    Scene{"autocal-dismissing",     &dismissingAutocal},
    Scene{"autocal-initializing",   &autocalInitializing},
    Scene{"autocal-expose",         &autocalExpose},
    Scene{"autocal-ok",             &autocalOk},
    Scene{"autocal-error",          &autocalError},
    Scene{"autocal-leaving",        &leavingAutocal},
    Scene{"closing",                &closing},
};
// clang-format on

} // namespace

std::span<const Scene> modeScenes() {
    return kModeScenes;
}

} // namespace quillon
