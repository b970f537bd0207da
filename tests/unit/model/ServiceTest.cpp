#include "model/Service.h"

#include "tests/unit/model/LinkFixture.h"

namespace quillon {
namespace {

using testing::Contains;
using testing::ElementsAre;

using ServiceTest = LinkTest;

TEST_F(ServiceTest, TheGeneratorAsksForTheLeaveToExpose) {
    for (const bool leave : {true, false}) {
        put("RXEnable", leave);
        settle();
        forget();
        msg("RX?");
        settle();
        EXPECT_THAT(sent, ElementsAre(leave ? "RX1" : "RX0"));
        msg(leave ? "RX0" : "RX1"); // what it takes for the leave holds from then on
        EXPECT_EQ(get<bool>("RXEnable"), !leave);
    }
}

TEST_F(ServiceTest, WorkingModesShowTheirCaptions) {
    const std::string_view captions[]{"Direct", "Bucky 1", "Bucky 2", "STD Tomo",
                                      "STD RF", "DSI",     "CINE",    "DSA"};
    for (int mode = 0; mode < 8; ++mode) {
        SCOPED_TRACE(mode);
        phase(2);
        control("cmbFlKVPUp").setEnabled(mode < 3);
        EXPECT_EQ(captionAfter("WM" + decimalText(mode), "txtWorkingMode"), captions[mode]);
        EXPECT_EQ(caption("txtCfgWorkingMode"), "");
        EXPECT_EQ(control("cmbFlKVPUp").enabled(), mode >= 3);
        EXPECT_THAT(events, ElementsAre("WorkingModeChange(" + decimalText(mode) + ")"));

        phase(8);
        control("cmbFlKVPUp").setEnabled(false);
        EXPECT_EQ(captionAfter("WM" + decimalText(mode), "txtWorkingMode"), "");
        EXPECT_EQ(caption("txtCfgWorkingMode"), captions[mode]);
        EXPECT_FALSE(control("cmbFlKVPUp").enabled()) << "configuring a mode does not select it";
    }
}

TEST_F(ServiceTest, LeavingTheDigitalModesDarkensTheirKeys) {
    phase(2);
    msg("WM5");
    msg("DA1");
    msg("WM8");
    EXPECT_TRUE(active("cmbDigitalAEC"));
    msg("WM4");
    EXPECT_FALSE(active("cmbDigitalAEC"));
    msg("DA1");
    EXPECT_TRUE(active("cmbDigitalAEC")) << "the state was forgotten as well";
    msg("WM0");
    EXPECT_TRUE(active("cmbDigitalAEC")) << "no digital mode was left";
}

TEST_F(ServiceTest, OneWorkstationKeyIsLit) {
    const auto lit = [this] {
        std::string keys;
        for (const Control* key : link.all("cmbWS")) {
            keys += key->backColour() == kActiveColour ? decimalText(*key->index() + 1) : "";
        }
        return keys;
    };
    msg("WS3");
    msg("WS3");
    EXPECT_EQ(lit(), "3");
    msg("WS1");
    EXPECT_EQ(lit(), "1");
    msg("WSx");
    EXPECT_EQ(lit(), "1");
    msg("WS0");
    EXPECT_EQ(lit(), "");
    msg("WS9");
    msg("WS2");
    EXPECT_EQ(lit(), "2");
    EXPECT_THAT(events, ElementsAre("WorkstationChange(3)", "WorkstationChange(1)", "WorkstationChange(0)",
                                    "WorkstationChange(9)", "WorkstationChange(2)"));
}

TEST_F(ServiceTest, TheCalibrationValueMovesTheSliderAndTheSliderSendsIt) {
    for (const int bits : {8, 9, 10, 11, 12, 16}) {
        put("CalibrationDataSize", bits);
        const int maximum = control("sldCalValue").maximum();
        EXPECT_EQ(maximum, bits < 10 ? 255 : bits < 12 ? 1023 : 4095) << bits;
    }
    phase(2);
    phase(6);
    EXPECT_EQ(captionAfter("CV0512", "txtCalValue"), "0512");
    EXPECT_EQ(control("sldCalValue").value(), 512);
    EXPECT_EQ(control("sldCalValue").selectionStart(), 512);
    EXPECT_EQ(control("sldCalValue").toolTip(), "512");
    EXPECT_EQ(captionAfter("CVx", "txtCalValue"), "0512");
    EXPECT_EQ(control("sldCalValue").value(), 512);

    control("sldCalValue").setVisible(true);
    ASSERT_TRUE(input.slide(control("sldCalValue"), 7));
    settle();
    EXPECT_THAT(timeline, ElementsAre("350 CV0007"));
    forget();
    link.setHandshaking(true);
    put("numretries", 2);
    ASSERT_TRUE(input.slide(control("sldCalValue"), 4095));
    settle();
    EXPECT_THAT(sent, ElementsAre("CV4095", "CV4095", ""));
}

TEST_F(ServiceTest, TheKeyOfTheModeIsLit) {
    constexpr std::string_view kKeys[]{"cmbCalibration", "cmbConfiguration", "cmbAutocalConfirm",
                                       "cmbAutocalDismiss", "cmbFlKVPTracking"};
    for (const auto& [report, lit] : {std::pair{"ST2", "....."},
                                      {"ST6", "*...."},
                                      {"ST2", "....."},
                                      {"ST8", ".*..."},
                                      {"ST2", "....."},
                                      {"KVT3", "....*"},
                                      {"ST1", "....."},
                                      {"ST11", "..**."}}) {
        msg(report);
        std::string keys;
        for (const std::string_view key : kKeys) {
            keys += active(key) ? '*' : '.';
        }
        EXPECT_EQ(keys, lit) << report;
    }
}

TEST_F(ServiceTest, AConfirmationThatIsNotAnsweredIsSentOnceMore) {
    // The generator asks whether an autocalibration is to be kept; the poll is on.
    for (const std::string_view report : {"ST2", "ST6", "KVS80", "ST9", "CAU1", "ST11"}) {
        msg(report);
    }
    settle();
    link.setStatusUpdateEnable(true);
    forget();
    click("cmbAutocalConfirm");
    advance(120000);
    // Five waits of 4 s, then 2 s, then once more; after that it only waits.
    EXPECT_THAT(timeline, ElementsAre("1020 CAU1", "23020 CAU1"));
    msg("CAU1");
    advance(4000);
    EXPECT_FALSE(link.timer("tmrConfirm").running());
    advance(1500);
    EXPECT_THAT(sent, Contains("ST")) << "the poll goes on";

    // The waits were counted once and for all.
    msg("ST9");
    msg("ST11");
    forget();
    click("cmbAutocalConfirm");
    link.setStatusUpdateEnable(false);
    advance(120000);
    EXPECT_THAT(timeline, ElementsAre("1020 CAU1"));

    for (const auto& [key, before] : {std::pair{"cmbAutocalDismiss", PanelTimer("tmrConfirm")},
                                      {"cmbAutocalConfirm", PanelTimer("tmrDismiss")}}) {
        msg("ST9");
        msg("ST11");
        EXPECT_TRUE(link.timer(before).running());
        click(key);
        EXPECT_FALSE(link.timer(before).running()) << "one answer at a time";
    }
}

} // namespace
} // namespace quillon
