#include "tests/sim/Bench.h"

namespace simulator::test {
namespace {

TEST(Configuration, IsEnteredReportedAndLeft) {
    UpBench bench;
    EXPECT_EQ(bench.ask("CF1"), Lines{"AK"});
    EXPECT_EQ(bench.wait(300), (Lines{"ST8", "WS1", "TU1", "WM0", "IC0", "WSI0", "WSF0", "WSS0", "KVT0",
                                      "FI00", "FI10", "FI20", "FLD1"}));
    EXPECT_EQ(bench.ask("KV+"), Lines{});
    EXPECT_EQ(bench.ask("CF1"), Lines{"AK"}) << "a repeat changes nothing";
    EXPECT_EQ(bench.wait(500), Lines{});
    bench.ask("CF0");
    EXPECT_EQ(bench.wait(300), Lines{"ST2"});
}

TEST(ServiceModes, TheDipSwitchKeepsThemOut) {
    UpBench bench({"dipswitch=0"});
    EXPECT_EQ(bench.ask("CF1"), Lines{"AK"});
    EXPECT_EQ(bench.ask("CA1"), Lines{"AK"});
    EXPECT_EQ(bench.wait(5000), Lines{});
}

TEST(ServiceModes, AnErrorDoesNotLeaveThem) {
    UpBench bench;
    bench.ask("CF1", 600);
    bench.after("error 4", 100);
    EXPECT_TRUE(holds(bench.ask("AR"), "ST8"));
    CalibratingBench calibrating;
    calibrating.after("expose", 500);
    calibrating.after("error 4", 100);
    EXPECT_TRUE(holds(calibrating.ask("AR"), "ST6"));
}

TEST(Calibration, TheListIsWalkedFromTheSmallFocusToTheLastParameterAndBack) {
    UpBench bench;
    bench.ask("CA1");
    EXPECT_EQ(bench.wait(300), (Lines{"ST6", "MA10", "FO11", "FO20", "MS100", "MX1.0", "KV70", "CV310"}));
    bool large = false;
    int parameter = 0;
    for (int step = 0; step < 60; ++step) {
        for (const std::string& line : bench.ask("MA+")) {
            large = large || line == "FO21";
            if (line.starts_with("MASE")) {
                EXPECT_TRUE(large) << "the parameters stand behind the large focus";
                const int next = std::stoi(line.substr(4));
                EXPECT_TRUE(next == parameter + 1 || next == 32) << line;
                parameter = next;
            }
        }
    }
    EXPECT_EQ(parameter, 32);
    EXPECT_EQ(bench.ask("MAU"), (Lines{"AK", "MASE32", "KV80", "CV132"}));
    for (int step = 0; step < 31; ++step) {
        bench.ask("MAD");
    }
    EXPECT_TRUE(holds(bench.ask("MA?"), "MASE01"));
    const Lines station = bench.ask("MA-");
    EXPECT_TRUE(holds(station, "MA640"));
    EXPECT_TRUE(holds(station, "FO21"));
}

TEST(Calibration, ValuesAreChangedStoredAndReadBack) {
    CalibratingBench bench;
    EXPECT_EQ(bench.ask("C+"), (Lines{"AK", "CV311"}));
    EXPECT_EQ(bench.ask("C++"), (Lines{"AK", "CV321"}));
    EXPECT_EQ(bench.ask("CR"), (Lines{"AK", "CV310"}));
    EXPECT_EQ(bench.ask("CV0500"), (Lines{"AK", "CV500"}));
    EXPECT_EQ(bench.ask("CS"), (Lines{"AK", "CV500"}));
    EXPECT_EQ(bench.ask("CV4096"), Lines{});
    EXPECT_EQ(bench.ask("CV4095"), (Lines{"AK", "CV4095"}));
    EXPECT_EQ(bench.ask("CR"), (Lines{"AK", "CV500"}));
    for (const auto& [asked, value] :
         {std::pair{"KV?", "KV70"}, {"MS?", "MS100"}, {"MX?", "MX1.0"}, {"FO?", "FO11"}}) {
        EXPECT_EQ(bench.ask(asked).at(1), value);
    }
    bench.ask("C-");
    bench.ask("MA+");
    EXPECT_EQ(bench.ask("MA-").back(), "CV500") << "what was not stored is gone";
    bench.desk("power off");
    bench.after("power on", 4000);
    bench.ask("CA1", 1100);
    EXPECT_EQ(bench.ask("CR"), (Lines{"AK", "CV500"}));
}

TEST(Autocalibration, AnErrorEndsIt) {
    CalibratingBench bench({"autoexpose=1"});
    bench.ask("CAU1", 2100);
    bench.ask("CAU1", 8100);
    EXPECT_EQ(bench.after("error 20", 20'000), (Lines{"CAU0", "ST7", "ER20"}));
    EXPECT_TRUE(holds(bench.ask("AR"), "ST6"));
}

TEST(Positioner, TheRemoteOneKeepsItsPointsAndItsSid) {
    UpBench bench({"positioner=remote"});
    EXPECT_EQ(bench.ask("URSSO1"), Lines{"AK"});
    EXPECT_EQ(bench.status("positioner"), "service");
    EXPECT_EQ(bench.ask("URSCG"), (Lines{"AK", "URSCG400,820,1100,1510,1560,2240,1800,3010,"}));
    EXPECT_EQ(bench.ask("URSCD107501234"), Lines{"AK"});
    EXPECT_EQ(bench.ask("URSCG").back(), "URSCG400,820,750,1234,1560,2240,1800,3010,");
    bench.ask("URSCF0120");
    EXPECT_EQ(bench.ask("URSSG").back(), "URSSG0120");
    EXPECT_EQ(bench.ask("URSPS+005"), Lines{"AK"}) << "that is for the other kind";
    EXPECT_EQ(bench.ask("URSCD9"), Lines{"AK"}) << "passed on, and not understood";
}

} // namespace
} // namespace simulator::test
