#include "Ways.h"

namespace quillon {

void ready(Stage& stage) {
    stage.answer("VR?", "VR3.07_QLC1");
    stage.report("ST2 HE12 WM1 WS1 TM3");
    stage.wait(12000);
}

void configuration(Stage& stage) {
    ready(stage);
    stage.answer("CF1", "ST8 TU2 WM3 IC3 WSI1 WSF0 WSS0 WS3 KVT2 FLD1 FI01 FI11 FI20");
    stage.click("cmbConfiguration");
    stage.wait(5000);
}

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

void autocalExposures(Stage& stage) {
    stage.answer("CA1", "ST6 KV080 MA0050 MS0100 MX010.0 FO11 FO20 CV1234");
    stage.answer("CAU1", "ST11");
    ready(stage);
    stage.click("cmbAutocalibration");
    stage.click("SelWSAutocal.cmdOK");
    stage.click("AutocalSelFocusOrParameter.cmbAutocalSmallFocus");
    stage.click("AutocalSelFocusOrParameter.cmbOKFocus");
    stage.click("AutocalWarning.cmbAutocalYes");
    stage.wait(12000);
    stage.click("link.cmbAutocalConfirm");
    stage.wait(1200);
    stage.report("CAU1 ST9 INFExposures_to_come:_3");
    stage.wait(6000);
    for (int exposure = 0; exposure < 2; ++exposure) {
        stage.report("ST3 ST4 ST9");
        stage.wait(1000);
    }
}

} // namespace quillon
