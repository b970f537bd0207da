#include <memory>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "console/ctrQuillonConsole.h"
#include "runtime/MemoryPlatform.h"
#include "shell/Application.h"

namespace quillon {
namespace {

/// The console in the Ready state. A line whose messages cannot be read is told by the link's event.
class ProtocolErrorTest : public testing::Test {
protected:
    ProtocolErrorTest() {
        application.start();
        phase(2);
        machine.time.advance(12000);
    }

    void phase(int number) { machine.port.receive("ST" + std::to_string(number) + "\r\n"); }
    void click(std::string_view key) {
        ASSERT_TRUE(application.input().click(application.console()[key])) << key;
    }
    void click(std::string_view panel, std::string_view key) {
        ControlHost* open = application.console().keyed(panel);
        ASSERT_NE(open, nullptr) << panel;
        ASSERT_TRUE(application.input().click((*open)[key])) << key;
    }
    void garble() { application.link().events().MessageProtocolError.raise(); }
    void wait(Milliseconds ms) { machine.time.advance(ms); }
    /// The title of the error panel; empty while there is none.
    [[nodiscard]] std::string error() {
        const ControlHost* open = application.console().keyed("Error");
        return open == nullptr ? std::string{} : (*open)["myCaption"].caption();
    }

    MemoryPlatform machine;
    Application application{Platform{machine.time.schedule(), machine.time, machine.port, machine.store,
                                     machine.folder, machine.desktop, machine.power},
                            ""};
};

constexpr std::string_view kProtocolError = "Protocol Error";
constexpr std::string_view kDipSwitch = "BQS Calibration Dip Switch Error";

TEST_F(ProtocolErrorTest, AModeNotReachedIsBlamedOnTheLine) {
    click("cmbConfiguration");
    garble();
    wait(3000);
    EXPECT_EQ(error(), kProtocolError);
    click("Error", "cmbOK");
    wait(10000);
    click("cmbManualCalibration");
    click("SelWSCal", "cmdOK");
    garble();
    wait(4500);
    EXPECT_EQ(error(), kProtocolError);
}

TEST_F(ProtocolErrorTest, APressForgetsWhatWasBefore) {
    garble();
    click("cmbConfiguration");
    wait(3000);
    EXPECT_EQ(error(), kDipSwitch);
    click("Error", "cmbOK");
    wait(10000);
    garble();
    click("cmbManualCalibration");
    click("SelWSCal", "cmdOK");
    wait(4500);
    EXPECT_EQ(error(), kDipSwitch);
}

TEST_F(ProtocolErrorTest, AModeNotLeftEndsTheWait) {
    click("cmbConfiguration");
    phase(8);
    wait(3000);
    click("cmbConfiguration");
    garble();
    wait(3000);
    EXPECT_EQ(error(), kProtocolError);
    click("Error", "cmbOK");

    phase(2);
    wait(12000);
    click("cmbManualCalibration");
    click("SelWSCal", "cmdOK");
    phase(6);
    wait(5000);
    click("cmbManualCalibration");
    garble();
    wait(5000);
    EXPECT_EQ(error(), kProtocolError);
    EXPECT_FALSE(application.console().timer("tmrCalOFF").running());
}

TEST_F(ProtocolErrorTest, AModeReachedNeedsNoBlame) {
    click("cmbConfiguration");
    garble();
    phase(8);
    wait(3000);
    EXPECT_EQ(error(), "");
    click("cmbConfiguration");
    phase(2);
    wait(3000);
    EXPECT_EQ(error(), "");
}

TEST_F(ProtocolErrorTest, APressOutsideOfTheModesChangesNoMode) {
    phase(3);
    phase(9);
    application.console()["cmbManualCalibration"].setEnabled(true);
    application.console()["fraActualExposureParameters"].setVisible(true);
    click("cmbManualCalibration");
    EXPECT_EQ(application.console().keyed("SelWSCal"), nullptr);
    EXPECT_FALSE(application.console().timer("tmrCalOFF").running());
    EXPECT_FALSE(application.console()["fraActualExposureParameters"].visible());
}

} // namespace
} // namespace quillon
