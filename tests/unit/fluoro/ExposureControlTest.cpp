#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/unit/fluoro/LinkBench.h"

namespace quillon {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

using Texts = std::vector<std::string>;

/// Which of a row's keys are lit, one character a key.
std::string row(const LinkBench& bench, std::string_view name) {
    std::string lit;
    for (const Control* key : bench.link.all(name)) {
        lit.push_back(key->backColour() == kActiveColour ? '*' : '.');
    }
    return lit;
}

TEST(ExposureControlTest, DensityStepsAreCentredOnTheKeys) {
    struct Row {
        std::string maximum;
        std::string step;
        std::string_view keys;
        std::int32_t index;
    };
    // An odd range has no middle; a half goes to the even key.
    for (const Row& each :
         {Row{"8", "0", "*........", 0}, Row{"8", "4", "....*....", 4}, Row{"4", "0", "..*......", 2},
          Row{"4", "2", "....*....", 4}, Row{"5", "0", "..*......", 2}, Row{"5", "1", "..*......", 2},
          Row{"5", "2", "....*....", 4}, Row{"3", "1", "....*....", 4}, Row{"12", "9", ".......*.", 7},
          Row{"12", "0", ".........", -2}}) {
        SCOPED_TRACE(each.maximum + " " + each.step);
        LinkBench bench;
        bench.receive({"MD" + each.maximum, "FN" + each.step + "1"});
        EXPECT_EQ(row(bench, "cmbAECDensity"), each.keys);
        EXPECT_EQ(row(bench, "cmbDAECDensity"), ".........");
        EXPECT_EQ(bench.link.get<std::string>("AECDensity"), each.step);
        EXPECT_THAT(bench.takeEvents(),
                    ElementsAre("AECDensityChange " + std::to_string(each.index) + " True"));
        bench.receive("FN" + each.step + "0");
        EXPECT_EQ(row(bench, "cmbAECDensity"), ".........");
        EXPECT_EQ(bench.link.get<std::string>("AECDensity"), each.step);
        EXPECT_THAT(bench.takeEvents(),
                    ElementsAre("AECDensityChange " + std::to_string(each.index) + " False"));
    }
}

TEST(ExposureControlTest, DigitalModesLightTheTwinKeys) {
    LinkBench bench;
    bench.receive({"MD8", "WM5", "FN41", "FN51"});
    EXPECT_EQ(row(bench, "cmbAECDensity"), ".....*...");
    EXPECT_EQ(row(bench, "cmbDAECDensity"), "....**...");
    bench.receive("FN40");
    EXPECT_EQ(row(bench, "cmbAECDensity"), ".....*...");
    EXPECT_EQ(row(bench, "cmbDAECDensity"), ".....*...");
}

TEST(ExposureControlTest, DensityOfAnUnknownRangeAsksForIt) {
    LinkBench bench;
    bench.prepare({"ST2"});
    bench.receive({"FN41", "FN41"});
    EXPECT_THAT(bench.sentSoon(), ElementsAre("MD?", "AF"));
    bench.receive({"MD4", "MDx", "FN51"});
    EXPECT_THAT(bench.sentSoon(), ElementsAre("MD?", "AF"));
    bench.receive({"FN", "FNx1", "FN4x", "FN4", "FN 41"});
    EXPECT_THAT(bench.sentSoon(), IsEmpty());
    EXPECT_EQ(row(bench, "cmbAECDensity"), ".........");
    EXPECT_THAT(bench.takeEvents(), IsEmpty());
    EXPECT_EQ(bench.link.get<std::int32_t>("AECDensity"), 0);
}

TEST(ExposureControlTest, FieldsLightTheKeysOfThePageInUse) {
    LinkBench bench;
    const auto fields = [&bench] {
        return row(bench, "cmbAECFieldLeft") + row(bench, "cmbAECFieldCenter") +
               row(bench, "cmbAECFieldRight");
    };
    bench.receive({"AEC101", "AEC11", "AEC"});
    EXPECT_EQ(fields(), "*...*.");
    EXPECT_THAT(bench.takeEvents(),
                ElementsAre("AECFieldChange 0 True", "AECFieldChange 1 False", "AECFieldChange 2 True"));
    EXPECT_TRUE(bench.link.get<bool>("AECFieldLeft"));
    EXPECT_FALSE(bench.link.get<bool>("AECFieldCenter"));
    EXPECT_TRUE(bench.link.get<bool>("AECFieldRight"));

    bench.receive({"FI11", "FI00", "FI31", "FI41", "FI91", "FI", "FI1", "FIx1"});
    EXPECT_EQ(fields(), "..*.*.");
    EXPECT_THAT(bench.takeEvents(),
                ElementsAre("AECFieldChange 1 True", "AECFieldChange 0 False", "AECFieldChange 3 True"));
    bench.prepare({"ST8"});
    bench.receive({"FI01", "AEC0110", "AECx2x"});
    EXPECT_EQ(fields(), "..*.*.");
    bench.receive("FI21");
    EXPECT_EQ(fields(), "..*.**");
}

TEST(ExposureControlTest, FilmScreens) {
    LinkBench bench;
    const auto screen = [&bench] { return bench.link.get<std::int32_t>("AECFilmScreen"); };
    EXPECT_EQ(screen(), 0);
    bench.receive({"FS11", "FS11"});
    EXPECT_EQ(screen(), 1);
    bench.receive({"FS21", "FS31", "FS41", "FS", "FSx", "FS1"});
    EXPECT_EQ(screen(), 2);
    EXPECT_EQ(row(bench, "cmbAECFilmScreen"), ".**");
    EXPECT_THAT(bench.takeEvents(), ElementsAre("AECFilmScreenChange 1 True", "AECFilmScreenChange 1 True",
                                                "AECFilmScreenChange 2 True", "AECFilmScreenChange 3 True"));
    bench.receive({"FS20", "FS10"});
    EXPECT_EQ(screen(), 0);
    EXPECT_EQ(row(bench, "cmbAECFilmScreen"), "...");
}

TEST(ExposureControlTest, BrightnessAndRoadMapping) {
    LinkBench bench;
    bench.receive({"BR 12", "BRx", "BR40000"});
    EXPECT_EQ(bench.caption("txtAECBrightness"), "12");
    EXPECT_EQ(bench.caption("txtDAECBrightness"), "");
    bench.receive({"RM1", "RM1", "RMx"});
    EXPECT_TRUE(bench.link.get<bool>("Roadmapping"));
    EXPECT_THAT(bench.takeEvents(), ElementsAre("Brightness 12", "Roadmapping True", "Roadmapping True"));
    bench.receive({"WM5", "BR7"});
    EXPECT_EQ(bench.caption("txtDAECBrightness"), "7");
    bench.receive("BR0");
    EXPECT_EQ(bench.caption("txtAECBrightness") + bench.caption("txtDAECBrightness"), "");
}

TEST(ExposureControlTest, CommandsConvertTheDensityAndRefuseWhatTheGeneratorLacks) {
    struct Row {
        std::int32_t maximum;
        std::string_view operation;
        std::vector<Value> arguments;
        Texts sent;
    };
    const std::vector<Row> rows{
        {8, "AECCommand", {true, false, true, 1000, 1000}, {"AEC101"}},
        {8, "AECCommandWithDefaults", {false, true, false}, {"AEC010"}},
        {8, "AECCommand", {true, false, false, 1, 4}, {"AEC10014"}},
        {4, "AECCommand", {true, false, false, 1, 4}, {"AEC10012"}},
        {5, "AECCommand", {true, false, false, 1, 4}, {"AEC10012"}}, // 2.5
        {5, "AECCommand", {true, false, false, 1, 5}, {"AEC10014"}}, // 3.5
        {8, "AECCommand", {false, false, false, 1000, 4}, {"AEC00010004"}},
        {8, "AECCommand", {false, false, false, 1, 1000}, {"AEC00011000"}},
        {8, "SetAECDensity", {8}, {"FN8"}},
        {8, "SetAECDensity", {0}, {"FN0"}},
        {8, "SetAECDensity", {9}, {}},
        {8, "SetAECDensity", {-1}, {}},
        {4, "SetAECDensity", {5}, {}},
    };
    for (const Row& each : rows) {
        LinkBench bench;
        bench.prepare({"ST2", "MD" + std::to_string(each.maximum)});
        bench.link.operations().call(each.operation, each.arguments);
        EXPECT_THAT(bench.sentSoon(), ElementsAreArray(each.sent)) << each.operation << each.maximum;
    }
}

TEST(ExposureControlTest, HostTellsTheRangeByItsHighestKey) {
    LinkBench bench;
    bench.prepare({"ST2"});
    const auto sent = [&bench](std::int32_t highest, std::int32_t step) {
        bench.link.operations().set("MaxAECDensity", highest);
        bench.link.call("SetAECDensity", {step});
        return !bench.sentSoon().empty();
    };
    EXPECT_TRUE(sent(8, 8));
    EXPECT_TRUE(sent(6, 4));
    EXPECT_FALSE(sent(6, 5));
    EXPECT_FALSE(sent(3, 0));
    EXPECT_FALSE(bench.link.operations().canGet("MaxAECDensity"));
}

TEST(ExposureControlTest, DensityStepsStopAtTheEndsOfTheRange) {
    LinkBench bench;
    bench.prepare({"ST2", "MD4", "FN31"});
    bench.link.call("AECDensityUp");
    EXPECT_THAT(bench.sentSoon(), ElementsAre("FN4"));
    bench.link.call("AECDensityUp");
    EXPECT_THAT(bench.sentSoon(), ElementsAre("FN4"));
    bench.link.call("AECDensityDown");
    EXPECT_THAT(bench.sentSoon(), ElementsAre("FN3"));
    EXPECT_THAT(bench.takeEvents(), IsEmpty());
    bench.link.call("AECDensityUpLocal");
    bench.link.call("AECDensityUpLocal");
    for (int step = 0; step < 5; ++step) {
        bench.link.call("AECDensityDownLocal");
    }
    EXPECT_THAT(bench.sentSoon(), IsEmpty());
    EXPECT_THAT(bench.takeEvents(),
                ElementsAre("AECDensityChange 4 True", "AECDensityChange 4 True", "AECDensityChange 3 True",
                            "AECDensityChange 2 True", "AECDensityChange 1 True", "AECDensityChange 0 True",
                            "AECDensityChange 0 True"));
}

} // namespace
} // namespace quillon
