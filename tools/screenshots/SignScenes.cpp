#include <array>

#include "Scenes.h"
#include "Ways.h"

namespace quillon {

namespace {

constexpr Installation kThreeTubes{{}, {}, "[ThirdTube]\r\nThirdTube=1\r\n"};

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
    atRest(stage, "ER44 AR0 ER7 AR0 ST7 ER44");
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

// ---- a generator that has fallen silent

void silence(Stage& stage, Milliseconds time) {
    calibrationStation(stage);
    stage.report("CV1234");
    stage.fallSilent();
    stage.wait(time);
}
void silenceShort(Stage& stage) {
    silence(stage, 6000);
}
void silenceLong(Stage& stage) {
    silence(stage, 30000);
}
void silenceOver(Stage& stage) {
    silence(stage, 6000);
    stage.report("ST6 HE14 MA0125");
    stage.wait(100);
}

// ---- long work

void readingTwo(Stage& stage) {
    ready(stage);
    stage.answer("TC0", "TC0_128406");
    stage.answer("TC1", "TC1_73911");
    stage.click("cmbReadExposureCounters");
    stage.wait(7000);
}

void starting(Stage& stage) {
    ready(stage);
    stage.report("ST1");
    stage.wait(2000);
    stage.report("ST2");
    stage.wait(7500);
}

void configurationOpens(Stage& stage) {
    ready(stage);
    stage.answer("CF1", "ST8");
    stage.click("cmbConfiguration");
    stage.wait(700);
}

void autocalStops(Stage& stage) {
    autocalExposures(stage);
    stage.report("ST13");
    stage.click("cmbClose");
    stage.wait(4200);
}

// clang-format off
constexpr std::array kSignScenes{
    Scene{"rest-warnings",          &restWarnings},
    Scene{"rest-errors",            &restErrors},
    Scene{"rest-preparation",       &restPreparation},
    Scene{"rest-exposure",          &restExposure},
    Scene{"rest-tube-too-hot",      &restTubeTooHot},
    Scene{"pending-configuration",  &pendingConfiguration},
    Scene{"pending-calibration",    &pendingCalibration},
    Scene{"silence",                &silenceShort},
    Scene{"silence-long",           &silenceLong},
    Scene{"silence-over",           &silenceOver},
    Scene{"counters-reading-two",   &readingTwo, kThreeTubes},
    Scene{"starting",               &starting},
    Scene{"configuration-opens",    &configurationOpens},
    Scene{"autocal-exposures",      &autocalExposures},
    Scene{"autocal-stops",          &autocalStops},
};
// clang-format on

} // namespace

std::span<const Scene> signScenes() {
    return kSignScenes;
}

} // namespace quillon
