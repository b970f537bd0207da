#include "tests/sim/Bench.h"

namespace simulator::test {
namespace {

TEST(Exposure, RunsFromTheHandSwitchThroughItsPhases) {
    UpBench bench;
    bench.ask("MS 200");
    EXPECT_EQ(bench.after("prepare", 100), (Lines{"PS1", "ST3"}));
    EXPECT_EQ(bench.ask("KV+"), Lines{}) << "the values stand while the tube is prepared";
    EXPECT_EQ(bench.wait(1000), Lines{"PR1"});
    EXPECT_EQ(bench.after("expose", 200), (Lines{"XS1", "ST4", "XR1"}));
    EXPECT_EQ(bench.wait(200),
              (Lines{"XR0", "XE0", "PD010020.0200.0", "MXS20.0", "XS0", "PR0", "PS0", "ST2"}));
    EXPECT_EQ(bench.ask("TC0"), (Lines{"AK", "TC01"}));
    EXPECT_EQ(bench.ask("LE"), (Lines{"AK", "PD010020.0200.0"}));
    EXPECT_EQ(bench.ask("DO?"), (Lines{"AK", "DO490-02"}));
    EXPECT_EQ(bench.ask("HU"), Lines{"HE1"});
}

TEST(Exposure, ReleaseEndsItEarlyOrStopsThePreparation) {
    UpBench bench;
    bench.ask("MS 1000");
    bench.after("expose", 1500);
    const Lines end = bench.after("release", 100);
    EXPECT_TRUE(holds(end, "XE1"));
    EXPECT_TRUE(holds(end, "PD010050.0500.0"));
    bench.after("prepare", 500);
    EXPECT_EQ(bench.after("release", 2000), (Lines{"PS0", "ST2"}));
    EXPECT_EQ(bench.ask("TC0"), (Lines{"AK", "TC01"}));
}

TEST(Exposure, StopsAndStaysAwayWhileTheDoorIsOpenOrTheConsoleForbidsIt) {
    struct Case {
        std::string_view begin;
        std::int64_t ms;
        Lines end; ///< what is told in the end
    };
    const Case kCases[] = {
        {"prepare", 500, {"PS0", "ST2"}},
        {"prepare", 1500, {"PR0", "PS0", "ST2"}},
        {"expose", 500, {"XS0", "PS0", "ST2"}},
        {"expose", 1500, {"XR0", "XE1", "PD010050.0500.0", "MXS50.0", "XS0", "PR0", "PS0", "ST2"}},
        {"fluoro on", 500, {"FLX0", "FLT0", "ST2"}}};
    for (const bool door : {true, false}) {
        for (const auto& [begin, ms, end] : kCases) {
            SCOPED_TRACE(std::string(door ? "door, " : "RX, ") + std::string(begin) + " " +
                         std::to_string(ms));
            UpBench bench;
            bench.ask("MS 1000");
            bench.after(begin, ms);
            Lines told = door ? bench.after("door 1", 5000) : bench.ask("RX0", 5000);
            ASSERT_FALSE(told.empty());
            EXPECT_EQ(told.front(), door ? "DL1" : "AK");
            EXPECT_EQ(Lines(told.begin() + 1, told.end()), end);
            EXPECT_EQ(bench.desk(begin).substr(0, 1), "?");
            EXPECT_EQ(door ? bench.after("door 0", 5000) : bench.ask("RX1", 5000), Lines{door ? "DL0" : "AK"})
                << "nothing begins by itself";
            EXPECT_EQ(bench.desk(begin), "");
        }
    }
}

TEST(Exposure, AnAutocalibrationGoesOnOnceTheDoorIsClosed) {
    CalibratingBench bench({"autoexpose=1", "exposures=1"});
    bench.ask("CAU1", 2000);
    bench.ask("CAU1", 8000); // in the first preparation
    EXPECT_TRUE(holds(bench.after("door 1", 100), "ST9"));
    EXPECT_EQ(bench.wait(10'000), Lines{});
    EXPECT_TRUE(holds(bench.after("door 0", 10'000), "ST13"));
}

TEST(Exposure, WaitsAfterPowerUpUntilTheConsoleHasAllowedIt) {
    Bench bench;
    EXPECT_TRUE(holds(bench.wait(4000), "RX?"));
    EXPECT_EQ(bench.desk("expose").substr(0, 1), "?");
    EXPECT_EQ(bench.ask("ST", 7000), Lines{"ST2"}) << "it waits for the answer";
    EXPECT_EQ(bench.ask("ST"), (Lines{"ST2", "RX?"})) << "a console that missed the question is asked again";
    EXPECT_EQ(bench.ask("RX0"), Lines{"AK"});
    EXPECT_EQ(bench.desk("fluoro on").substr(0, 1), "?");
    EXPECT_EQ(bench.ask("ST", 7000), Lines{"ST2"}) << "answered";
    bench.ask("RX1");
    EXPECT_EQ(bench.desk("expose"), "");
    EXPECT_EQ(Bench({"startphase=2"}).desk("expose"), "") << "it was allowed long ago";
}

TEST(Exposure, TheChamberCutsItShort) {
    UpBench bench;
    bench.ask("FI11");
    bench.ask("MS 1000");
    const Lines lines = bench.after("expose", 2000);
    EXPECT_TRUE(holds(lines, "XE0"));
    EXPECT_FALSE(holds(lines, "MXS100"));
}

TEST(Tube, TooHotItRestsUntilItHasCooled) {
    UpBench bench({"powerup=0"});
    EXPECT_EQ(bench.after("heat 95", 100), (Lines{"ST10", "HL1"}));
    EXPECT_EQ(bench.desk("expose").substr(0, 1), "?");
    EXPECT_EQ(bench.wait(199'800), Lines{});
    EXPECT_EQ(bench.wait(200), (Lines{"HL0", "ST2"}));
    EXPECT_EQ(bench.ask("HU"), Lines{"HE75"});
    EXPECT_EQ(bench.ask("RP?"), (Lines{"AK", "RP7"}));
}

TEST(Faults, AnErrorStandsUntilItsReset) {
    UpBench bench;
    EXPECT_EQ(bench.after("error 12", 100), (Lines{"ST7", "ER12"}));
    EXPECT_EQ(bench.ask("ER?"), (Lines{"AK", "ER12"}));
    EXPECT_EQ(bench.ask("RF"), Lines{});
    EXPECT_EQ(bench.ask("AR"), (Lines{"AK", "AR0", "ST2"}));
    EXPECT_EQ(bench.ask("AR"), (Lines{"AK", "AR0"}));
    EXPECT_EQ(bench.ask("ER?"), (Lines{"AK", "ER0"}));
}

TEST(Faults, AnErrorStopsTheExposure) {
    UpBench bench;
    bench.after("expose", 500);
    EXPECT_EQ(bench.after("error 3", 5000), (Lines{"ST7", "ER3"}));
    EXPECT_EQ(bench.ask("AR"), (Lines{"AK", "AR0", "ST2"}));
    EXPECT_EQ(bench.ask("TC0"), (Lines{"AK", "TC00"}));
}

TEST(Faults, InterlocksWarningsAndLamps) {
    UpBench bench;
    for (const auto& [command, message] : {std::pair{"error L3", "ERL03"},
                                           {"warning 11", "WN11"},
                                           {"aec 1", "AR1"},
                                           {"generator 1", "GL1"},
                                           {"tube 1", "TL1"},
                                           {"rotor 0", "RL0"},
                                           {"overheat on", "HL1"},
                                           {"technique off", "EL0"},
                                           {"collimator 1", "CL1"},
                                           {"send INFhello", "INFhello"}}) {
        EXPECT_EQ(bench.desk(command), "") << command;
        EXPECT_EQ(bench.wait(50), Lines{message}) << command;
    }
    EXPECT_EQ(bench.ask("ER?"), (Lines{"AK", "ERL03"}));
    EXPECT_EQ(bench.ask("ST"), Lines{"ST2"}) << "none of them changes the phase";
}

} // namespace
} // namespace simulator::test
