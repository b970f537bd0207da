#include "model/Technique.h"

#include "tests/unit/model/LinkFixture.h"

namespace quillon {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TechniqueTest : public LinkTest {
protected:
    /// Into autocalibration, as the generator reports it.
    void autocalibration(std::string_view item) {
        phase(2);
        phase(6);
        msg(item);
        phase(9);
        msg("CAU1");
        forget();
    }
    [[nodiscard]] bool focusKeysShown() const {
        EXPECT_EQ(visible("lblFocusCal"), visible("txtFocusCal"));
        EXPECT_EQ(visible("lblFocusCal"), visible("cmbToggleFocusCal"));
        return visible("lblFocusCal");
    }
};

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

TEST_F(TechniqueTest, AnExposureKeepsTheFieldsOfNormalOperation) {
    phase(2);
    for (const int exposing : {3, 4, 5}) {
        phase(exposing);
        const std::string text = decimalText(80 + exposing);
        EXPECT_EQ(captionAfter("KV" + text, "txtKVp"), text);
    }
}

TEST_F(TechniqueTest, NoEventIsRaisedWhileEventsAreOff) {
    phase(2);
    link.setEventEnabled(false);
    for (const Routed& row : kRouted) {
        EXPECT_EQ(captionAfter(row.message, row.normal), row.shown);
    }
    for (const std::string_view message : {"TM1", "PD00123.450010", "HCF1", "TA1"}) {
        msg(message);
    }
    EXPECT_THAT(events, IsEmpty());
}

struct Number {
    std::string_view wire;
    std::string_view text; ///< what is kept and shown
    int kvp;               ///< -7: the number before stays
    double ma;
};

// clang-format off
const Number kNumbers[]{
    {"-0.5",     "-0.5",   0,     -0.5},
    {"12.5",     "12.5",   12,    12.5},
    {"13.5",     "13.5",   14,    13.5},
    {"32767.5",  "32767.5", -7,   32767.5},
    {"32768",    "32768",  -7,    32768},
    {"1e3",      "1e3",    1000,  1000},
    {"  0080 ",  "0080 ",  80,    80},
};
// clang-format on

TEST_F(TechniqueTest, NumbersAreRoundedToTheirTypeAndTextsShownAsTheyCame) {
    phase(2);
    for (const Number& row : kNumbers) {
        SCOPED_TRACE(row.wire);
        msg("KV-7");
        forget();
        control("txtKVp").setCaption("?");
        msg("KV" + std::string(row.wire));
        EXPECT_EQ(get<std::string>("KVPDisplay"), row.text);
        EXPECT_EQ(get<int>("KVP"), row.kvp);
        // A number that does not fit ends the handler before anything is shown.
        const bool fits = row.kvp != -7;
        EXPECT_EQ(caption("txtKVp"), fits ? row.text : "?");
        EXPECT_EQ(events.size(), fits ? 1 : 0);

        msg("MA" + std::string(row.wire));
        EXPECT_EQ(get<double>("mA"), row.ma);
        EXPECT_EQ(caption("txtMA"), row.text);
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
        for (const std::string_view mnemonic : {"KV", "MA", "MS", "MX"}) {
            msg(std::string(mnemonic) + std::string(text));
        }
        EXPECT_THAT(events, IsEmpty());
        EXPECT_EQ(caption("txtKVp"), "80");
        EXPECT_EQ(get<std::string>("KVPDisplay"), kept);
        EXPECT_EQ(get<std::string>("MADisplay"), kept);
        EXPECT_EQ(get<std::string>("MSDisplay"), "50");
        EXPECT_EQ(get<std::string>("MASDisplay"), "120");

        for (const std::string_view mnemonic : {"MSS", "MXS"}) {
            msg(std::string(mnemonic) + std::string(text));
        }
        EXPECT_EQ(caption("txtMS"), kept);
        EXPECT_EQ(caption("txtMAS"), kept);
        EXPECT_EQ(get<double>("ms"), 0);
        EXPECT_EQ(get<double>("MAS"), 0);
        EXPECT_EQ(events.size(), 2);
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
        // A blank in front makes the text another one.
        msg(std::string(mnemonic) + " 77");
        EXPECT_EQ(events.size(), 2);
        forget();
    }
    msg("MXS7.0");
    msg("MXS7.0");
    EXPECT_EQ(events.size(), 2);

    // The same text in the fields of calibration, and on the way back, where another one stood.
    phase(6);
    forget();
    EXPECT_EQ(captionAfter("MSS 77", "txtMSCal"), "77");
    EXPECT_EQ(captionAfter("MSS77", "txtMSCal"), "77");
    EXPECT_EQ(captionAfter("MASE01", "txtMACal"), "E01");
    EXPECT_EQ(captionAfter("MASE01", "txtMACal"), "E01");
    EXPECT_THAT(events, ElementsAre("CalibrationParameters(1)"));
    phase(9);
    EXPECT_EQ(captionAfter("KVS81", "txtKVPCal"), "81");
    control("txtKVPCal").setCaption("");
    EXPECT_EQ(captionAfter("KVS81", "txtKVPCal"), "81");
}

TEST_F(TechniqueTest, TheRangeOfAParameterEndsWithIt) {
    platform.folder.put("temp.ini", "[Extended]\r\nE03=255\r\n");
    call("ReadInitConfiguration");
    Control& slider = control("sldCalValue");
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
    phase(9);
    phase(2);
    phase(6);
    forget();
    msg("MASE02");
    EXPECT_THAT(events, ElementsAre("CalibrationParameters(2)")) << "forgotten meanwhile, so it is news";
}

TEST_F(TechniqueTest, FourZerosAreTenSeconds) {
    phase(2);
    for (const std::string_view message : {"MS0000", "MSS0000"}) {
        msg("MS1");
        EXPECT_EQ(captionAfter(message, "txtMS"), "10000");
        EXPECT_EQ(get<double>("ms"), 10000);
    }
    EXPECT_EQ(events.back(), "MSChangeDisplay(\"10000\")");
    EXPECT_EQ(captionAfter("KV0000", "txtKVp"), "0000");
}

TEST_F(TechniqueTest, SmallMAsValuesCarryAPoint) {
    struct Row {
        std::string_view argument;
        bool taken;
    };
    for (const std::string_view mnemonic : {"MX", "MXS"}) {
        phase(2);
        for (const Row row : {Row{"50", false}, Row{"50.0", true}, Row{"99", false}, Row{"100", true},
                              Row{"120", true}, Row{"-5", false}, Row{"8.", true}, Row{"1e1", false}}) {
            SCOPED_TRACE(std::string(mnemonic) + std::string(row.argument));
            msg("MX777");
            forget();
            msg(std::string(mnemonic) + std::string(row.argument));
            EXPECT_EQ(get<std::string>("MASDisplay"), row.taken ? row.argument : "");
            EXPECT_EQ(get<double>("MAS"), row.taken ? toDouble(row.argument) : 0);
            EXPECT_EQ(caption("txtMAS"), row.taken ? row.argument : "777");
            EXPECT_EQ(events.size(), row.taken ? 1 : 0);
        }
        phase(6);
        EXPECT_EQ(captionAfter(std::string(mnemonic) + "50", "txtMASCal"), "50");
    }
}

TEST_F(TechniqueTest, TheFocusFieldFollowsBothReports) {
    phase(2);
    control("txtFocus").setCaption("?");
    EXPECT_EQ(captionAfter("FO10", "txtFocus"), "?") << "nothing is known of the other focus";
    EXPECT_EQ(captionAfter("FO21", "txtFocus"), "LARGE");
    EXPECT_EQ(captionAfter("FO10", "txtFocus"), "LARGE");
    EXPECT_EQ(captionAfter("FO20", "txtFocus"), "");
    EXPECT_EQ(captionAfter("FO11", "txtFocus"), "SMALL");
    EXPECT_THAT(eventsAfter("FO1x"), IsEmpty());
    msg("FO12");
    EXPECT_THAT(events, ElementsAre("SmallFocusChange(2)"));
    EXPECT_EQ(caption("txtFocus"), "") << "a focus is selected by 1 only";
}

TEST_F(TechniqueTest, AnUnknownFocusReadsAsSelectedAndIsNotAskedFor) {
    phase(2);
    EXPECT_TRUE(get<bool>("SmallFocus"));
    put("Focus", 0);
    msg("FO11");
    put("Focus", 0);
    settle();
    EXPECT_THAT(sent, IsEmpty());

    msg("FO20");
    EXPECT_FALSE(get<bool>("LargeFocus"));
    put("Focus", 1);
    settle();
    EXPECT_THAT(sent, ElementsAre("FO"));
    link.setHandshaking(true);
    put("numretries", 1);
    put("Focus", 5);
    msg("FO10");
    put("Focus", 0);
    settle();
    EXPECT_THAT(sent, ElementsAre("FO", "FOS2", "FOS1", ""));
}

TEST_F(TechniqueTest, TheTechniqueKeysShowFromTheSecondReportOn) {
    phase(2);
    msg("TM1");
    EXPECT_FALSE(control("cmbTM", 0).visible());
    EXPECT_FALSE(visible("lblWarning"));
    msg("TM3");
    EXPECT_TRUE(control("cmbTM", 0).visible());
    EXPECT_TRUE(visible("lblWarning"));
    EXPECT_EQ(control("cmbTM", 3).backColour(), kActiveColour);
    EXPECT_EQ(control("cmbTM", 1).backColour(), kNormalColour);
    EXPECT_EQ(get<int>("TechniqueMode"), 3);
    EXPECT_THAT(events, ElementsAre("TMChangeValue(1)", "TMChangeValue(3)"));

    forget();
    for (const int service : {6, 8, 9}) {
        phase(service);
        msg("TM0");
        EXPECT_THAT(events, IsEmpty());
        EXPECT_EQ(get<int>("TechniqueMode"), 3);
    }
}

TEST_F(TechniqueTest, UsersOfALentMachineDoNotSeeTheTechniqueKeys) {
    phase(6);
    put("TempUserMode", true);
    phase(2);
    msg("TM1");
    control("cmbTM", 2).setVisible(false);
    msg("TM2");
    EXPECT_FALSE(control("cmbTM", 2).visible());
    EXPECT_EQ(control("cmbTM", 2).backColour(), kActiveColour);
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
}

TEST_F(TechniqueTest, ThePostDisplayIsCutAtFixedPlaces) {
    struct Row {
        std::string_view argument;
        std::string_view event;
    };
    // clang-format off
    const Row rows[]{
        {"0012 8.500100", "PostDisplay(\"12\", \"100\", \" 8.5\")"},
        {"12.5.25000012", "PostDisplay(\"12.5\", \"12\", \"0.250\")"},
        {"0012xxxx00010", "PostDisplay(\"12\", \"10\", \"xxxx\")"},
    };
    // clang-format on
    for (const Row& row : rows) {
        EXPECT_THAT(eventsAfter("PD" + std::string(row.argument)), ElementsAre(row.event));
    }
    for (const std::string_view broken : {"", "0012", "xx1212.500100", "001212.5"}) {
        EXPECT_THAT(eventsAfter("PD" + std::string(broken)), IsEmpty()) << broken;
    }
}

TEST_F(TechniqueTest, FlagsArePassedOn) {
    for (const std::string_view message : {"HCF1", "HCF0", "HCF", "HCF00", "TA1", "TA0"}) {
        msg(message);
    }
    EXPECT_THAT(events, ElementsAre("HCFmodeChange(True)", "HCFmodeChange(False)", "HCFmodeChange(True)",
                                    "HCFmodeChange(True)", "TomoAutoChange(True)", "TomoAutoChange(False)"));
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

TEST_F(TechniqueTest, CalibrationItemsNameAStationOrAParameter) {
    // Parameter n has the range of the entry with the index n, which is the key one further on.
    platform.folder.put("temp.ini", "[Extended]\r\nE02=200\r\nE03=255\r\nE04=1023\r\nE07=4095\r\n");
    call("ReadInitConfiguration");
    phase(2);
    phase(6);
    struct Row {
        std::string_view item;
        std::string_view field;
        int type;
        int parameter;
        int range; ///< 0: the slider is hidden
        bool focusKeys;
    };
    // clang-format off
    const Row rows[]{
        {"E01",   "E01",  1,  1,  200, true},
        {"E02",   "E02",  1,  2,  255, false},
        {"E06",   "E06",  2,  6, 4095, false},
        {"E03x9", "E03",  1,  3, 1023, false},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.item);
        forget();
        control("txtKVPCal").setCaption("?");
        control("cmbCalFocusSet").setVisible(true);
        EXPECT_EQ(captionAfter("MAS" + std::string(row.item), "txtMACal"), row.field);
        EXPECT_EQ(caption("txtKVPCal"), "");
        EXPECT_EQ(get<std::string>("MADisplay"), row.field);
        EXPECT_EQ(get<int>("CalibrationType"), row.type);
        EXPECT_EQ(get<int>("CalibrationParameter"), row.parameter);
        EXPECT_EQ(visible("sldCalValue"), row.range != 0);
        if (row.range != 0) {
            EXPECT_EQ(control("sldCalValue").maximum(), row.range);
        }
        EXPECT_EQ(focusKeysShown(), row.focusKeys);
        EXPECT_EQ(visible("cmbCalFocusSet"), row.focusKeys);
        EXPECT_THAT(events, ElementsAre("CalibrationParameters(" + decimalText(row.parameter) + ")"));
    }

    // Both a plain number on the display and a plain value lead back to a station.
    EXPECT_EQ(captionAfter("MAS2500", "txtMACal"), "250");
    EXPECT_EQ(get<int>("CalibrationType"), 0);
    EXPECT_TRUE(focusKeysShown());
    EXPECT_TRUE(visible("sldCalValue"));

    msg("MASE05");
    link.setEventEnabled(false);
    forget();
    msg("MA100");
    msg("MA100");
    EXPECT_THAT(events, ElementsAre("CalibrationMA()")) << "once, and whether events are on or not";
    EXPECT_EQ(get<int>("CalibrationType"), 0);
    EXPECT_TRUE(focusKeysShown());
    EXPECT_TRUE(visible("sldCalValue"));
}

TEST_F(TechniqueTest, ABrokenCalibrationItemEndsItsMessage) {
    phase(2);
    phase(6);
    msg("MAS100");
    forget();
    for (const std::string_view item : {"E", "Exy", "E-1"}) {
        msg("MAS" + std::string(item));
        EXPECT_EQ(get<int>("CalibrationType"), 0) << item;
        EXPECT_EQ(caption("txtMACal"), "100") << item;
    }
    EXPECT_THAT(events, IsEmpty());
}

TEST_F(TechniqueTest, CalibrationItemsAreNamedInManualCalibrationOnly) {
    for (const int other : {1, 8, 9}) {
        msg("ST1");
        phase(other);
        EXPECT_EQ(captionAfter("MASE06", "txtMACal"), "E06");
        EXPECT_EQ(captionAfter("MA100", "txtMACal"), "100");
        EXPECT_EQ(get<int>("CalibrationType"), -1);
    }
    EXPECT_THAT(events, IsEmpty());
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

TEST_F(TechniqueTest, TheKVpDisplayTellsTheProgressOfAStationsAutocalibration) {
    autocalibration("MAS100");
    struct Row {
        int number;
        std::string_view info;
    };
    for (const Row& row : {Row{5, "Exposure: 5"}, Row{10, "Exposure: 10"}, Row{11, ""}, Row{100, ""},
                           Row{150, ""}, Row{151, "Fil. Current: 151"}, Row{160, "Fil. Current: 160"}}) {
        control("txtInfo").setCaption("");
        EXPECT_EQ(captionAfter("KVS" + decimalText(row.number), "txtInfo"), row.info);
        EXPECT_EQ(caption("txtKVPCal"), "");
    }
    for (const int end : {12, 13}) {
        phase(end);
        EXPECT_EQ(captionAfter("KVS" + decimalText(end - 10), "txtInfo"), "");
    }
    EXPECT_THAT(events, IsEmpty());
}

TEST_F(TechniqueTest, TheKVpDisplayOfAParametersAutocalibration) {
    autocalibration("MASE05");
    EXPECT_EQ(captionAfter("KVS70", "txtKVPCal"), "") << "a parameter has no kVp to show";
    autocalibration("MASE06");
    EXPECT_EQ(captionAfter("KVS71", "txtKVPCal"), "71");
    EXPECT_EQ(captionAfter("KVS--", "txtKVPCal"), "71");
    EXPECT_EQ(captionAfter("KVS", "txtKVPCal"), "");
    EXPECT_EQ(caption("txtInfo"), "");
    msg("CAU0");
    EXPECT_EQ(captionAfter("KVS72", "txtKVPCal"), "72") << "no autocalibration is running";
}

TEST_F(TechniqueTest, TheStationsKVpStaysAwayOnceAnAutocalibrationWasAskedFor) {
    phase(2);
    phase(6);
    msg("KV80");
    call("ToggleAutocalibrationFeature");
    EXPECT_EQ(captionAfter("KV40", "txtKVPCal"), "80");
    EXPECT_EQ(get<int>("KVP"), 40);
}

} // namespace
} // namespace quillon
