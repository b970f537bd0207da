#include "model/ErrorsAndWarnings.h"

#include "link/LinkSilence.h"
#include "tests/unit/model/LinkFixture.h"

namespace quillon {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ErrorsTest : public LinkTest {
protected:
    ErrorsTest() {
        platform.folder.put("error_info.txt", "5=Door open=1\r\n0=never told=0\r\n");
        call("DefaultErrorInfoFile");
    }
};

TEST_F(ErrorsTest, AnErrorIsToldWithItsWordsUntilItIsReset) {
    struct Row {
        std::string_view message;
        std::vector<std::string> events;
    };
    // clang-format off
    const Row rows[]{
        {"ER0",     {"GeneratorERROR(0, \"\", 3)"}},
        {"ER5",     {"GeneratorERROR(5, \"Door open\", 1)"}},
        {"ER0",     {"GeneratorERROR(5, \"Door open\", 1)"}},
        {"ER99",    {}},
        {"ER32768", {}},
        {"ER0",     {"GeneratorERROR(5, \"Door open\", 1)"}},
        {"ER7",     {"GeneratorERROR(7, \"\", 3)"}},
        {"ERL12",   {"GeneratorWSInterlockERROR(12)"}},
        {"ERL07x",  {"GeneratorWSInterlockERROR(7)"}},
        {"ERL",     {}},
        {"ER",      {}},
        {"AR0",     {"GeneratorERRORResetAck()"}},
        {"AR3",     {"GeneratorAECError(3)"}},
        {"ARx",     {}},
        {"RP9",     {"WarningMessageRP(9)"}},
        {"RP10",    {}},
        {"RPx",     {}},
        {"ER0",     {"GeneratorERROR(7, \"\", 3)"}},
    };
    // clang-format on
    for (const Row& row : rows) {
        forget();
        msg(row.message);
        EXPECT_EQ(events, row.events) << row.message;
    }
    call("ResetError");
    EXPECT_THAT(eventsAfter("ER0"), ElementsAre("GeneratorERROR(0, \"\", 3)"));
}

struct Lamp {
    std::string_view mnemonic;
    std::string_view label;
    std::string_view caption;
    std::string_view event;
};

// clang-format off
const Lamp kLamps[]{
    {"DL", "txtDoorOpenWarning",          "Door",       "WARNINGDoorOpen"},
    {"GL", "txtGeneratorOverloadWarning", "Gen. Over.", "WARNINGGenOverload"},
    {"TL", "txtTubeOverloadWarning",      "Tube Over.", "WARNINGTubeOverload"},
    {"RL", "txtRotorWarning",             "Rotor",      "WARNINGRotor"},
    {"HL", "txtOverheatWarning",          "Overheat",   "WARNINGOverheat"},
    {"EL", "txtTechniqueWarning",         "Technique",  "WARNINGTechnique"},
    {"CL", "txtCollimatorWarning",        "Collimator", "WARNINGCollimator"},
};
// clang-format on

TEST_F(ErrorsTest, LampsAreLitAndDarkened) {
    for (const Lamp& lamp : kLamps) {
        SCOPED_TRACE(lamp.mnemonic);
        forget();
        const auto report = [&](std::string_view value) {
            msg(std::string(lamp.mnemonic) + std::string(value));
        };
        report("1");
        EXPECT_TRUE(visible(lamp.label));
        EXPECT_EQ(caption(lamp.label), lamp.caption);
        report("x");
        report("");
        EXPECT_TRUE(visible(lamp.label));
        report("0");
        EXPECT_FALSE(visible(lamp.label));
        report("-0.5");
        EXPECT_TRUE(visible(lamp.label));
        const std::string name(lamp.event);
        EXPECT_THAT(events, ElementsAre(name + "(True)", name + "(False)", name + "(True)"));
    }
    phase(1);
    for (const Lamp& lamp : kLamps) {
        EXPECT_FALSE(visible(lamp.label));
    }
}

TEST_F(ErrorsTest, APowerUpLeavesNothingButTheHeatOfWhatWasReported) {
    for (const std::string_view message : {"ST8", "ST2", "WN17", "INFhello", "WM5", "HE45", "ER12"}) {
        msg(message);
    }
    link.timer("tmrBlink").run();
    advance(500);
    ASSERT_EQ(caption("cmbResetError"), "ERROR 12");
    ASSERT_EQ(caption("cmbConfiguration"), "OFF");
    msg("ST1");
    for (const std::string_view text : {"lblWarning", "txtInfo", "txtWorkingMode"}) {
        EXPECT_EQ(caption(text), "") << text;
    }
    EXPECT_EQ(caption("cmbResetError"), "Reset Error");
    EXPECT_EQ(caption("cmbConfiguration"), "ON");
    EXPECT_EQ(caption("txtPHASE"), "Initialization");
    EXPECT_EQ(caption("txtHU"), "HU 45%") << "the tube is as hot as it was";
}

TEST_F(ErrorsTest, APowerUpMakesNewsOfWhatWasReportedBefore) {
    for (const std::string_view report :
         {"FLA1",  "FLHD1",  "FLX1",  "FLM31",   "FLC11", "FLKS80", "FLTS12", "FLPS3",
          "KVT3",  "FI01",   "FS11",  "PH1",     "DA1",   "BR050",  "WS2",    "WM5",
          "KVS80", "MAS200", "MSS50", "MXS12.5", "FO11",  "FO21",   "HE45",   "ER5"}) {
        phase(2);
        const std::vector<std::string> news = eventsAfter(report);
        EXPECT_FALSE(news.empty()) << report;
        phase(1);
        phase(2);
        EXPECT_EQ(eventsAfter(report), news);
    }
}

class WarningsTest : public LinkTest {
protected:
    WarningsTest() {
        phase(2);
        for (const std::string_view message : {"KV80", "MX12.5", "MA200", "MS63", "TM3"}) {
            msg(message);
        }
        forget();
    }
    void darken() const {
        for (const std::string_view field : {"txtKVp", "txtMAS", "txtMA", "txtMS"}) {
            control(field).setCaption("");
        }
        control("cmbTM", 3).setBackColour(kNormalColour);
    }
    void expectAllFieldsShown() const {
        EXPECT_EQ(caption("txtKVp"), "80");
        EXPECT_EQ(caption("txtMAS"), "12.5");
        EXPECT_EQ(caption("txtMA"), "200");
        EXPECT_EQ(caption("txtMS"), "63");
        EXPECT_EQ(control("cmbTM", 3).backColour(), kActiveColour);
    }
    [[nodiscard]] bool running(PanelTimer timer) const { return link.timer(timer).running(); }
};

struct Warning {
    std::vector<int> codes;
    std::string_view flags; ///< kVp, mAs, mA, ms, technique mode
    bool passes;
};

// clang-format off
const Warning kWarnings[]{
    {{1, 9, 10},  "0, -1, 0, 0, 0",   true},
    {{2},         "-1, -1, 0, 0, 0",  true},
    {{3, 4, 12},  "-1, 0, 0, 0, 0",   true},
    {{5, 6},      "0, 0, -1, 0, 0",   true},
    {{7, 8},      "0, 0, 0, -1, 0",   true},
    {{11, 13},    "-1, 0, -1, 0, 0",  true},
    {{14},        "-1, 0, -1, -1, 0", true},
    {{15, 18},    "0, 0, 0, 0, 0",    true},
    {{16},        "0, -1, 0, 0, -1",  true},
    {{19, 20},    "0, 0, -1, -1, 0",  true},
    {{17, -3},    "0, 0, 0, 0, 0",    false},
};
// clang-format on

TEST_F(WarningsTest, EachCodeMarksItsFields) {
    const auto expectMarks = [this](const Warning& row, int number) {
        settle();
        forget();
        darken();
        const std::string code = decimalText(number);
        msg("WN" + code);
        expectAllFieldsShown();
        EXPECT_THAT(events, ElementsAre("WarningMessage(" + code + ", " + std::string(row.flags) + ")"));
        EXPECT_EQ(caption("lblWarning"), "Warning " + code);
        EXPECT_EQ(running("tmrWarning"), row.passes);
        const bool blinks = row.flags.find('-') != std::string_view::npos;
        EXPECT_EQ(running("tmrBlinking"), blinks);
        EXPECT_EQ(running("tmrBlinkingOff"), blinks);
        advance(500);
        // A flag and a dark field go together.
        std::string dark;
        for (const std::string_view field : {"txtKVp", "txtMAS", "txtMA", "txtMS"}) {
            dark += caption(field).empty() ? "-1, " : "0, ";
        }
        dark += control("cmbTM", 3).backColour() == kNormalColour ? "-1" : "0";
        EXPECT_EQ(dark, row.flags);
    };
    for (const Warning& row : kWarnings) {
        for (const int code : row.codes) {
            SCOPED_TRACE(code);
            expectMarks(row, code);
        }
    }
}

TEST_F(WarningsTest, AWarningPassesAfterThreeSeconds) {
    msg("WN15");
    advance(2000);
    msg("WN15");
    forget();
    advance(2999);
    EXPECT_EQ(caption("lblWarning"), "Warning 15");
    EXPECT_THAT(events, IsEmpty());
    advance(1);
    EXPECT_EQ(caption("lblWarning"), "");
    EXPECT_THAT(events, ElementsAre("WarningMessageReset()"));
    settle();
    EXPECT_EQ(events.size(), 1) << "it passes once";
    msg("WN15");
    msg("WN21"); // has no words
    EXPECT_EQ(caption("lblWarning"), "");
    EXPECT_EQ(events.back(), "NoDigitalWarning(True)");
}

TEST_F(WarningsTest, AWarningMakesNoValueNew) {
    ++link.silence().age.time; // a silence
    msg("WN3");
    advance(500);
    ASSERT_EQ(caption("txtKVp"), "");
    msg("WN15");
    expectAllFieldsShown();
    for (const std::string_view field : {"txtKVp", "txtMAS", "txtMA", "txtMS"}) {
        EXPECT_TRUE(control(field).old()) << field;
    }
}

TEST_F(WarningsTest, AValueThatArrivesWhileItsFieldIsDarkShowsAtOnce) {
    msg("WN3");
    advance(600);
    EXPECT_EQ(captionAfter("KV81", "txtKVp"), "81");
    advance(400);
    EXPECT_EQ(caption("txtKVp"), "81");
    advance(500);
    EXPECT_EQ(caption("txtKVp"), "");
    settle();
    EXPECT_EQ(caption("txtKVp"), "81");
}

} // namespace
} // namespace quillon
