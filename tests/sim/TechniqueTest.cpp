#include "sim/Formats.h"
#include "tests/sim/Bench.h"

namespace simulator::test {
namespace {

TEST(Formats, FollowTheDisplays) {
    EXPECT_EQ(millisecondsText(10000), "0000");
    EXPECT_EQ(millisecondsText(62.5), "62.5");
    EXPECT_EQ(milliampSecondsText(0.04), "0.04");
    EXPECT_EQ(milliampSecondsText(8), "8.0");
    EXPECT_EQ(milliampSecondsText(99.94), "99.9");
    EXPECT_EQ(milliampSecondsText(99.96), "100");
    EXPECT_EQ(milliampSecondsText(120), "120");
    EXPECT_EQ(doseText(34.5), "345-01");
    EXPECT_EQ(doseText(1.23), "123-02");
    EXPECT_EQ(doseText(99999), "100+03");
    EXPECT_EQ(doseText(0), "000+00");
    EXPECT_EQ(postDisplayText(12.5, 0.5, 40), "0012.500040.0");
    EXPECT_EQ(postDisplayText(100, 5, 50), "01005.00050.0");
    EXPECT_EQ(postDisplayText(640, 320, 500), "0640 320500.0");
    EXPECT_EQ(postDisplayText(50, 500, 10000), "0050 50010000");
    EXPECT_EQ(numberIn(" +12.5 "), 12.5);
    EXPECT_EQ(numberIn("-.5"), -0.5);
    EXPECT_EQ(numberIn("12a"), std::nullopt);
    EXPECT_EQ(numberIn("1e999"), std::nullopt);
}

struct Exchange {
    std::string_view sent;
    Lines back;
};

void expectExchanges(Bench& bench, std::initializer_list<Exchange> exchanges) {
    for (const Exchange& exchange : exchanges) {
        EXPECT_EQ(bench.ask(exchange.sent), exchange.back) << exchange.sent;
    }
}

TEST(Technique, StepsAndValues) {
    UpBench bench;
    expectExchanges(bench, {{"KV+", {"AK", "KV71"}},
                            {"KV++", {"AK", "KV76"}},
                            {"KVD", {"AK", "KV75"}},
                            {"KV 80", {"AK", "KV80"}},
                            {"MAU", {"AK", "MA125", "MXS12.5"}},
                            {"MA 101", {"AK", "MA100", "MXS10.0"}},
                            {"MS+", {"AK", "MS125", "MXS12.5"}},
                            {"MS 50", {"AK", "MS50", "MXS5.0"}},
                            {"MXU", {"AK", "MX6.3", "MSS63"}},
                            {"MX012500", {"AK", "MX12.5", "MSS125"}},
                            {"MX?", {"AK", "MX12.5"}},
                            {"FO", {"AK", "FO10", "FO21"}},
                            {"FOS1", {"AK", "FO11", "FO20"}},
                            {"FOS3", {}},
                            {"FO?", {"AK", "FO11", "FO20"}}});
}

TEST(ExposureControl, FieldsDensityScreensAndSwitches) {
    UpBench bench;
    expectExchanges(bench,
                    {{"MD?", {"AK", "MD8"}},
                     {"FI1", {"AK", "FI11"}},
                     {"FI11", {"AK", "FI11"}},
                     {"FI1", {"AK", "FI10"}},
                     {"FI3", {}},
                     {"AEC101", {"AK", "AEC101"}},
                     {"AEC10016", {"AK", "AEC100", "FS10", "FS11", "FN40", "FN61"}},
                     {"AEC10", {}},
                     {"FI?", {"AK", "FI01", "FI10", "FI20"}},
                     {"FN9", {}},
                     {"FN?", {"AK", "FN61"}},
                     {"FS2", {"AK", "FS10", "FS21"}},
                     {"FS?", {"AK", "FS21"}},
                     {"PH", {"AK", "PH1"}},
                     {"PH", {"AK", "PH0"}},
                     {"DA1", {"AK", "DA1"}},
                     {"BR100", {"AK", "BR100"}},
                     {"BR++", {"AK", "BR100"}},
                     {"BRD", {"AK", "BR99"}},
                     {"RM1", {"AK", "RM1"}},
                     {"AF", {"AK", "FI01", "FI10", "FI20", "FS21", "FN61", "PH0", "DA1", "RM1", "BR99"}}});
}

TEST(Fluoroscopy, RunsCountsAndRaisesItsAlarm) {
    UpBench bench;
    EXPECT_EQ(bench.after("fluoro on", 100), (Lines{"ST5", "FLX1"}));
    EXPECT_EQ(bench.ask("FLK++"), Lines{}) << "the wide step is for the pause";
    EXPECT_EQ(bench.ask("FLKU"), (Lines{"AK", "FLK71"}));
    const Lines run = bench.wait(300'000);
    EXPECT_TRUE(holds(run, "FLT5"));
    EXPECT_TRUE(holds(run, "FLAR1"));
    EXPECT_EQ(bench.ask("FLAR"), (Lines{"AK", "FLAR0"}));
    EXPECT_EQ(bench.after("fluoro off", 100), (Lines{"FLX0", "FLT300", "ST2"}));
    EXPECT_EQ(bench.ask("TC2"), (Lines{"AK", "TC2300"}));
    EXPECT_EQ(bench.ask("FLR"), (Lines{"AK", "FLT0"}));
}

TEST(Programs, AreTakenWholeAndAnsweredWithTheirMnemonic) {
    UpBench bench;
    EXPECT_EQ(bench.ask("SAWS2FO0ET0FI100FS0FN4KV080MA00100MS00050"),
              (Lines{"AK", "SA", "WS2", "WM1", "FO11", "FO20", "AEC100", "FS10", "FS01", "FN40", "FN41",
                     "KV80", "MA100", "MXS10.0", "MS50", "MXS5.0"}));
    EXPECT_TRUE(
        holds(bench.ask("SEWS1FO1AEC1BR050RM0KV090MA00200MS00020FLK085FLP15ABC1FLHD0FLC1KVT0"), "FLK85"));
    EXPECT_EQ(bench.ask("SBWS1FLK080FLP05ABC1FLHD0FLC1KVT0").back(), "AT1") << "there is no rate of 5";
    EXPECT_EQ(bench.ask("SAWS1XX1"), Lines{});
    EXPECT_EQ(bench.ask("SAWSKV080"), Lines{});
    EXPECT_EQ(bench.ask("SA"), Lines{});
    EXPECT_EQ(bench.ask("KV?"), (Lines{"AK", "KV90"})) << "a crooked program changes nothing";
}

} // namespace
} // namespace simulator::test
