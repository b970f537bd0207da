#include "sim/Formats.h"
#include "tests/sim/Bench.h"

namespace simulator::test {
namespace {

TEST(Formats, FollowTheDisplays) {
    const std::pair<std::string, std::string_view> rows[] = {
        {millisecondsText(10000), "0000"},
        {milliampSecondsText(0.04), "0.04"},
        {milliampSecondsText(99.94), "99.9"},
        {milliampSecondsText(99.96), "100"},
        {doseText(1.23), "123-02"},
        {doseText(99999), "100+03"},
        {doseText(0), "000+00"},
        {postDisplayText(12.5, 0.5, 40), "0012.500040.0"},
        {postDisplayText(50, 500, 10000), "0050 50010000"},
    };
    for (const auto& [text, wanted] : rows) {
        EXPECT_EQ(text, wanted);
    }
    EXPECT_EQ(numberIn(" +12.5 "), 12.5);
    EXPECT_EQ(numberIn("-.5"), -0.5);
    EXPECT_EQ(numberIn("12a"), std::nullopt);
    EXPECT_EQ(numberIn("1e999"), std::nullopt);
}

TEST(Technique, StepsAndValues) {
    UpBench().play({{"KV+", "AK KV71"},
                    {"KV++", "AK KV76"},
                    {"KV 80", "AK KV80"},
                    {"MAU", "AK MA125 MXS12.5"},
                    {"MA 101", "AK MA100 MXS10.0"},
                    {"MS+", "AK MS125 MXS12.5"},
                    {"MS 50", "AK MS50 MXS5.0"},
                    {"MXU", "AK MX6.3 MSS63"},
                    {"MX012500", "AK MX12.5 MSS125"},
                    {"FO", "AK FO10 FO21"},
                    {"FOS1", "AK FO11 FO20"},
                    {"FO?", "AK FO11 FO20"}});
}

TEST(ExposureControl, FieldsDensityScreensAndSwitches) {
    UpBench().play({{"MD?", "AK MD8"},
                    {"FI1", "AK FI11"},
                    {"FI1", "AK FI10"},
                    {"FI3", ""},
                    {"AEC10016", "AK AEC100 FS10 FS11 FN40 FN61"},
                    {"FN9", ""},
                    {"FS2", "AK FS10 FS21"},
                    {"BR100", "AK BR100"},
                    {"BRD", "AK BR99"},
                    {"AF", "AK FI01 FI10 FI20 FS21 FN61 PH0 DA0 RM0 BR99"}});
}

TEST(Fluoroscopy, RunsCountsAndRaisesItsAlarm) {
    UpBench bench;
    bench.play({{"!fluoro on", "ST5 FLX1"},
                {"FLK++", ""}, // the wide step is for the pause
                {"FLKU", "AK FLK71"}});
    EXPECT_TRUE(holds(bench.wait(300'000), "FLAR1"));
    bench.play(
        {{"FLAR", "AK FLAR0"}, {"!fluoro off", "FLX0 FLT300 ST2"}, {"TC2", "AK TC2300"}, {"FLR", "AK FLT0"}});
}

TEST(Programs, AreTakenWholeAndAnsweredWithTheirMnemonic) {
    UpBench bench;
    bench.play({{"SAWS2FO0ET0FI100FS0FN4KV080MA00100MS00050",
                 "AK SA WS2 WM1 FO11 FO20 AEC100 FS10 FS01 FN40 FN41 KV80 MA100 MXS10.0 MS50 MXS5.0"}});
    EXPECT_TRUE(
        holds(bench.ask("SEWS1FO1AEC1BR050RM0KV090MA00200MS00020FLK085FLP15ABC1FLHD0FLC1KVT0"), "FLK85"));
    EXPECT_EQ(bench.ask("SBWS1FLK080FLP05ABC1FLHD0FLC1KVT0").back(), "AT1") << "there is no rate of 5";
    bench.play({{"SAWS1XX1", ""}, {"SAWSKV080", ""}, {"SA", ""}, {"KV?", "AK KV90"}});
}

} // namespace
} // namespace simulator::test
