#include <array>

#include "Scenes.h"
#include "Ways.h"

namespace quillon {

namespace {

// ---- the generator at a glance

void atRest(Stage& stage, std::string_view messages) {
    ready(stage);
    stage.report(messages);
    stage.wait(600);
}

void restWarnings(Stage& stage) {
    atRest(stage, "DL1 GL1 TL1 RL1 HL1 EL1 CL1");
}
void restErrors(Stage& stage) {
    atRest(stage, "ER12 AR0 ER7 AR0 ST7 ER12");
}
void restPreparation(Stage& stage) {
    atRest(stage, "ST3");
}
void restExposure(Stage& stage) {
    atRest(stage, "ST3 ST4");
}
void restTubeTooHot(Stage& stage) {
    atRest(stage, "HE97 ST10");
}

// ---- sent, not confirmed

void pendingConfiguration(Stage& stage) {
    configuration(stage);
    stage.fallSilent();
    for (const std::string_view key : {"link.cmbWS(3)", "link.cmbConfTubeUp", "link.cmbAECFieldLeft(1)"}) {
        stage.click(key);
    }
    stage.wait(500);
}

void pendingCalibration(Stage& stage) {
    calibrationStation(stage);
    stage.fallSilent();
    stage.press("link.cmbMACalUp");
    stage.click("link.cmbKVPCalUp");
    stage.wait(200);
}

// clang-format off
constexpr std::array kScenes{
    Scene{"rest-warnings",          &restWarnings},
    Scene{"rest-errors",            &restErrors},
    Scene{"rest-preparation",       &restPreparation},
    Scene{"rest-exposure",          &restExposure},
    Scene{"rest-tube-too-hot",      &restTubeTooHot},
    Scene{"pending-configuration",  &pendingConfiguration},
    Scene{"pending-calibration",    &pendingCalibration},
};
// clang-format on

} // namespace

std::span<const Scene> signScenes() {
    return kScenes;
}

} // namespace quillon
