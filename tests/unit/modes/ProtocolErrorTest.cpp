#include "tests/unit/flows/Flow.h"

namespace quillon {
namespace {

/// The panel that tells a mode not reached: by the event MessageProtocolError, or the dip switch's.
class ProtocolErrorTest : public FlowTest {
protected:
    ProtocolErrorTest() { start(); }
    void phase(int number) { report("ST" + decimalText(number)); }
    void garble() { events().MessageProtocolError.raise(); }
};

constexpr std::string_view kProtocolError = "Protocol Error";
constexpr std::string_view kDipSwitch = "BQS Calibration Dip Switch Error";

TEST_F(ProtocolErrorTest, ErrorAfterThePressSelectsProtocolPanel) {
    for (const bool before : {false, true}) {
        for (const std::string_view mode : {"cmbConfiguration", "cmbManualCalibration"}) {
            if (before) {
                garble();
            }
            click(mode);
            if (panel("SelWSCal") != nullptr) {
                click("SelWSCal", "cmdOK");
            }
            if (!before) {
                garble();
            }
            wait(4500);
            EXPECT_EQ(message(), before ? kDipSwitch : kProtocolError) << mode;
            click("Error", "cmbOK");
            wait(10000);
        }
    }
}

TEST_F(ProtocolErrorTest, APressOutsideOfTheModesChangesNoMode) {
    phase(3);
    phase(9);
    control("cmbManualCalibration").setEnabled(true);
    control("fraActualExposureParameters").setVisible(true);
    click("cmbManualCalibration");
    EXPECT_EQ(panel("SelWSCal"), nullptr);
    EXPECT_FALSE(running("tmrCalOFF"));
    EXPECT_FALSE(control("fraActualExposureParameters").visible());
}

} // namespace
} // namespace quillon
