#include "tests/unit/fluoro/PanelTest.h"

namespace quillon {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

using Texts = std::vector<std::string>;

class ExposureControlTest : public PanelTest {};

TEST_F(ExposureControlTest, DensityStepsAreCentredOnTheKeys) {
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
        receive({"MD" + each.maximum, "FN" + each.step + "1"});
        EXPECT_EQ(lit("cmbAECDensity"), each.keys);
        EXPECT_EQ(lit("cmbDAECDensity"), ".........");
        EXPECT_EQ(get<std::string>("AECDensity"), each.step);
        EXPECT_THAT(takeEvents(), ElementsAre("AECDensityChange(" + std::to_string(each.index) + ", True)"));
        msg("FN" + each.step + "0");
        EXPECT_EQ(lit("cmbAECDensity"), ".........");
        EXPECT_EQ(get<std::string>("AECDensity"), each.step);
        EXPECT_THAT(takeEvents(), ElementsAre("AECDensityChange(" + std::to_string(each.index) + ", False)"));
    }
}

TEST_F(ExposureControlTest, AStepOutsideTheKnownRangeAsksForIt) {
    msg("FN31");
    EXPECT_THAT(sentSoon(), ElementsAre("MD?", "AF"));
    receive({"MD4", "FN51"});
    EXPECT_THAT(sentSoon(), ElementsAre("MD?", "AF"));
    receive({"WM5", "FN01"});
    EXPECT_EQ(lit("cmbDAECDensity"), "..*......");
}

TEST_F(ExposureControlTest, ReportsThatFewGeneratorsSend) {
    const std::pair<std::string_view, Texts> rows[] = {
        {"AEC10", {}},
        {"AEC101", {"AECFieldChange(0, True)", "AECFieldChange(1, False)", "AECFieldChange(2, True)"}},
        {"FLMAS12", {"FlMAChangeDisplay(\"12\")"}},
        {"CAR1", {"AutocalRetry(True)"}},
        {"AT5", {"APRTechniqueWarning(\"5\")"}},
        {"ATx", {}},
    };
    for (const auto& [message, heard] : rows) {
        takeEvents();
        msg(message);
        EXPECT_EQ(takeEvents(), heard) << message;
    }
    EXPECT_EQ(caption("txtFlMA"), "12");
}

TEST_F(ExposureControlTest, BrightnessAndRoadMapping) {
    receive({"BR 12", "BRx", "BR40000"});
    EXPECT_EQ(caption("txtAECBrightness"), "12");
    EXPECT_EQ(caption("txtDAECBrightness"), "");
    receive({"RM1", "RM1", "RMx"});
    EXPECT_TRUE(get<bool>("Roadmapping"));
    EXPECT_THAT(takeEvents(), ElementsAre("Brightness(12)", "Roadmapping(True)", "Roadmapping(True)"));
    receive({"WM5", "BR7"});
    EXPECT_EQ(caption("txtDAECBrightness"), "7");
    msg("BR0");
    EXPECT_EQ(caption("txtAECBrightness") + caption("txtDAECBrightness"), "");
}

TEST_F(ExposureControlTest, CommandsConvertTheDensityAndRefuseWhatTheGeneratorLacks) {
    struct Row {
        std::int32_t maximum;
        std::string_view operation;
        std::vector<Value> arguments;
        Texts sent;
    };
    const std::vector<Row> rows{
        {8, "AECCommand", {true, false, true, 1000, 1000}, {"AEC101"}},
        {8, "AECCommandWithDefaults", {false, true, false}, {"AEC010"}},
        {5, "AECCommand", {true, false, false, 1, 4}, {"AEC10012"}}, // 2.5
        {5, "AECCommand", {true, false, false, 1, 5}, {"AEC10014"}}, // 3.5
        {8, "AECCommand", {false, false, false, 1000, 4}, {"AEC00010004"}},
        {8, "AECCommand", {false, false, false, 1, 1000}, {"AEC00011000"}},
        {8, "SetAECDensity", {8}, {"FN8"}},
        {8, "SetAECDensity", {9}, {}},
        {8, "SetAECDensity", {-1}, {}},
    };
    for (const Row& each : rows) {
        prepare({"ST2", "MD" + std::to_string(each.maximum)});
        link.operations().call(each.operation, each.arguments);
        EXPECT_THAT(sentSoon(), ElementsAreArray(each.sent)) << each.operation << each.maximum;
    }
}

TEST_F(ExposureControlTest, HostTellsTheRangeByItsHighestKey) {
    prepare({"ST2"});
    const auto taken = [this](std::int32_t highest, std::int32_t step) {
        put("MaxAECDensity", highest);
        call("SetAECDensity", {step});
        return !sentSoon().empty();
    };
    EXPECT_TRUE(taken(8, 8));
    EXPECT_TRUE(taken(6, 4));
    EXPECT_FALSE(taken(6, 5));
    EXPECT_FALSE(taken(3, 0));
    EXPECT_FALSE(link.operations().canGet("MaxAECDensity"));
}

TEST_F(ExposureControlTest, DensityStepsStopAtTheEndsOfTheRange) {
    prepare({"ST2", "MD4", "FN31"});
    call("AECDensityUp");
    EXPECT_THAT(sentSoon(), ElementsAre("FN4"));
    call("AECDensityUp");
    EXPECT_THAT(sentSoon(), ElementsAre("FN4"));
    call("AECDensityDown");
    EXPECT_THAT(sentSoon(), ElementsAre("FN3"));
    EXPECT_THAT(takeEvents(), IsEmpty());
    call("AECDensityUpLocal");
    call("AECDensityUpLocal");
    for (int step = 0; step < 5; ++step) {
        call("AECDensityDownLocal");
    }
    EXPECT_THAT(sentSoon(), IsEmpty());
    EXPECT_THAT(takeEvents(), ElementsAre("AECDensityChange(4, True)", "AECDensityChange(4, True)",
                                          "AECDensityChange(3, True)", "AECDensityChange(2, True)",
                                          "AECDensityChange(1, True)", "AECDensityChange(0, True)",
                                          "AECDensityChange(0, True)"));
}

} // namespace
} // namespace quillon
