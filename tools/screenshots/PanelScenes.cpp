#include <array>
#include <initializer_list>

#include "Scenes.h"
#include "Ways.h"
#include "link/TorvaneSerial.h"

namespace quillon {

namespace {

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
    stage.report("TC0_128406 DO1.2+01 WN3 ER44");
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
    userMode(stage);
    stage.click("link.cmbMainMenu(1)");
    stage.report("MD4 FI00 FI11 FI20 FN21 FS11 BR5");
    stage.wait(200);
}

void daecPage(Stage& stage) {
    page(stage, "link.cmbMainMenu(2)");
    stage.report("WM5 MD8 DA1 PH1 FN31 BR5");
    stage.wait(200);
}

void fluoroPage(Stage& stage) {
    userMode(stage);
    stage.click("link.cmbMainMenu(3)");
    stage.report("FLK075 FLT04.5 FLP015 FLMAS12 FLC21 KVT2 FLA1 FLM11 FLHD1 FLAR1");
    stage.wait(200);
}

void nothingReported(Stage& stage) {
    page(stage, "link.cmbMainMenu(3)");
    stage.report("KVT0 FLA0");
    stage.wait(200);
}

void debugView(Stage& stage) {
    userMode(stage);
    stage.application().link().setDebugActive(true);
    stage.wait(6000);
}

// clang-format off
constexpr std::array kPanelScenes{
    Scene{"user-mode",              &userMode},
    Scene{"user-mode-exposure",     &lastExposure},
    Scene{"all-lamps",              &allLamps},
    Scene{"page-rad",               &radPage},
    Scene{"page-aec",               &aecPage},
    Scene{"page-daec",              &daecPage},
    Scene{"page-fluoro",            &fluoroPage},
    Scene{"page-not-reported",      &nothingReported},
    Scene{"page-comm",              &commPage},
    Scene{"page-comm-closed",       &lists},
    Scene{"page-configuration",     &wholeConfiguration},
    Scene{"page-calibration",       &wholeCalibration},
    Scene{"debug-view",             &debugView},
};
// clang-format on

} // namespace

std::span<const Scene> panelScenes() {
    return kPanelScenes;
}

} // namespace quillon
