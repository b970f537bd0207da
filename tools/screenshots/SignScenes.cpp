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

// clang-format off
constexpr std::array kScenes{
    Scene{"rest-warnings",          &restWarnings},
    Scene{"rest-errors",            &restErrors},
    Scene{"rest-preparation",       &restPreparation},
    Scene{"rest-exposure",          &restExposure},
    Scene{"rest-tube-too-hot",      &restTubeTooHot},
};
// clang-format on

} // namespace

std::span<const Scene> signScenes() {
    return kScenes;
}

} // namespace quillon
