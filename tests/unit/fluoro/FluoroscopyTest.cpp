#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "tests/unit/fluoro/LinkBench.h"

namespace quillon {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(FluoroscopyTest, ValuesReachFieldPropertyAndHost) {
    LinkBench bench;
    // One after the other: a display report that repeats what stands there is dropped.
    expectReports(bench, {{"FLK80", "txtFlKVP", "80", {"FlKVPChangeValue \"80\""}},
                          {"FLK80", "txtFlKVP", "80", {"FlKVPChangeValue \"80\""}},
                          {"FLKS80", "txtFlKVP", "80", {}},
                          {"FLKS 80", "txtFlKVP", "80", {"FlKVPChangeDisplay \" 80\""}},
                          {"FLKS---", "txtFlKVP", "---", {"FlKVPChangeDisplay \"---\""}},
                          {"FLK  75", "txtFlKVP", "75", {"FlKVPChangeValue \"  75\""}},
                          {"FLKx", "txtFlKVP", "75", {}},
                          {"FLK", "txtFlKVP", "75", {}},
                          // Beyond 16 bits the report is given up where it stands: before the field.
                          {"FLK40000", "txtFlKVP", "75", {}},
                          {"FLT12", "txtFlTime", "12", {"FlTimeChangeValue \"12\""}},
                          {"FLT12", "txtFlTime", "12", {}},
                          {"FLTx", "txtFlTime", "12", {}},
                          {"FLTS12", "txtFlTime", "12", {}},
                          {"FLTS4.5", "txtFlTime", "4.5", {"FlTimeChangeDisplay \"4.5\""}},
                          {"FLP3", "txtFlPPS", "3", {"FLPPSChangeValue \"3\""}},
                          {"FLP3", "txtFlPPS", "3", {"FLPPSChangeValue \"3\""}},
                          {"FLPx", "txtFlPPS", "3", {}},
                          {"FLPS--", "txtFlPPS", "--", {"FlPPSChangeDisplay \"--\""}},
                          {"FLMA25", "txtFlMA", "2", {"FlMAChangeValue \"25\""}},
                          {"FLMA35", "txtFlMA", "4", {"FlMAChangeValue \"35\""}},
                          {"FLMAx", "txtFlMA", "4", {}},
                          {"FLMAS25", "txtFlMA", "25", {"FlMAChangeDisplay \"25\""}},
                          {"FLMAS--", "txtFlMA", "0", {"FlMAChangeDisplay \"--\""}}});
    const auto text = [&bench](std::string_view property) { return bench.link.get<std::string>(property); };
    EXPECT_EQ(text("FlKVPDisplay") + " " + text("FlTimeDisplay") + " " + text("FlPPSDisplay"),
              "40000 4.5 --");
    EXPECT_EQ(text("FlKVP") + " " + text("FlTime") + " " + text("FlPPS"), "75 4 0");

    bench.link.setEventEnabled(false);
    expectReports(bench, {{"FLK60", "txtFlKVP", "60", {}}});
}

TEST(FluoroscopyTest, PulseRateZeroMeansContinuous) {
    LinkBench bench;
    const auto lit = [&bench](std::string_view message) {
        bench.receive(message);
        return bench.lit("cmbFlContinuous");
    };
    EXPECT_TRUE(lit("FLP0"));
    EXPECT_EQ(bench.caption("txtFlPPS"), "0");
    EXPECT_FALSE(lit("FLP3"));
    EXPECT_TRUE(lit("FLPS0"));
    EXPECT_FALSE(lit("FLPS--"));

    bench.prepare({"ST2", "FLP3"});
    bench.link.call("FlContinuousToggle");
    EXPECT_THAT(bench.sentSoon(), ElementsAre("FLP00"));
    bench.receive("FLP0");
    bench.link.call("FlContinuousToggle");
    EXPECT_THAT(bench.sentSoon(), ElementsAre("FLP"));
}

TEST(FluoroscopyTest, SwitchesActOnAChangeOnly) {
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
        LinkBench bench;
        bench.receive({row.mnemonic + "0", row.mnemonic + "x", row.mnemonic});
        EXPECT_THAT(bench.takeEvents(), IsEmpty());
        bench.receive({row.mnemonic + "1", row.mnemonic + "2"});
        EXPECT_THAT(bench.takeEvents(), ElementsAre(row.event + " True"));
        EXPECT_EQ(bench.lit(row.key), row.litWhenOn);
        bench.receive(row.mnemonic + "0");
        EXPECT_THAT(bench.takeEvents(), ElementsAre(row.event + " False"));
        EXPECT_EQ(bench.lit(row.key), !row.litWhenOn);
    }
}

TEST(FluoroscopyTest, MagnificationStepsHaveAKeyEachButTheLast) {
    LinkBench bench;
    bench.receive({"FLM31", "FLM31", "FLM11", "FLM41", "FLM51", "FLM91", "FLM", "FLM2", "FLMx1"});
    EXPECT_THAT(bench.takeEvents(),
                ElementsAre("FlMagChange 3 True", "FlMagChange 1 True", "FlMagChange 4 True"));
    EXPECT_TRUE(bench.lit("cmbFlMag", 3));
    EXPECT_TRUE(bench.lit("cmbFlMag", 1));
    EXPECT_FALSE(bench.lit("cmbFlMag", 0));
    bench.receive("FLM30");
    EXPECT_THAT(bench.takeEvents(), ElementsAre("FlMagChange 3 False"));
    EXPECT_FALSE(bench.lit("cmbFlMag", 3));
}

TEST(FluoroscopyTest, ContrastIsShownWhenItsFlagSaysSo) {
    LinkBench bench;
    expectReports(bench, {{"FLC01", "txtFlContrast", "Low", {"FlContrastChange 0"}},
                          {"FLC10", "txtFlContrast", "Low", {}},
                          {"FLC11", "txtFlContrast", "Low", {}}, // stored already
                          {"FLC21", "txtFlContrast", "VeryHigh", {"FlContrastChange 2"}},
                          {"FLC1x", "txtFlContrast", "VeryHigh", {}},
                          {"FLC1", "txtFlContrast", "VeryHigh", {}},
                          {"FLC", "txtFlContrast", "VeryHigh", {}},
                          {"FLC11", "txtFlContrast", "High", {"FlContrastChange 1"}},
                          {"FLC31", "txtFlContrast", "High", {"FlContrastChange 3"}}});
}

TEST(FluoroscopyTest, TrackingIsShownWhereThePhaseWantsIt) {
    LinkBench bench;
    const auto active = [&bench] { return bench.link.get<std::int32_t>("FlKVPTrackingActive"); };
    bench.receive("KVT3");
    EXPECT_EQ(bench.caption("txtFlKVPTracking") + bench.caption("txtCfgKVTracking"), "");

    bench.prepare({"ST2"});
    bench.receive("KVT3");
    EXPECT_EQ(bench.caption("txtFlKVPTracking"), "3");
    EXPECT_TRUE(bench.lit("cmbFlKVPTracking"));
    EXPECT_EQ(active(), 3);
    bench.receive({"KVTx", "KVT0"});
    EXPECT_THAT(bench.takeEvents(), ElementsAre("FlKVPTracking 3", "FlKVPTracking 0"));
    EXPECT_EQ(bench.caption("txtFlKVPTracking"), "");
    EXPECT_FALSE(bench.lit("cmbFlKVPTracking"));
    EXPECT_EQ(active(), 0);
    // The curve is kept for the next time.
    bench.link.call("FlKVPToggleKVPTracking");
    EXPECT_THAT(bench.sentSoon(), ElementsAre("KVT3"));

    bench.prepare({"ST8"});
    bench.receive("KVT5");
    EXPECT_EQ(bench.caption("txtCfgKVTracking"), "5");
    EXPECT_EQ(bench.caption("txtFlKVPTracking"), "");
    bench.receive("KVT0");
    EXPECT_EQ(bench.caption("txtCfgKVTracking"), "");
    EXPECT_THAT(bench.takeEvents(), IsEmpty());
}

TEST(FluoroscopyTest, TrackingStepsHereWhileItIsOffAndInTheGeneratorWhileItIsOn) {
    LinkBench bench;
    bench.prepare({"ST2", "KVT7", "KVT0"});
    const auto stepped = [&bench](std::string_view operation) {
        bench.link.call(operation);
        return bench.caption("txtFlKVPTracking");
    };
    EXPECT_EQ(stepped("FlKVPTrackingUp"), "8");
    EXPECT_EQ(stepped("FlKVPTrackingUp"), "8");
    for (int step = 0; step < 6; ++step) {
        bench.link.call("FlKVPTrackingDown");
    }
    EXPECT_EQ(stepped("FlKVPTrackingDown"), "1");
    EXPECT_EQ(stepped("FlKVPTrackingDown"), "1");
    EXPECT_THAT(bench.sentSoon(), IsEmpty());

    bench.receive("KVT4");
    bench.link.call("FlKVPTrackingUp");
    bench.link.call("FlKVPTrackingDown");
    bench.link.call("FlKVPToggleKVPTracking");
    EXPECT_THAT(bench.sentSoon(), ElementsAre("KVT+", "KVT-", "KVT0"));
    EXPECT_EQ(bench.caption("txtFlKVPTracking"), "4");
}

TEST(FluoroscopyTest, GeneratorTypeIsDetected) {
    LinkBench bench;
    bench.receive("FLD1");
    EXPECT_EQ(bench.link.settings().GeneratorType, 1);
    EXPECT_EQ(bench.caption("txtRAD_RF"), "");
    bench.prepare({"ST8"});
    bench.receive({"FLD2", "FLDx"});
    EXPECT_EQ(bench.caption("txtRAD_RF"), "RF");
    bench.receive("FLD0");
    EXPECT_EQ(bench.caption("txtRAD_RF"), "RAD");
    EXPECT_EQ(bench.link.settings().GeneratorType, 0);
    EXPECT_THAT(bench.takeEvents(), ElementsAre("GeneratorTypeChange 1", "GeneratorTypeChange 0"));
}

TEST(FluoroscopyTest, NumbersGoOutInTheirForms) {
    LinkBench bench;
    bench.prepare({"ST2"});
    const auto formula = [&bench](std::initializer_list<Value> arguments) {
        bench.link.call("KVPTrackingFormula", arguments);
        return bench.sentSoon();
    };
    EXPECT_THAT(formula({2, 60, 5, 100, 1000}), ElementsAre("KVTF2A060B05MA00100MS01000"));
    EXPECT_THAT(formula({12, 1234, 123, 32767, 0}), ElementsAre("KVTF12A1234B123MA32767MS00000"));
    EXPECT_THAT(formula({-1, -6, -5, -1, -1}), ElementsAre("KVTF-1A-006B-05MA-00001MS-00001"));

    bench.link.call("KVPTrackingFormula", {2, 60, 5, 100, 1000});
    EXPECT_EQ(bench.link.timer("timerStatusUpdate").interval(), 10000); // no poll disturbs it
    bench.settle();

    bench.link.operations().set("FlKVP", 75);
    EXPECT_EQ(bench.link.get<std::int32_t>("FlKVP"), 75);
    EXPECT_THAT(bench.sentSoon(), ElementsAre("FLK075"));
}

class SingleStep : public testing::Test {
protected:
    SingleStep() {
        bench.link.setHandshaking(true);
        bench.link.operations().set("FLKVPDoubleHandshaking", true);
        bench.prepare({"ST2"});
    }
    /// How often each frame left within 20 s, in a generator that acknowledges at once.
    std::map<std::string, int> sent() {
        std::map<std::string, int> counts;
        for (int step = 0; step < 2000; ++step) {
            bench.frames.clear();
            bench.wait(10);
            for (const auto& frame : bench.frames) {
                ++counts[frame.second];
                bench.receive("AK");
            }
        }
        return counts;
    }
    using Counts = std::map<std::string, int>;

    LinkBench bench;
};

TEST_F(SingleStep, IsSentAgainFiveTimesUntilTheValueIsReported) {
    Timer& timer = bench.link.timer("tmrAutorepFlKVP");
    bench.link.call("FlKVPOneUp");
    EXPECT_EQ(sent(), (Counts{{"FLKU", 6}}));
    EXPECT_FALSE(timer.running());
    // No report yet: a further step is sent, and not repeated.
    bench.link.call("FlKVPOneUp");
    EXPECT_EQ(sent(), (Counts{{"FLKU", 1}}));

    bench.receive("FLK81");
    bench.link.call("FlKVPOneUp");
    bench.wait(1600);
    EXPECT_TRUE(timer.running());
    bench.receive("FLK82");
    EXPECT_FALSE(timer.running());
}

TEST_F(SingleStep, DownGoesBeforeUp) {
    bench.link.call("FlKVPOneUp");
    bench.link.call("FlKVPOneDown");
    // The first repeat finds the step itself still waiting.
    EXPECT_EQ(sent(), (Counts{{"FLKU", 1}, {"FLKD", 5}}));
}

TEST_F(SingleStep, IsSentOnceWithoutBothHandshakings) {
    bench.link.setHandshaking(false);
    bench.link.call("FlKVPOneDown");
    EXPECT_EQ(sent(), (Counts{{"FLK-", 1}}));
    bench.link.setHandshaking(true);
    bench.link.operations().set("FLKVPDoubleHandshaking", false);
    bench.link.call("FlKVPOneDown");
    EXPECT_EQ(sent(), (Counts{{"FLKD", 1}}));
}

} // namespace
} // namespace quillon
