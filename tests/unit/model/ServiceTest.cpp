#include "model/Service.h"

#include "tests/unit/model/LinkFixture.h"

namespace quillon {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using ServiceTest = LinkTest;

TEST_F(ServiceTest, ConfigurationValuesShowInTheirPhases) {
    struct Row {
        std::string_view mnemonic;
        std::string_view label;
        bool configurationOnly;
    };
    for (const Row row : {Row{"TU", "txtCfgTube", true}, Row{"IC", "txtCfgAECIC", true},
                          Row{"WSI", "txtCfgWSInterlock", false}, Row{"WSF", "txtCfgFailSafe", false}}) {
        SCOPED_TRACE(row.mnemonic);
        const auto report = [&](std::string_view value) {
            msg(std::string(row.mnemonic) + std::string(value));
            return caption(row.label);
        };
        phase(2);
        EXPECT_EQ(report("3"), row.configurationOnly ? "" : "3");
        phase(8);
        EXPECT_EQ(report("0012"), "12");
        EXPECT_EQ(report("x"), "12");
        EXPECT_EQ(report(""), "12");
        EXPECT_EQ(report(" 2 "), "2");
    }
    EXPECT_THAT(events, IsEmpty());
}

TEST_F(ServiceTest, TheSyncTypeIsHardwareAtZero) {
    EXPECT_EQ(captionAfter("WSS1", "txtCfgSyncType"), "SW");
    EXPECT_EQ(captionAfter("WSS0", "txtCfgSyncType"), "HW");
    EXPECT_EQ(captionAfter("WSSx", "txtCfgSyncType"), "HW");
}

TEST_F(ServiceTest, TheGeneratorAsksForTheLeaveToExpose) {
    for (const bool leave : {true, false}) {
        put("RXEnable", leave);
        settle();
        forget();
        msg("RX?");
        settle();
        EXPECT_THAT(sent, ElementsAre(leave ? "RX1" : "RX0"));
    }
}

class SoftwareSyncTest : public LinkTest {
protected:
    SoftwareSyncTest() : LinkTest("-swsync") {}
};

TEST_F(SoftwareSyncTest, TheExposureKeyNeedsSoftwareSync) {
    phase(2);
    msg("WM1");
    for (const std::string_view type : {"WSS1", "WSS0"}) {
        msg(type);
        msg("ST3");
        EXPECT_EQ(visible("cmdSWExposure"), type == "WSS1");
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

TEST_F(ServiceTest, AWorkingModeWithoutACaptionChangesNothingOnThePanel) {
    phase(2);
    msg("WM1");
    forget();
    for (const std::string_view message : {"WM8", "WM-1"}) {
        control("cmbFlKVPUp").setEnabled(true);
        EXPECT_EQ(captionAfter(message, "txtWorkingMode"), "Bucky 1");
        EXPECT_TRUE(control("cmbFlKVPUp").enabled());
    }
    msg("WM");
    msg("WM32768");
    EXPECT_THAT(events, ElementsAre("WorkingModeChange(8)", "WorkingModeChange(-1)"));
    phase(8);
    msg("WM3");
    EXPECT_EQ(captionAfter("WM9", "txtCfgWorkingMode"), "STD Tomo");
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

TEST_F(ServiceTest, AutocalibrationReportsAnswerTheQuestion) {
    phase(2);
    phase(6);
    phase(9);
    msg("ST11");
    link.setEventEnabled(false);
    forget();
    for (const std::string_view key : {"cmbAutocalConfirm", "cmbAutocalDismiss"}) {
        control(key).setEnabled(false);
    }
    msg("CAU1");
    EXPECT_TRUE(active("cmbAutocalibration"));
    for (const std::string_view key : {"cmbAutocalConfirm", "cmbAutocalDismiss"}) {
        EXPECT_FALSE(visible(key));
        EXPECT_TRUE(control(key).enabled());
    }
    msg("CAUx");
    msg("CAU0");
    EXPECT_FALSE(active("cmbAutocalibration"));
    msg("CAR1");
    msg("CAR0");
    msg("CAR");
    EXPECT_THAT(events, ElementsAre("AutocalibrationACK(True)", "AutocalibrationACK(False)",
                                    "AutocalRetry(True)", "AutocalRetry(False)"));
}

TEST_F(ServiceTest, ManualCalibrationIsToggledByThePhase) {
    struct Row {
        int phase;
        std::vector<std::string> sent;
    };
    for (const Row& row : {Row{2, {"400 CA1"}}, Row{6, {"400 CA0"}}, Row{8, {}}, Row{9, {}}}) {
        SCOPED_TRACE(row.phase);
        phase(row.phase);
        control("fraServiceMenuItem", 1).setVisible(false);
        control("cmbStoreCalValue").setEnabled(row.phase != 2);
        call("ToggleCalibrationFeature");
        EXPECT_EQ(control("fraServiceMenuItem", 1).visible(), row.phase == 2);
        EXPECT_EQ(control("cmbStoreCalValue").enabled(), row.phase != 6);
        settle();
        EXPECT_EQ(timeline, row.sent);
    }
}

TEST_F(ServiceTest, AutocalibrationIsAskedForOnceAndEndedOnceItRuns) {
    phase(2);
    msg("INFx");
    call("ToggleAutocalibrationFeature");
    EXPECT_EQ(caption("txtInfo"), "");
    settle();
    EXPECT_THAT(sent, IsEmpty());

    phase(6);
    control("cmbAutocalConfirm").setEnabled(false);
    call("ToggleAutocalibrationFeature");
    EXPECT_TRUE(control("cmbAutocalConfirm").enabled());
    call("ToggleAutocalibrationFeature");
    settle();
    EXPECT_THAT(timeline, ElementsAre("1000 CAU1")) << "the second one finds it asked for";

    phase(9);
    msg("CAU1");
    call("ToggleAutocalibrationFeature");
    settle();
    EXPECT_THAT(timeline, ElementsAre("1000 CAU0"));
}

TEST_F(ServiceTest, ASecondTryWorksAfterTheGeneratorWentBackToNormalOperation) {
    phase(2);
    phase(6);
    call("ToggleAutocalibrationFeature");
    phase(2);
    phase(6);
    call("ToggleAutocalibrationFeature");
    settle();
    EXPECT_THAT(sent, ElementsAre("CAU1"));
}

class AnswerTest : public LinkTest {
protected:
    /// The generator asks whether an autocalibration is to be kept; the poll is on.
    AnswerTest() {
        phase(2);
        phase(6);
        msg("KVS80");
        phase(9);
        msg("CAU1");
        msg("ST11");
        link.setStatusUpdateEnable(true);
        forget();
    }
    [[nodiscard]] bool polled() const {
        return std::any_of(sent.begin(), sent.end(),
                           [](const std::string& frame) { return frame == "HU" || frame == "ST"; });
    }
};

TEST_F(AnswerTest, ConfirmingSendsOnceAndWaitsForTheAnswer) {
    click("cmbAutocalConfirm");
    EXPECT_THAT(events, ElementsAre("AutocalibrationConfirm()"));
    EXPECT_FALSE(link.timer("timerStatusUpdate").running());
    EXPECT_FALSE(visible("cmbAutocalConfirm"));
    EXPECT_FALSE(visible("cmbAutocalDismiss"));
    advance(19);
    EXPECT_EQ(get<std::string>("KVPDisplay"), "80");
    advance(1);
    EXPECT_EQ(get<std::string>("KVPDisplay"), "");
    EXPECT_EQ(get<int>("KVP"), 0);
    advance(1000);
    EXPECT_THAT(timeline, ElementsAre("1020 CAU1"));
    msg("CAU1");
    EXPECT_EQ(events.back(), "AutocalibrationACK(True)");
    advance(4020 - 1020 - 1);
    EXPECT_TRUE(link.timer("tmrConfirm").running());
    EXPECT_EQ(sent.size(), 1) << "the poll keeps away";
    advance(1);
    EXPECT_FALSE(link.timer("tmrConfirm").running());
    advance(1500);
    EXPECT_TRUE(polled());
}

TEST_F(AnswerTest, AConfirmationThatIsNotAnsweredIsSentOnceMore) {
    click("cmbAutocalConfirm");
    advance(120000);
    // Five waits of 4 s, then 2 s, then once more; after that it only waits.
    EXPECT_THAT(timeline, ElementsAre("1020 CAU1", "23020 CAU1"));
    msg("CAU1");
    advance(4000);
    EXPECT_FALSE(link.timer("tmrConfirm").running());
    advance(1500);
    EXPECT_TRUE(polled());

    // The waits were counted once and for all.
    msg("ST9");
    msg("ST11");
    forget();
    click("cmbAutocalConfirm");
    link.setStatusUpdateEnable(false);
    advance(120000);
    EXPECT_THAT(timeline, ElementsAre("1020 CAU1"));
}

TEST_F(AnswerTest, DismissingLeavesAutocalibrationAndThenCalibration) {
    click("cmbAutocalDismiss");
    EXPECT_THAT(events, ElementsAre("AutocalibrationDismiss()"));
    EXPECT_FALSE(visible("cmbAutocalConfirm"));
    advance(20);
    EXPECT_EQ(get<std::string>("KVPDisplay"), "");
    advance(1480);
    msg("CAU0");
    msg("ST6");
    control("cmbAutocalibration").setBackColour(kActiveColour);
    advance(1519);
    EXPECT_THAT(timeline, ElementsAre("1020 CAU0", "2420 CA0"));
    link.timer("timerStatusUpdate").stop();
    EXPECT_TRUE(active("cmbAutocalibration"));
    advance(1);
    EXPECT_FALSE(active("cmbAutocalibration"));
    EXPECT_FALSE(link.timer("tmrDismiss").running());
    advance(1500);
    EXPECT_TRUE(polled());
    EXPECT_EQ(std::count(sent.begin(), sent.end(), "CA0"), 1);
}

TEST_F(AnswerTest, ADismissalWaitsAsLongAsItTakes) {
    click("cmbAutocalDismiss");
    advance(120000);
    EXPECT_THAT(timeline, ElementsAre("1020 CAU0"));
    EXPECT_TRUE(link.timer("tmrDismiss").running());
    // For the panel it is over at once.
    link.setStatusUpdateEnable(false);
    phase(6);
    call("ToggleAutocalibrationFeature");
    advance(1000);
    EXPECT_THAT(sent, ElementsAre("CAU1"));
}

} // namespace
} // namespace quillon
