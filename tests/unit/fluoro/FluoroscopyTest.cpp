#include <map>

#include "tests/unit/fluoro/PanelTest.h"

namespace quillon {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FluoroscopyTest : public PanelTest {};

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
    for (const auto& [message, field] : {reports[0], reports[2], reports[5]}) {
        const std::string before = captionAfter(message, field);
        EXPECT_EQ(captionAfter(std::string(message.substr(0, 3)) + "x", field), before) << "no number";
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
    expectReports({{"FLD1", "txtRAD_RF", "RF", {"GeneratorTypeChange(1)"}},
                   {"FLD0", "txtRAD_RF", "RAD", {"GeneratorTypeChange(0)"}}});
}

TEST_F(FluoroscopyTest, ContinuousFluoroscopyIsToggledByItsPulses) {
    for (const auto& [report, frame] : {std::pair{"FLP15", "FLP00"}, {"FLP0", "FLP"}}) {
        prepare({"ST2", report});
        call("FlContinuousToggle");
        EXPECT_THAT(sentSoon(), ElementsAre(frame)) << report;
    }
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
    prepare({"ST1", "ST2"}); // a power-up ends it
    call("FlKVPTrackingUp");
    EXPECT_THAT(sentSoon(), IsEmpty());
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

} // namespace
} // namespace quillon
