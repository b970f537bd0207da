#include "tests/sim/Bench.h"

namespace simulator::test {
namespace {

TEST(Exposure, RunsFromTheHandSwitchThroughItsPhases) {
    UpBench().play({{"MS 200", "AK MS200 MXS20.0"},
                    {"!prepare", "PS1 ST3"},
                    {"KV+", ""}, // the values stand while the tube is prepared
                    {"", "PR1", 1000},
                    {"!expose", "XS1 ST4 XR1", 200},
                    {"", "XR0 XE0 PD010020.0200.0 MXS20.0 XS0 PR0 PS0 ST2", 200},
                    {"TC0", "AK TC01"},
                    {"LE", "AK PD010020.0200.0"},
                    {"DO?", "AK DO490-02"},
                    {"HU", "HE1"}});
}

TEST(Exposure, EndsEarlyWithTheReleaseOrTheChamberAndNotAtAllWithAnError) {
    UpBench().play(
        {{"MS 1000", "AK MS1000 MXS100"},
         {"!expose", "PS1 ST3 XS1 PR1 ST4 XR1", 1500},
         {"!release", "XR0 XE1 PD010050.0500.0 MXS50.0 XS0 PR0 PS0 ST2"},
         {"!prepare", "PS1 ST3", 500},
         {"!release", "PS0 ST2", 2000},
         {"TC0", "AK TC01"},
         {"FI11", "AK FI11"},
         {"!expose", "PS1 ST3 XS1 PR1 ST4 XR1 XR0 XE0 PD010085.0850.0 MXS85.0 XS0 PR0 PS0 ST2", 2000},
         {"!expose", "PS1 ST3 XS1", 500},
         {"!error 3", "ST7 ER3", 5000},
         {"AR", "AK AR0 ST2"},
         {"TC0", "AK TC02"}});
}

TEST(Exposure, StopsAndStaysAwayWhileTheDoorIsOpenOrTheConsoleForbidsIt) {
    struct Case {
        std::string_view begin;
        std::int64_t ms;
        std::string_view end; ///< what is told in the end
    };
    const Case kCases[] = {{"!prepare", 500, "PS0 ST2"},
                           {"!prepare", 1500, "PR0 PS0 ST2"},
                           {"!expose", 500, "XS0 PS0 ST2"},
                           {"!expose", 1500, "XR0 XE1 PD010050.0500.0 MXS50.0 XS0 PR0 PS0 ST2"},
                           {"!fluoro on", 500, "FLX0 FLT0 ST2"}};
    for (const bool door : {true, false}) {
        for (const auto& [begin, ms, end] : kCases) {
            SCOPED_TRACE(std::string(door ? "door, " : "RX, ").append(begin) + std::to_string(ms));
            UpBench bench;
            bench.ask("MS 1000");
            bench.after(begin.substr(1), ms);
            bench.play({{door ? "!door 1" : "RX0", std::string(door ? "DL1 " : "AK ").append(end), 5000},
                        {begin, "?"},
                        {door ? "!door 0" : "RX1", door ? "DL0" : "AK", 5000}}); // nothing begins by itself
            EXPECT_EQ(bench.desk(begin.substr(1)), "");
        }
    }
}

TEST(HandSwitch, MovesBetweenItsStagesAndTakesANewPressOnceItIsOver) {
    UpBench().play({{"!hand 1", "PS1 ST3", 500},
                    {"!hand 2", "XS1", 100},
                    {"!hand 1", "XS0 PR1", 1000}, // back before the rotor was up: prepared, and no exposure
                    {"!hand 2", "XS1 ST4 XR1 XR0 XE0 PD010010.0100.0 MXS10.0 XS0 PR0 PS0 ST2", 1000},
                    {"!hand 1", "?"},
                    {"!hand 0", ""},
                    {"!hand 1", "PS1 ST3", 500},
                    {"!door 1", "DL1 PS0 ST2", 500},
                    {"!door 0", "DL0", 5000},
                    {"!hand 2", "?"},
                    {"!hand 0", ""},
                    {"!power off", ""},
                    {"!hand 1", "?"}});
    // On a machine whose switch is told as it stands.
    UpBench({"hand=held"})
        .play({{"!hand 2", "PS1 ST3 XS1 PR1 ST4 XR1 XR0 XE0 PD010010.0100.0 MXS10.0 PR0 ST2", 2000},
               {"!hand 0", "XS0 PS0"}});
}

TEST(StandingLamps, StandOverAPowerCutAndForbidRadiationAsTheMachineHasIt) {
    UpBench bench({"stops=door,rotor"});
    bench.play({{"!collimator 1", "CL1"},
                {"!hand 1", "PS1 ST3", 500},
                {"!rotor 1", "RL1 PS0 ST2"},
                {"!power off", ""},
                {"!door 1", ""},
                {"!power on", "ST1 ST2 DL1 RL1 CL1 RX?", 4000}});
    EXPECT_EQ(bench.ask("RX1"), Lines{"AK"});
    EXPECT_EQ(bench.desk("prepare"), "?the door is open");
    bench.after("door 0", 100);
    EXPECT_EQ(bench.desk("prepare"), "?the rotor does not turn");
}

TEST(DipSwitch, CountsFromTheNextStartOnWhereItIsReadThere) {
    UpBench bench({"dipswitch=0", "dipswitch.read=powerup"});
    bench.play({{"!set dipswitch 1", ""},
                {"CA1", "AK", 2000},
                {"!power off", ""},
                {"!power on", "ST1 ST2 RX?", 4000}});
    EXPECT_TRUE(holds(bench.ask("CA1", 2000), "ST6"));
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
    Bench().play({{"", "ST1 ST2 RX?", 4000},
                  {"!expose", "?"},
                  {"ST", "ST2", 7000}, // it waits for the answer
                  {"ST", "ST2 RX?"},   // a console that missed the question is asked again
                  {"RX0", "AK"},
                  {"!fluoro on", "?"},
                  {"ST", "ST2", 7000}, // answered
                  {"RX1", "AK"},
                  {"!expose", "PS1 ST3 XS1"}});
    EXPECT_EQ(Bench({"startphase=2"}).desk("expose"), "") << "it was allowed long ago";
}

TEST(Tube, TooHotItRestsUntilItHasCooled) {
    UpBench({"powerup=0"})
        .play({{"!heat 95", "ST10 HL1"},
               {"!expose", "?"},
               {"", "", 199'800},
               {"", "HL0 ST2", 200},
               {"HU", "HE75"},
               {"RP?", "AK RP7"}});
}

TEST(Faults, AnErrorStandsUntilItsResetAndLampsChangeNoPhase) {
    UpBench().play({{"!error 12", "ST7 ER12"},
                    {"ER?", "AK ER12"},
                    {"RF", ""},
                    {"AR", "AK AR0 ST2"},
                    {"AR", "AK AR0"},
                    {"ER?", "AK ER0"},
                    {"!error L3", "ERL03"},
                    {"!warning 11", "WN11"},
                    {"!aec 1", "AR1"},
                    {"!generator 1", "GL1"},
                    {"!tube 1", "TL1"},
                    {"!rotor 0", "RL0"},
                    {"!overheat on", "HL1"},
                    {"!technique off", "EL0"},
                    {"!collimator 1", "CL1"},
                    {"!send INFhello", "INFhello"},
                    {"ER?", "AK ERL03"},
                    {"ST", "ST2"}});
}

} // namespace
} // namespace simulator::test
