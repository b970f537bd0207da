#include "Scenes.h"

#include <array>
#include <initializer_list>
#include <string>

#include "console/ctrQuillonConsole.h"
#include "link/TorvaneSerial.h"

namespace quillon {

namespace {

constexpr std::string_view kRemote = "REMOTE=YES\r\n";
constexpr std::string_view kOrla = "ORLA=YES\r\n";
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

void ready(Stage& stage) {
    stage.answer("VR?", "VR3.07_QLC1");
    stage.report("ST2 HE12 WM1 WS1 TM3");
    stage.wait(12000);
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
    stage.report("ER12");
    stage.wait(600);
}

void protocolError(Stage& stage) {
    ready(stage);
    stage.application().console().operations().call("ErrorMessage", std::array{Value{std::int16_t{0}}});
}

void dipSwitchError(Stage& stage) {
    ready(stage);
    stage.application().console().operations().call("ErrorMessage", std::array{Value{std::int16_t{1}}});
}

// ---- configuration

void enteringConfiguration(Stage& stage) {
    ready(stage);
    stage.click("cmbConfiguration");
    stage.wait(100);
}

void configuration(Stage& stage) {
    ready(stage);
    stage.answer("CF1", "ST8 TU2 WM3 IC3 WSI1 WSF0 WSS0 WS3 KVT2 FLD1 FI01 FI11");
    stage.click("cmbConfiguration");
    stage.wait(5000);
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

void counterQuestion(Stage& stage) {
    counters(stage);
    stage.press("cmdResetT2");
    stage.wait(10100);
}

// ---- calibration

void workstation(Stage& stage) {
    ready(stage);
    stage.click("cmbManualCalibration");
}

void enteringCalibration(Stage& stage) {
    workstation(stage);
    stage.click("SelWSCal.cmdOK");
    stage.wait(100);
}

void calibrationStation(Stage& stage) {
    stage.answer("CA1", "ST6 KV080 MA0100 MS0100 MX010.0 FO11 FO20 CV1234");
    enteringCalibration(stage);
    stage.wait(7000);
}

void calibrationFocus(Stage& stage) {
    calibrationStation(stage);
    stage.click("link.cmbCalFocusSet");
}

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
    stage.report("ST12 ER12");
    stage.wait(500);
}

void leavingAutocal(Stage& stage) {
    autocalOk(stage);
    stage.click("cmbClose");
    stage.wait(100);
}

// ---- the machine lent to its users

void userMode(Stage& stage) {
    stage.answer("CA0", "ST2");
    calibrationStation(stage);
    stage.click("cmbGoToUserMode");
    stage.wait(15000);
    stage.report("ST2 HE35 WM4 WS3 KV081 MA0500 MS0125 MX062.5 FO10 FO21");
    stage.wait(500);
}

void lastExposure(Stage& stage) {
    userMode(stage);
    stage.report("KV81 PD050062.500125");
}

void allLamps(Stage& stage) {
    userMode(stage);
    stage.report("PR1 XR1 DL1 GL1 TL1 RL1 HL1 EL1 CL1 INFCollimator:_field_exceeds_the_cassette");
    stage.wait(300);
}

void page(Stage& stage, std::string_view key) {
    userMode(stage);
    // The console keeps some of the panel's own navigation from the operator; another host need not.
    for (const std::string_view name : {"link.cmbMainMenu(2)", "link.cmbGotoServiceMenu",
                                        "link.fraServiceMenu", "link.cmbServiceMenu(2)"}) {
        stage.control(name).setEnabled(true);
    }
    if (key.find("ServiceMenu") != std::string_view::npos) {
        stage.click("link.cmbGotoServiceMenu");
    }
    stage.click(key);
}

/// What the console hides from the operator and another host need not.
void uncover(Stage& stage, std::initializer_list<std::string_view> names) {
    for (const std::string_view name : names) {
        stage.control(name).setVisible(true);
        stage.control(name).setEnabled(true);
    }
}

void radPage(Stage& stage) {
    page(stage, "link.cmbMainMenu(0)");
    uncover(stage,
            {"link.cmbTM(0)", "link.cmbTM(1)", "link.cmbTM(2)", "link.cmbTM(3)", "link.cmdSWExposure",
             "link.lblWarning", "link.fraReadExposureCounter", "link.fraDosemeter", "link.cmbResetError",
             "link.cmbMinimize", "link.txtIINotAlignedWarning", "link.txtTubeNotCenteredWarning"});
    stage.report("TC0_128406 DO1.2+01 WN3 ER12");
    stage.wait(600);
}

void wholeConfiguration(Stage& stage) {
    configuration(stage);
    uncover(stage, {"link.cmbConfiguration", "link.fraServiceMenu"});
}

void wholeCalibration(Stage& stage) {
    calibrationFocus(stage);
    uncover(stage, {"link.cmbCalibration", "link.cmbAutocalibration", "link.cmbAutocalConfirm",
                    "link.cmbAutocalDismiss", "link.fraResetExposureCounter",
                    "link.comboResetExposureCounter", "link.cmbResetExposureCounter"});
}

void commPage(Stage& stage) {
    page(stage, "link.cmbServiceMenu(2)");
}

void lists(Stage& stage) {
    commPage(stage);
    uncover(stage, {"link.cmbCommPort", "link.cmbCommBaudRate", "link.cmbCommParity", "link.cmbCommDataBits",
                    "link.cmbCommStopBits"});
}

void aecPage(Stage& stage) {
    page(stage, "link.cmbMainMenu(1)");
    stage.report("MD4 FI11 FN21 FS11 BR5");
    stage.wait(200);
}

void daecPage(Stage& stage) {
    page(stage, "link.cmbMainMenu(2)");
    stage.report("WM5 MD8 DA1 PH1 FN31 BR5");
    stage.wait(200);
}

void fluoroPage(Stage& stage) {
    page(stage, "link.cmbMainMenu(3)");
    stage.report("FLK075 FLT04.5 FLP015 FLMAS12 FLC21 KVT2 FLA1 FLM11 FLHD1 FLAR1");
    stage.wait(200);
}

void debugView(Stage& stage) {
    userMode(stage);
    stage.application().link().setDebugActive(true);
    stage.wait(6000);
}

// ---- positioners

void remote(Stage& stage) {
    ready(stage);
    stage.answer("URSCG", "URSCG405,100,1105,1100,1555,1560,1800,4095,");
    stage.answer("URSSG", "URSSG1250");
    stage.answer("URSRQ", "URSRQ0777");
    stage.click("cmdMultiRoom");
    stage.wait(4000);
}

void remoteRefused(Stage& stage) {
    remote(stage);
    stage.type("txtRemoteSID", "12a");
    stage.click("cmdSetNewSID");
}

void orla(Stage& stage, std::string_view key) {
    ready(stage);
    stage.click("cmdOrla");
    stage.press(key);
}

void orlaLong(Stage& stage) {
    ready(stage);
    stage.click("cmdOrla");
    stage.answer("URSPS+125", "URSPS+1252841");
    stage.answer("URSPS+000", "URSPS+0002047");
    stage.type("txtOTCLongPlus", "125");
    stage.type("txtOTCLongMinus", "-120");
    stage.click("cmdSetOTCLongPlus");
    stage.click("cmdSetOTCLongZero");
    stage.wait(1500);
}

void orlaTray(Stage& stage) {
    orla(stage, "cmdTrayPosition");
}
void orlaAlfa(Stage& stage) {
    orla(stage, "cmdAlfaTubeAngle");
}
void orlaBeta(Stage& stage) {
    orla(stage, "cmdBetaTubeAngle");
}
void orlaSid(Stage& stage) {
    orla(stage, "cmdSID");
}

// ---- the end

void closing(Stage& stage) {
    ready(stage);
    stage.click("cmbClose");
    stage.wait(300);
}

// clang-format off
constexpr std::array kScenes{
    Scene{"power-up",               &powerUp},
    Scene{"no-generator",           &noGenerator},
    Scene{"ready",                  &ready},
    Scene{"ready-key-pressed",      &readyPressed},
    Scene{"communications-error",   &communicationsError},
    Scene{"error",                  &error},
    Scene{"message-protocol",       &protocolError},
    Scene{"message-dip-switch",     &dipSwitchError},
    Scene{"configuration-entering", &enteringConfiguration},
    Scene{"configuration",          &configuration},
    Scene{"counters-reading",       &readingCounters},
    Scene{"counters",               &counters},
    Scene{"counters-three-tubes",   &counters, kThreeTubes},
    Scene{"counters-question",      &counterQuestion, kThreeTubes},
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
    Scene{"autocal-initializing",   &autocalInitializing},
    Scene{"autocal-expose",         &autocalExpose},
    Scene{"autocal-ok",             &autocalOk},
    Scene{"autocal-error",          &autocalError},
    Scene{"autocal-leaving",        &leavingAutocal},
    Scene{"user-mode",              &userMode},
    Scene{"user-mode-exposure",     &lastExposure},
    Scene{"all-lamps",              &allLamps},
    Scene{"page-rad",               &radPage},
    Scene{"page-aec",               &aecPage},
    Scene{"page-daec",              &daecPage},
    Scene{"page-fluoro",            &fluoroPage},
    Scene{"page-comm",              &commPage},
    Scene{"page-comm-closed",       &lists},
    Scene{"page-configuration",     &wholeConfiguration},
    Scene{"page-calibration",       &wholeCalibration},
    Scene{"debug-view",             &debugView},
    Scene{"remote",                 &remote, {{}, kRemote, {}}},
    Scene{"remote-refused",         &remoteRefused, {{}, kRemote, {}}},
    Scene{"orla-longitudinal",      &orlaLong, {{}, kOrla, {}}},
    Scene{"orla-tray",              &orlaTray, {{}, kOrla, {}}},
    Scene{"orla-alfa",              &orlaAlfa, {{}, kOrla, {}}},
    Scene{"orla-beta",              &orlaBeta, {{}, kOrla, {}}},
    Scene{"orla-sid",               &orlaSid, {{}, kOrla, {}}},
    Scene{"closing",                &closing},
};
// clang-format on

} // namespace

std::span<const Scene> scenes() {
    return kScenes;
}

} // namespace quillon
