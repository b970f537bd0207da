#include "model/Technique.h"

#include "link/LinkSilence.h"
#include "tests/unit/model/LinkFixture.h"

namespace quillon {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using TechniqueTest = LinkTest;

struct Routed {
    std::string_view message;
    std::string_view normal;
    std::string_view service;
    std::string_view shown;
    std::vector<int> normalPhases;
    std::vector<int> servicePhases;
    std::string_view event;
};

// clang-format off
const Routed kRouted[]{
    {"KV80",    "txtKVp",   "txtKVPCal",   "80",   {1, 2}, {6, 8, 9},    "KVPChangeValue(\"80\")"},
    {"KVS81",   "txtKVp",   "txtKVPCal",   "81",   {2},    {9},          "KVPChangeDisplay(\"81\")"},
    {"MA200",   "txtMA",    "txtMACal",    "200",  {2},    {1, 6, 8, 9}, "MAChangeValue(\"200\")"},
    {"MAS201",  "txtMA",    "txtMACal",    "201",  {2},    {1, 6, 8, 9}, "MAChangeDisplay(\"201\")"},
    {"MS50",    "txtMS",    "txtMSCal",    "50",   {1, 2}, {6, 8, 9},    "MSChangeValue(\"50\")"},
    {"MSS51",   "txtMS",    "txtMSCal",    "51",   {2},    {1, 6, 8, 9}, "MSChangeDisplay(\"51\")"},
    {"MX12.5",  "txtMAS",   "txtMASCal",   "12.5", {1, 2}, {6, 8, 9},    "MASChangeValue(\"12.5\")"},
    {"MXS12.6", "txtMAS",   "txtMASCal",   "12.6", {1, 2}, {6, 8, 9},    "MASChangeDisplay(\"12.6\")"},
    {"FO11",    "txtFocus", "txtFocusCal", "SMALL",{1, 2}, {6, 8, 9},    "SmallFocusChange(1)"},
    {"FO21",    "txtFocus", "txtFocusCal", "LARGE",{1, 2}, {6, 8, 9},    "LargeFocusChange(1)"},
};
// clang-format on

TEST_F(TechniqueTest, ReportsGoToTheFieldsOfTheOperatingPhase) {
    for (const int operating : {1, 2, 6, 8, 9}) {
        for (const Routed& row : kRouted) {
            SCOPED_TRACE(testing::Message() << row.message << " in phase " << operating);
            msg("ST1");
            phase(operating);
            control(row.normal).setCaption("?");
            control(row.service).setCaption("?");
            msg(row.message);
            const auto in = [operating](const std::vector<int>& phases) {
                return std::find(phases.begin(), phases.end(), operating) != phases.end();
            };
            EXPECT_EQ(caption(row.normal), in(row.normalPhases) ? row.shown : "?");
            EXPECT_EQ(caption(row.service), in(row.servicePhases) ? row.shown : "?");
            const auto raised = std::find(events.begin(), events.end(), row.event) != events.end();
            EXPECT_EQ(raised, in(row.normalPhases));
        }
    }
}

TEST_F(TechniqueTest, TextsThatAreNoNumbers) {
    phase(2);
    for (const std::string_view text : {"", "   ", "---", "1.2.3"}) {
        SCOPED_TRACE(text);
        for (const std::string_view number : {"KV80", "MA200", "MS50", "MX120"}) {
            msg(number);
        }
        forget();
        const std::string kept(text == "   " ? "" : text);
        for (const std::string_view mnemonic : {"KV", "MA", "MS", "MX", "MSS", "MXS"}) {
            msg(std::string(mnemonic) + std::string(text));
        }
        EXPECT_EQ(events.size(), 2) << "a display is shown whatever it says";
        EXPECT_EQ(caption("txtKVp"), "80");
        EXPECT_EQ(get<std::string>("KVPDisplay"), kept);
        EXPECT_EQ(get<std::string>("MADisplay"), kept);
        EXPECT_EQ(caption("txtMS"), kept);
        EXPECT_EQ(caption("txtMAS"), kept);
        EXPECT_EQ(get<double>("ms"), 0);
        EXPECT_EQ(get<double>("MAS"), 0);
    }
}

TEST_F(TechniqueTest, ADisplayThatRepeatsTheStoredTextIsShownAgainAndIsNoNews) {
    phase(2);
    for (const auto& [mnemonic, field] : {std::pair{"KVS", "txtKVp"}, {"MAS", "txtMA"}, {"MSS", "txtMS"}}) {
        SCOPED_TRACE(mnemonic);
        const std::string message = std::string(mnemonic) + "77";
        msg(message);
        control(field).setCaption("");
        EXPECT_EQ(captionAfter(message, field), "77");
        EXPECT_EQ(events.size(), 1);
        // With a blank before it the text is not the stored one, so it is reported.
        msg(std::string(mnemonic) + " 77");
        EXPECT_EQ(events.size(), 2);
        forget();
    }
    // The same text in the fields of calibration, and on the way back, where another one stood.
    phase(6);
    forget();
    EXPECT_EQ(captionAfter("MSS 77", "txtMSCal"), "77");
    EXPECT_EQ(captionAfter("MSS77", "txtMSCal"), "77");
    EXPECT_EQ(captionAfter("MASE01", "txtMACal"), "E01");
    EXPECT_EQ(captionAfter("MASE01", "txtMACal"), "E01");
    EXPECT_THAT(events, ElementsAre("CalibrationParameters(1)"));
}

TEST_F(TechniqueTest, WhatIsSaidAgainBehindASilenceIsNewAndPaintedOnce) {
    struct Painter : ChangeSink {
        void controlChanged(Control& control) override { painted.push_back(control.name()); }
        void controlAdded(Control& /*control*/) override {}
        void controlRemoved(Control& /*control*/) override {}
        std::vector<std::string> painted;
    } painter;
    phase(6);
    link.setSink(&painter);
    for (const auto& [report, field] : {std::pair{"MA100", "txtMACal"}, {"CV0100", "sldCalValue"}}) {
        msg(report);
        ++link.silence().age.time;
        EXPECT_TRUE(control(field).old()) << field;
        painter.painted.clear();
        msg(report);
        msg(report);
        EXPECT_FALSE(control(field).old()) << field;
        EXPECT_EQ(std::count(painter.painted.begin(), painter.painted.end(), field), 1) << field;
    }
    link.setSink(nullptr);
}

TEST_F(TechniqueTest, AFocusThatGoesLeavesTheFieldToTheOther) {
    phase(2);
    for (const auto& [report, shown] :
         {std::pair{"FO11", "SMALL"}, {"FO20", "SMALL"}, {"FO10", ""}, {"FO21", "LARGE"}}) {
        EXPECT_EQ(captionAfter(report, "txtFocus"), shown) << report;
    }
}

TEST_F(TechniqueTest, TheRangeOfAParameterEndsWithIt) {
    platform.folder.put("temp.ini", "[Extended]\r\nE01=63\r\nE03=255\r\nE100=127\r\n");
    call("ReadInitConfiguration");
    Control& slider = control("sldCalValue");
    phase(6);
    for (const auto& [parameter, range] : {std::pair{"MASE02", 255}, {"MASE00", 63}, {"MASE99", 127}}) {
        msg(parameter);
        EXPECT_EQ(slider.maximum(), range) << parameter;
        EXPECT_LE(slider.value(), range) << parameter;
        slider.setValue(range);
    }
    for (const auto& [item, shown] : {std::pair{"MASE04", false}, {"MA100", true}}) {
        msg(item);
        EXPECT_EQ(slider.visible(), shown) << item;
    }
    const auto toParameter = [&] {
        phase(2);
        phase(6);
        msg("MASE02");
        EXPECT_EQ(slider.maximum(), 255);
    };
    for (const std::string_view end : {"MA100", "MAS100", "MASE03", "ST1", "ST2", "ST8"}) {
        toParameter();
        msg(end);
        EXPECT_EQ(slider.maximum(), 4095) << end;
    }
    put("CalibrationDataSize", 10);
    toParameter();
    // A value of the station that comes before the station itself is not cut off by the range.
    msg("CV310");
    EXPECT_EQ(slider.toolTip(), "255");
    msg("MA100");
    EXPECT_EQ(slider.maximum(), 1023) << "as the host has told it";
    EXPECT_EQ(slider.toolTip(), "310");
    forget();
    slider.on.release();
    settle();
    EXPECT_THAT(sent, ElementsAre("CV0310"));
    msg("MASE02");
    EXPECT_EQ(slider.toolTip(), "255") << "the narrower range has moved it";
}

TEST_F(TechniqueTest, TheTechniqueModeIsAskedForOnlyWhereThereIsOne) {
    phase(2);
    call("TMReq");
    settle();
    EXPECT_THAT(sent, IsEmpty());
    platform.folder.put("temp.ini", "[TM]\r\nTM=0\r\n");
    call("ReadInitConfiguration");
    call("TMReq");
    put("TechniqueMode", 2);
    settle();
    EXPECT_THAT(sent, ElementsAre("TM?", "TM2"));
    EXPECT_EQ(get<int>("TechniqueMode"), 0) << "the mode is the generator's to say";
    EXPECT_FALSE(link["lblWarning"].visible());
    msg("TM1");
    EXPECT_TRUE(link["lblWarning"].visible());
    for (const Control* key : link.all("cmbTM")) {
        EXPECT_TRUE(key->visible());
        EXPECT_EQ(key->backColour() == kActiveColour, key->index() == 1);
    }
}

TEST_F(TechniqueTest, WrittenValuesAreSentInTheirForms) {
    struct Row {
        std::string_view property;
        Value value;
        std::string_view frame;
    };
    // clang-format off
    const Row rows[]{
        {"KVP", 80,     "KV 80"},
        {"KVP", -3,     "KV-3"},
        {"mA",  0.5,    "MA .5"},
        {"ms",  -0.5,   "MS-.5"},
        {"MAS", 12.5,   "MX012500"},
        {"MAS", 0.0005, "MX000000"},
        {"MAS", 0.0015, "MX000002"},
        {"FlKVP", 70,   "FLK070"},
    };
    // clang-format on
    phase(2);
    for (const Row& row : rows) {
        forget();
        put(row.property, row.value);
        EXPECT_EQ(get<double>(row.property), valueTo<double>(row.value));
        settle();
        EXPECT_THAT(sent, ElementsAre(row.frame));
    }
}

TEST_F(TechniqueTest, TheKvpOfAStationThatIsAutocalibratedCountsExposuresAndTellsTheFilament) {
    for (const std::string_view report : {"ST2", "ST6", "MA100", "CAU1", "ST9"}) {
        msg(report);
    }
    for (const auto& [kVp, told] : {std::pair{"10", "Exposure: 10"},
                                    {"11", "Exposure: 10"},
                                    {"150", "Exposure: 10"},
                                    {"151", "Fil. Current: 151"}}) {
        EXPECT_EQ(captionAfter(std::string("KVS") + kVp, "txtInfo"), told) << kVp;
    }
}

TEST_F(TechniqueTest, SomeParametersKeepTheirSliderInAutocalibration) {
    for (const std::string_view item : {"MASE03", "MASE05", "MASE21", "MASE04", "MASE06", "MASE3"}) {
        SCOPED_TRACE(item);
        msg("ST1");
        phase(2);
        phase(6);
        msg(item);
        control("sldCalValue").setVisible(false);
        phase(9);
        const bool keeps = item == "MASE03" || item == "MASE05" || item == "MASE21";
        EXPECT_EQ(visible("sldCalValue"), keeps);
        phase(6);
        EXPECT_FALSE(visible("sldCalValue"));
    }
}

} // namespace
} // namespace quillon
