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

TEST(Technique, RefreshReportsEverything) {
    UpBench bench;
    EXPECT_EQ(bench.ask("RF"), (Lines{"AK", "KV70", "MA100", "MS100", "MX10.0", "FO11", "FO20"}));
    EXPECT_EQ(bench.ask("TM?"), Lines{"AK"}) << "without technique modes there is none to tell";
    UpBench modes({"techmode=3"});
    EXPECT_EQ(modes.ask("RF").back(), "TM3");
    EXPECT_EQ(modes.ask("TM1"), (Lines{"AK", "TM1"}));
    EXPECT_EQ(modes.ask("TM4"), Lines{});
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

TEST(Technique, LimitsHoldAndWarn) {
    UpBench bench;
    expectExchanges(bench, {{"KV 151", {"AK", "KV150", "WN3"}},
                            {"KV+", {"AK", "KV150", "WN3"}},
                            {"KV 30", {"AK", "KV40", "WN4"}},
                            {"MA 200", {"AK", "MA160", "MXS16.0", "WN5"}},
                            {"MA+", {"AK", "MA160", "MXS16.0", "WN5"}},
                            {"KV 151", {"AK", "KV150", "WN3"}},
                            {"FOS2", {"AK", "FO10", "FO21"}},
                            {"MA 500", {"AK", "MA160", "MXS16.0", "WN11"}},
                            {"MA 320", {"AK", "MA320", "MXS32.0"}},
                            {"MS 10000", {"AK", "MS100", "MXS32.0", "WN9"}},
                            {"KV 60", {"AK", "KV60"}},
                            {"FOS1", {"AK", "FO11", "FO20", "MAS160", "MXS16.0"}},
                            {"MA 10", {"AK", "MA10", "MXS1.0"}},
                            {"MS 10000", {"AK", "MS0000", "MXS100"}},
                            {"MS+", {"AK", "MS0000", "MXS100", "WN7"}},
                            {"MA-", {"AK", "MA10", "MXS100", "WN6"}}});
}

TEST(Technique, TheWholeRangeCanBeWalkedBothWays) {
    UpBench bench;
    for (const auto& [up, down, low] :
         {std::tuple{"MAU", "MAD", "MA10"}, {"MSU", "MSD", "MS1"}, {"KV++", "KV--", "KV40"}}) {
        int steps = 0;
        while (bench.ask(down).size() < 4 && steps < 100) {
            ++steps;
            if (holds(bench.ask(std::string(low).substr(0, 2) + "?"), low)) {
                break;
            }
        }
        EXPECT_LT(steps, 100) << down;
        EXPECT_GT(steps, 3) << down;
        EXPECT_FALSE(holds(bench.ask(up), low)) << up;
    }
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

TEST(Fluoroscopy, ValuesAndLimits) {
    UpBench bench;
    expectExchanges(bench, {{"FLK++", {"AK", "FLK75"}},
                            {"FLK200", {"AK", "FLK110"}},
                            {"FLK?", {"AK", "FLK110"}},
                            {"FLT?", {"AK", "FLT0"}},
                            {"FLP", {"AK", "FLP25"}},
                            {"FLP00", {"AK", "FLP0"}},
                            {"FLP+", {"AK", "FLP1"}},
                            {"FLPD", {"AK", "FLP1"}},
                            {"FLP05", {}},
                            {"FLP?", {"AK", "FLP1"}},
                            {"FLA", {"AK", "FLA1"}},
                            {"FLA0", {"AK", "FLA0"}},
                            {"FLA?", {"AK", "FLA0"}},
                            {"FLM3", {"AK", "FLM00", "FLM31"}},
                            {"FLHD1", {"AK", "FLHD1"}},
                            {"FLMAU", {"AK", "FLMA21"}},
                            {"FLC 2", {"AK", "FLC21"}},
                            {"FLC+", {"AK", "FLC21"}},
                            {"KVT3", {"AK", "KVT3"}},
                            {"KVT-", {"AK", "KVT2"}},
                            {"KVTF2A060B05MA00100MS01000", {"AK"}},
                            {"KVTF9A060B05MA00100MS01000", {}},
                            {"KVTF2A060B05", {}}});
    const Lines all = bench.ask("FLF");
    for (const std::string_view value :
         {"FLK110", "FLT0", "FLP1", "FLMA21", "FLA0", "FLHD1", "FLAR0", "FLM31", "FLC21", "KVT2", "FLD1"}) {
        EXPECT_TRUE(holds(all, value)) << value;
    }
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

TEST(Fluoroscopy, ARadGeneratorHasNone) {
    UpBench bench({"type=rad"});
    EXPECT_EQ(bench.ask("FLF"), (Lines{"AK", "FLD0"}));
    EXPECT_EQ(bench.ask("FLK+"), Lines{});
    EXPECT_EQ(bench.desk("fluoro on").substr(0, 1), "?");
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
