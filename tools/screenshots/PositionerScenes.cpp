#include <array>

#include "Scenes.h"
#include "Ways.h"

namespace quillon {

namespace {

constexpr Installation kRemote{{}, "REMOTE=YES\r\n"};
constexpr Installation kOrla{{}, "ORLA=YES\r\n"};

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
    stage.click("cmdNextCalibPoint");
    stage.type("txtRemoteSID", "12a");
    stage.click("cmdSetNewSID");
}

void remoteKeypad(Stage& stage) {
    remote(stage);
    stage.touch("txtRemoteSID");
    stage.touchKeypad("1305<");
}

void remoteKeypadADC(Stage& stage) {
    remote(stage);
    stage.touch("TxtADCValueCalib");
}

void remoteClose(Stage& stage) {
    remote(stage);
    stage.touch("cmbClose");
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
    stage.type("txtOTCLongMinus", "120");
    stage.click("cmdSetOTCLongPlus");
    stage.click("cmdSetOTCLongZero");
    stage.wait(1500);
}

void orlaKeypad(Stage& stage) {
    orlaLong(stage);
    stage.touch("txtOTCLongMinus");
    stage.touchKeypad("120");
}

void orlaRefused(Stage& stage) {
    orlaLong(stage);
    stage.type("txtOTCLongMinus", "1250");
    stage.touch("cmdSetOTCLongMinus");
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

// clang-format off
constexpr std::array kPositionerScenes{
    Scene{"remote",                 &remote, kRemote},
    Scene{"remote-refused",         &remoteRefused, kRemote},
    Scene{"remote-keypad",          &remoteKeypad, kRemote},
    Scene{"remote-keypad-adc",      &remoteKeypadADC, kRemote},
    Scene{"remote-close",           &remoteClose, kRemote},
    Scene{"orla-keypad",            &orlaKeypad, kOrla},
    Scene{"orla-refused",           &orlaRefused, kOrla},
    Scene{"orla-longitudinal",      &orlaLong, kOrla},
    Scene{"orla-tray",              &orlaTray, kOrla},
    Scene{"orla-alfa",              &orlaAlfa, kOrla},
    Scene{"orla-beta",              &orlaBeta, kOrla},
    Scene{"orla-sid",               &orlaSid, kOrla},
};
// clang-format on

} // namespace

std::span<const Scene> positionerScenes() {
    return kPositionerScenes;
}

} // namespace quillon
