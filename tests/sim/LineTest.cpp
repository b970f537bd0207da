#include "tests/sim/Bench.h"

#include <random>

namespace simulator::test {
namespace {

TEST(PowerUp, ReportsInitializationThenNormalOperationAndAsksForTheEnableState) {
    Bench bench({"powerup=1000"});
    EXPECT_EQ(bench.wait(39), Lines{});
    EXPECT_EQ(bench.wait(1), Lines{"ST1"});
    EXPECT_EQ(bench.ask("ST"), Lines{"ST1"});
    EXPECT_EQ(bench.ask("VR?"), Lines{}) << "a cold machine has no version to tell yet";
    EXPECT_EQ(bench.wait(1000), (Lines{"ST2", "RX?"}));
}

TEST(Answers, AcknowledgementFirstThenTheValueEachAfterItsDelay) {
    UpBench bench({"ack=20", "answer=50"});
    bench.raw("KV?\r\n\x03");
    EXPECT_EQ(bench.wait(19), Lines{});
    EXPECT_EQ(bench.wait(1), Lines{"AK"});
    EXPECT_EQ(bench.wait(29), Lines{});
    EXPECT_EQ(bench.wait(1), Lines{"KV70"});
}

TEST(Answers, TakeTheirTimeOnALineWithAPace) {
    UpBench bench({"line=19200", "ack=0", "answer=0"});
    bench.raw("KV?\r\n\x03KV+\r\n\x03");
    // Six bytes of a frame, four of the acknowledgement, six of the value: 0.52 ms each.
    std::string pieces;
    for (int ms = 1; ms <= 14; ++ms) {
        const std::size_t before = bench.bytes().size();
        bench.generator().advance(bench.now() + ms);
        pieces += std::to_string(bench.bytes().size() - before);
    }
    EXPECT_EQ(pieces, "00001222222222");
    EXPECT_EQ(bench.wait(14 + 100), (Lines{"AK", "KV70", "AK", "KV71"}));
}

TEST(Frames, CrookedOnesAreCountedAndDropped) {
    const std::string crooked[] = {"ST\r\x03",       "ST\n\x03",          "ST\x03",
                                   "S\x01T\r\n\x03", "KV?\r\nST\r\n\x03", std::string(200, 'A') + "\r\n\x03"};
    for (const std::string& frame : crooked) {
        UpBench bench;
        bench.raw(frame);
        EXPECT_EQ(bench.wait(100), Lines{}) << frame;
        EXPECT_NE(bench.status("malformed"), "0") << frame;
    }
}

TEST(Refusals, AreSilentAndCountedByTheirReason) {
    UpBench bench;
    for (const std::string_view refused : {"TU+", "C+", "KV", "WS9", "KV1e999", "QQ"}) {
        EXPECT_EQ(bench.ask(refused), Lines{}) << refused;
    }
    EXPECT_EQ(bench.status("wrong-phase"), "2");
    EXPECT_EQ(bench.status("bad-argument"), "3");
    EXPECT_EQ(bench.status("unknown"), "1");
    EXPECT_EQ(bench.status("last-refused"), "QQ");
}

TEST(Faults, LostAcknowledgementsLeaveTheCommandDone) {
    UpBench bench;
    bench.desk("drop 2");
    EXPECT_EQ(bench.ask("KVU"), Lines{"KV71"});
    EXPECT_EQ(bench.ask("KVU"), Lines{"KV72"});
    EXPECT_EQ(bench.ask("KVU"), (Lines{"AK", "KV73"}));
    bench.desk("drop every 2");
    int heard = 0;
    for (int request = 0; request < 10; ++request) {
        heard += holds(bench.ask("KV?"), "AK") ? 1 : 0;
    }
    EXPECT_EQ(heard, 5);
    EXPECT_EQ(bench.status("ack-dropped"), "7");
}

TEST(Faults, ValuesAreTwiceStuckOrWrongAndThePhaseIsNot) {
    UpBench bench({"ack=off"});
    bench.desk("set twice 100");
    EXPECT_EQ(bench.ask("KV?"), (Lines{"KV70", "KV70"}));
    bench.desk("set twice 0");
    bench.desk("set stuck 1");
    EXPECT_EQ(bench.ask("KVU"), Lines{"KV71"});
    EXPECT_EQ(bench.ask("KVU"), Lines{"KV71"});
    bench.desk("set stuck 0");
    EXPECT_EQ(bench.ask("KV?"), Lines{"KV72"});
    bench.desk("set wrong 100");
    const Lines wrong = bench.ask("KV?");
    ASSERT_EQ(wrong.size(), 1U);
    EXPECT_TRUE(wrong[0].starts_with("KV7") && wrong[0].size() == 4 && wrong[0] != "KV72") << wrong[0];
    EXPECT_EQ(bench.ask("ST"), Lines{"ST2"});
}

TEST(Plug, LosesWhatPassesWithoutContactAndALooseOneTheSameForASeed) {
    UpBench bench;
    bench.play({{"!plug out", ""}, {"KVU", ""}, {"!door 1", ""}, {"!plug in", ""}, {"KV?", "AK KV70"}});
    // Which of 200 polls is answered.
    const auto heard = [](std::string_view seed) {
        UpBench loose({seed});
        loose.desk("plug loose");
        std::string answers;
        for (int poll = 0; poll < 200; ++poll) {
            answers += holds(loose.ask("ST", 200), "ST2") ? '1' : '0';
        }
        return answers;
    };
    const std::string first = heard("seed=3");
    EXPECT_EQ(first, heard("seed=3"));
    EXPECT_NE(first, heard("seed=4"));
    const auto lost = std::ranges::count(first, '0');
    EXPECT_TRUE(lost > 10 && lost < 80) << lost;
}

TEST(Watch, TellsWhatBecomesOfFramesAndMessages) {
    UpBench bench;
    std::string told;
    bench.generator().watch({[&](std::string_view text, Verdict verdict) {
                                 told += std::string(text) + std::to_string(static_cast<int>(verdict)) + " ";
                             },
                             [&](std::string_view text, Outbox::Fate fate) {
                                 told +=
                                     "<" + std::string(text) + std::to_string(static_cast<int>(fate)) + " ";
                             }});
    for (const std::string_view trouble :
         {"set noise 0", "drop 1", "silence on", "silence off", "plug out"}) {
        bench.desk(trouble);
        bench.ask("KV?");
    }
    bench.play({{"!plug in", ""},
                {"!stick KV 12", ""},
                {"KVU", "AK KV12"},
                {"!stick off", ""},
                {"KV?", "AK KV71"},
                {"C+", ""}});
    EXPECT_EQ(told, "KV?0 <AK0 <KV700 " // as it should be
                    "KV?0 <AK2 <KV700 " // the acknowledgement dropped
                    "KV?0 <AK3 <KV703 " // silent
                    "KV?0 <AK0 <KV700 " // no longer
                    "KVU0 <AK0 <KV120 KV?0 <AK0 <KV710 C+1 ");
}

TEST(Profile, MakesTheMachineAndIsTheSameWhenItIsReadAgain) {
    Options options;
    EXPECT_EQ(
        applyProfile(options, "# a small one\r\nkvp=45..125\nsmall=10..100,15\n\nmas=200\nrotor=1800\n"), "");
    EXPECT_EQ(applyProfile(options, "answer=70\nkvp=125..45\n"), "2: kvp takes LOW..HIGH, not '125..45'");
    Options again;
    EXPECT_EQ(applyProfile(again, profileOf(options)), "");
    EXPECT_EQ(profileOf(again), profileOf(options));

    UpBench(
        {"kvp=45..125", "small=10..100,8", "mas=20", "rotor=1800", "tube=30", "toohot=10", "coolenough=9"})
        .play({{"KV?", "AK KV70"},
               {"KV 130", "AK KV70 WN3"}, // 100 mA at 125 kVp would be more than 8 kW, so nothing is taken
               {"MA 50", "AK MA50 MXS5.0"},
               {"KV 130", "AK KV125 WN3"},
               {"MS 500", "AK MS100 MXS5.0 WN9"},
               {"MS 400", "AK MS400 MXS20.0"},
               {"!expose", "PS1 ST3 XS1", 1799},
               {"", "PR1 ST4 XR1 XR0 XE0 PD005020.0400.0 MXS20.0 XS0 PR0 PS0 ST2 ST10 HL1", 600},
               {"", "HL0 ST2", 30'000}});
}

TEST(Robustness, AnyBytesAndAnyCommandsAreBorne) {
    constexpr std::string_view kPieces[] = {"KV",   "MA+", "CF1", "CA1",   "CAU1", "FO", "\r\n\x03",
                                            "\x03", "SA",  "WS2", "KVTF",  "URS",  "CD", "CG",
                                            "AEC1", "FI",  "TC",  "1e308", "-",    " 5", "XR1"};
    constexpr std::string_view kDesk[] = {"expose",    "release",  "error 5",         "fluoro on",
                                          "power off", "power on", "phase 9",         "phase 4",
                                          "heat 100",  "door 1",   "set exposures 1", "silence"};
    std::mt19937 random(3);
    Bench bench({"autoexpose=1", "noise=30"});
    for (int round = 0; round < 20'000; ++round) {
        bench.raw(kPieces[random() % std::size(kPieces)]);
        if (random() % 4 == 0) {
            bench.raw("\r\n\x03");
        }
        if (random() % 50 == 0) {
            bench.desk(kDesk[random() % std::size(kDesk)]);
        }
        bench.wait(static_cast<std::int64_t>(random() % 200));
    }
    bench.desk("power off");
    bench.desk("set noise 0");
    bench.after("power on", 10'000);
    EXPECT_TRUE(holds(bench.ask("ST"), "ST2") || holds(bench.ask("ST"), "ST10"));
}

} // namespace
} // namespace simulator::test
