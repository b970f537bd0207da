#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "tests/unit/fluoro/PanelTest.h"

namespace quillon {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FluoroscopyTest : public PanelTest {};

TEST_F(FluoroscopyTest, ValuesReachFieldPropertyAndHost) {
    // One after the other: a display report that repeats what stands there is dropped.
    expectReports({{"FLK80", "txtFlKVP", "80", {"FlKVPChangeValue(\"80\")"}},
                   {"FLK80", "txtFlKVP", "80", {"FlKVPChangeValue(\"80\")"}},
                   {"FLKS80", "txtFlKVP", "80", {}},
                   {"FLKS 80", "txtFlKVP", "80", {"FlKVPChangeDisplay(\" 80\")"}},
                   {"FLKS---", "txtFlKVP", "---", {"FlKVPChangeDisplay(\"---\")"}},
                   {"FLK  75", "txtFlKVP", "75", {"FlKVPChangeValue(\"  75\")"}},
                   {"FLKx", "txtFlKVP", "75", {}},
                   // Beyond 16 bits the report is given up where it stands: before the field.
                   {"FLK40000", "txtFlKVP", "75", {}},
                   {"FLT12", "txtFlTime", "12", {"FlTimeChangeValue(\"12\")"}},
                   {"FLT12", "txtFlTime", "12", {}},
                   {"FLTS12", "txtFlTime", "12", {}},
                   {"FLTS4.5", "txtFlTime", "4.5", {"FlTimeChangeDisplay(\"4.5\")"}},
                   {"FLP3", "txtFlPPS", "3", {"FLPPSChangeValue(\"3\")"}},
                   {"FLP3", "txtFlPPS", "3", {"FLPPSChangeValue(\"3\")"}},
                   {"FLPS--", "txtFlPPS", "--", {"FlPPSChangeDisplay(\"--\")"}},
                   {"FLMA25", "txtFlMA", "2", {"FlMAChangeValue(\"25\")"}},
                   {"FLMA35", "txtFlMA", "4", {"FlMAChangeValue(\"35\")"}},
                   {"FLMAS25", "txtFlMA", "25", {"FlMAChangeDisplay(\"25\")"}},
                   {"FLMAS--", "txtFlMA", "0", {"FlMAChangeDisplay(\"--\")"}}});
    const auto text = [this](std::string_view property) { return get<std::string>(property); };
    EXPECT_EQ(text("FlKVPDisplay") + " " + text("FlTimeDisplay") + " " + text("FlPPSDisplay"),
              "40000 4.5 --");
    EXPECT_EQ(text("FlKVP") + " " + text("FlTime") + " " + text("FlPPS"), "75 4 0");

    link.setEventEnabled(false);
    expectReports({{"FLK60", "txtFlKVP", "60", {}}});
}

TEST_F(FluoroscopyTest, AValueThatIsReportedAgainShowsInAFieldThatWasEmptied) {
    const std::vector<std::pair<std::string_view, std::string_view>> reports{
        {"FLK80", "txtFlKVP"},      {"FLKS80", "txtFlKVP"},      {"FLT12", "txtFlTime"},
        {"FLTS12", "txtFlTime"},    {"FLMA20", "txtFlMA"},       {"FLP3", "txtFlPPS"},
        {"FLC11", "txtFlContrast"}, {"KVT2", "txtFlKVPTracking"}};
    for (const auto& [message, field] : reports) {
        prepare({"ST2", message, "WM0"});
        EXPECT_EQ(caption(field), "") << message;
        EXPECT_NE(captionAfter(message, field), "") << message;
    }
}

TEST_F(FluoroscopyTest, PulseRateZeroMeansContinuous) {
    const auto continuous = [this](std::string_view message) {
        msg(message);
        return active("cmbFlContinuous");
    };
    EXPECT_TRUE(continuous("FLP0"));
    EXPECT_EQ(caption("txtFlPPS"), "0");
    EXPECT_FALSE(continuous("FLP3"));
    EXPECT_TRUE(continuous("FLPS0"));
    EXPECT_FALSE(continuous("FLPS--"));

    prepare({"ST2", "FLP3"});
    call("FlContinuousToggle");
    EXPECT_THAT(sentSoon(), ElementsAre("FLP00"));
    msg("FLP0");
    call("FlContinuousToggle");
    EXPECT_THAT(sentSoon(), ElementsAre("FLP"));
}

TEST_F(FluoroscopyTest, SwitchesActOnAChangeOnly) {
    struct Row {
        std::string mnemonic;
        std::string event;
        std::string_view key;
        bool litWhenOn;
    };
    for (const Row& row : {Row{"FLA", "FlABSChange", "cmbToggleABS", true},
                           Row{"FLHD", "FlHighDoseChange", "cmbFlHighDose", true},
                           Row{"FLAR", "FlAlarmChange", "cmbFluoroAlarmReset", false},
                           Row{"PH", "Photomultiplier", "cmbPhotomultiplier", true},
                           Row{"DA", "DigitalAEC", "cmbDigitalAEC", true}}) {
        SCOPED_TRACE(row.mnemonic);
        receive({row.mnemonic + "0", row.mnemonic + "x", row.mnemonic});
        EXPECT_THAT(takeEvents(), IsEmpty());
        receive({row.mnemonic + "1", row.mnemonic + "2"});
        EXPECT_THAT(takeEvents(), ElementsAre(row.event + "(True)"));
        EXPECT_EQ(active(row.key), row.litWhenOn);
        msg(row.mnemonic + "0");
        EXPECT_THAT(takeEvents(), ElementsAre(row.event + "(False)"));
        EXPECT_EQ(active(row.key), !row.litWhenOn);
    }
}

TEST_F(FluoroscopyTest, MagnificationStepsHaveAKeyEachButTheLast) {
    receive({"FLM31", "FLM31", "FLM11", "FLM41", "FLM51", "FLM91", "FLM", "FLM2", "FLMx1"});
    EXPECT_THAT(takeEvents(),
                ElementsAre("FlMagChange(3, True)", "FlMagChange(1, True)", "FlMagChange(4, True)"));
    EXPECT_EQ(lit("cmbFlMag"), ".*.*");
    msg("FLM30");
    EXPECT_THAT(takeEvents(), ElementsAre("FlMagChange(3, False)"));
    EXPECT_EQ(lit("cmbFlMag"), ".*..");
}

TEST_F(FluoroscopyTest, ContrastIsShownWhenItsFlagSaysSo) {
    expectReports({{"FLC01", "txtFlContrast", "Low", {"FlContrastChange(0)"}},
                   {"FLC10", "txtFlContrast", "Low", {}},
                   {"FLC11", "txtFlContrast", "Low", {}}, // stored already, and not to be shown
                   {"FLC21", "txtFlContrast", "VeryHigh", {"FlContrastChange(2)"}},
                   {"FLC1", "txtFlContrast", "VeryHigh", {}},
                   {"FLC11", "txtFlContrast", "High", {"FlContrastChange(1)"}},
                   {"FLC31", "txtFlContrast", "High", {"FlContrastChange(3)"}}});
}

TEST_F(FluoroscopyTest, TrackingIsShownWhereThePhaseWantsIt) {
    const auto tracking = [this] { return get<std::int32_t>("FlKVPTrackingActive"); };
    msg("KVT3");
    EXPECT_EQ(caption("txtFlKVPTracking") + caption("txtCfgKVTracking"), "");

    prepare({"ST2"});
    EXPECT_EQ(captionAfter("KVT3", "txtFlKVPTracking"), "3");
    EXPECT_TRUE(active("cmbFlKVPTracking"));
    EXPECT_EQ(tracking(), 3);
    receive({"KVTx", "KVT0"});
    EXPECT_THAT(takeEvents(), ElementsAre("FlKVPTracking(3)", "FlKVPTracking(0)"));
    EXPECT_EQ(caption("txtFlKVPTracking"), "");
    EXPECT_FALSE(active("cmbFlKVPTracking"));
    EXPECT_EQ(tracking(), 0);
    // The curve is kept for the next time.
    call("FlKVPToggleKVPTracking");
    EXPECT_THAT(sentSoon(), ElementsAre("KVT3"));

    prepare({"ST8"});
    EXPECT_EQ(captionAfter("KVT5", "txtCfgKVTracking"), "5");
    EXPECT_EQ(caption("txtFlKVPTracking"), "");
    EXPECT_EQ(captionAfter("KVT0", "txtCfgKVTracking"), "");
    EXPECT_THAT(takeEvents(), IsEmpty());
}

TEST_F(FluoroscopyTest, TrackingStepsHereWhileItIsOffAndInTheGeneratorWhileItIsOn) {
    prepare({"ST2", "KVT7", "KVT0"});
    const auto stepped = [this](std::string_view operation) {
        call(operation);
        return caption("txtFlKVPTracking");
    };
    EXPECT_EQ(stepped("FlKVPTrackingUp"), "8");
    EXPECT_EQ(stepped("FlKVPTrackingUp"), "8");
    for (int step = 0; step < 6; ++step) {
        call("FlKVPTrackingDown");
    }
    EXPECT_EQ(stepped("FlKVPTrackingDown"), "1");
    EXPECT_EQ(stepped("FlKVPTrackingDown"), "1");
    EXPECT_THAT(sentSoon(), IsEmpty());

    msg("KVT4");
    call("FlKVPTrackingUp");
    call("FlKVPTrackingDown");
    call("FlKVPToggleKVPTracking");
    EXPECT_THAT(sentSoon(), ElementsAre("KVT+", "KVT-", "KVT0"));
    EXPECT_EQ(caption("txtFlKVPTracking"), "4");
}

TEST_F(FluoroscopyTest, GeneratorTypeIsDetected) {
    msg("FLD1");
    EXPECT_EQ(link.settings().GeneratorType, 1);
    EXPECT_EQ(caption("txtRAD_RF"), "");
    prepare({"ST8"});
    receive({"FLD2", "FLDx"});
    EXPECT_EQ(caption("txtRAD_RF"), "RF");
    EXPECT_EQ(captionAfter("FLD0", "txtRAD_RF"), "RAD");
    EXPECT_EQ(link.settings().GeneratorType, 0);
    EXPECT_THAT(takeEvents(), ElementsAre("GeneratorTypeChange(1)", "GeneratorTypeChange(0)"));
}

TEST_F(FluoroscopyTest, NumbersGoOutInTheirForms) {
    prepare({"ST2"});
    const auto formula = [this](std::initializer_list<Value> arguments) {
        call("KVPTrackingFormula", arguments);
        return sentSoon();
    };
    EXPECT_THAT(formula({2, 60, 5, 100, 1000}), ElementsAre("KVTF2A060B05MA00100MS01000"));
    EXPECT_THAT(formula({12, 1234, 123, 32767, 0}), ElementsAre("KVTF12A1234B123MA32767MS00000"));
    EXPECT_THAT(formula({-1, -6, -5, -1, -1}), ElementsAre("KVTF-1A-006B-05MA-00001MS-00001"));

    call("KVPTrackingFormula", {2, 60, 5, 100, 1000});
    EXPECT_EQ(link.timer("timerStatusUpdate").interval(), 10000); // no poll disturbs it
    settle();

    put("FlKVP", 75);
    EXPECT_EQ(get<std::int32_t>("FlKVP"), 75);
    EXPECT_THAT(sentSoon(), ElementsAre("FLK075"));
}

class SingleStep : public PanelTest {
protected:
    SingleStep() {
        link.setHandshaking(true);
        put("FLKVPDoubleHandshaking", true);
        prepare({"ST2"});
    }
    using Counts = std::map<std::string, int>;
    /// How often each frame left within 20 s, in a generator that acknowledges at once.
    Counts sentLong() {
        Counts counts;
        for (int step = 0; step < 2000; ++step) {
            sent.clear();
            advance(10);
            for (const std::string& frame : sent) {
                ++counts[frame];
                msg("AK");
            }
        }
        return counts;
    }
};

TEST_F(SingleStep, IsSentAgainFiveTimesUntilTheValueIsReported) {
    Timer& timer = link.timer("tmrAutorepFlKVP");
    call("FlKVPOneUp");
    EXPECT_EQ(sentLong(), (Counts{{"FLKU", 6}}));
    EXPECT_FALSE(timer.running());
    // No report yet: a further step is sent, and not repeated.
    call("FlKVPOneUp");
    EXPECT_EQ(sentLong(), (Counts{{"FLKU", 1}}));

    msg("FLK81");
    call("FlKVPOneUp");
    advance(1600);
    EXPECT_TRUE(timer.running());
    msg("FLK82");
    EXPECT_FALSE(timer.running());
}

TEST_F(SingleStep, DownGoesBeforeUp) {
    call("FlKVPOneUp");
    call("FlKVPOneDown");
    // The first repeat finds the step itself still waiting.
    EXPECT_EQ(sentLong(), (Counts{{"FLKU", 1}, {"FLKD", 5}}));
}

TEST_F(SingleStep, IsSentOnceWithoutBothHandshakings) {
    link.setHandshaking(false);
    call("FlKVPOneDown");
    EXPECT_EQ(sentLong(), (Counts{{"FLK-", 1}}));
    link.setHandshaking(true);
    put("FLKVPDoubleHandshaking", false);
    call("FlKVPOneDown");
    EXPECT_EQ(sentLong(), (Counts{{"FLKD", 1}}));
}

} // namespace
} // namespace quillon
