#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "tests/unit/fluoro/LinkBench.h"

namespace quillon {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Entries = std::vector<LinkBench::Entry>;

/// What a key did, and when, counted from its press. A command that the phase refuses is told to the host at
/// the very moment at which it was called for, so in phase 7 every step shows its time.
class HeldKeysTest : public testing::Test {
protected:
    HeldKeysTest() { bench.link.setHandshaking(true); }

    void refuseEverything(std::initializer_list<std::string_view> before) {
        bench.receive(before);
        bench.prepare({"ST7"});
    }
    Entries steps(std::string_view key, Milliseconds ms) {
        bench.settle();
        const Milliseconds start = bench.now();
        bench.hold(key, ms);
        bench.wait(5000);
        Entries all;
        for (const auto& [time, text] : bench.events) {
            const auto quote = text.find('"');
            all.emplace_back(time - start, quote == std::string::npos
                                               ? text
                                               : text.substr(quote + 1, text.size() - quote - 2));
        }
        return all;
    }

    LinkBench bench;
};

/// The first step, ten ticks and an eleventh at one pace, two more at the other.
Entries timeLine(Milliseconds slow, Milliseconds fast, const std::string& first, const std::string& slowStep,
                 const std::string& fastStep) {
    Entries all{{0, first}};
    for (int tick = 1; tick <= 10; ++tick) {
        all.emplace_back(tick * slow, slowStep);
    }
    for (int tick = 0; tick <= 2; ++tick) {
        all.emplace_back(11 * slow + tick * fast, fastStep);
    }
    return all;
}

TEST_F(HeldKeysTest, StepAtTheirTimes) {
    struct Row {
        std::string_view key;
        Milliseconds slow;
        Milliseconds fast;
        std::string_view first;
        std::string_view slowStep;
        std::string_view fastStep;
    };
    refuseEverything({"ST6", "WM5"});
    // clang-format off
    for (const Row& row : {
             Row{"cmbKVPUp",              400, 500, "KVU",  "KV+",  "KV++"},
             Row{"cmbKVPDown",            400, 500, "KVD",  "KV-",  "KV--"},
             Row{"cmbMAUp",               400, 400, "MAU",  "MA+",  "MA+"},
             Row{"cmbMADown",             400, 400, "MAD",  "MA-",  "MA-"},
             Row{"cmbMACalUp",            400, 400, "MAU",  "MA+",  "MA+"},
             Row{"cmbMACalDown",          400, 400, "MAD",  "MA-",  "MA-"},
             Row{"cmbMSUp",               400, 400, "MSU",  "MS+",  "MS+"},
             Row{"cmbMSDown",             400, 400, "MSD",  "MS-",  "MS-"},
             Row{"cmbMASUp",              400, 400, "MXU",  "MX+",  "MX+"},
             Row{"cmbMASDown",            400, 400, "MXD",  "MX-",  "MX-"},
             Row{"cmbMASCalUp",           400, 400, "MXU",  "MX+",  "MX+"},
             Row{"cmbMASCalDown",         400, 400, "MXD",  "MX-",  "MX-"},
             Row{"cmbFlKVPUp",            400, 400, "FLKU", "FLKU", "FLKU"},
             Row{"cmbFlKVPDown",          400, 400, "FLKD", "FLKD", "FLKD"},
             Row{"cmbFlPPSUp",            400, 400, "FLPU", "FLP+", "FLP+"},
             Row{"cmbFlPPSDown",          400, 400, "FLPD", "FLP-", "FLP-"},
             Row{"cmbAECBrightnessUp",    400, 300, "BRU",  "BR+",  "BR++"},
             Row{"cmbDAECBrightnessUp",   400, 300, "BRU",  "BR+",  "BR++"},
             Row{"cmbDAECBrightnessDown", 400, 300, "BRD",  "BR-",  "BR--"},
             Row{"cmbCalValueUp",         400, 350, "C+",   "C+",   "C+"},
             Row{"cmbCalValueDown",       400, 350, "C-",   "C-",   "C-"},
         }) {
        // clang-format on
        EXPECT_EQ(steps(row.key, 11 * row.slow + 3 * row.fast - 1),
                  timeLine(row.slow, row.fast, std::string(row.first), std::string(row.slowStep),
                           std::string(row.fastStep)))
            << row.key;
    }
    // Released within the first interval: one step. This one has no press, and one step at its release.
    EXPECT_EQ(steps("cmbKVPUp", 399), (Entries{{0, "KVU"}}));
    EXPECT_EQ(steps("cmbAECBrightnessDown", 2000), (Entries{{2000, "BRD"}}));
}

TEST_F(HeldKeysTest, FluoroKVpRunsFastOnlyInNormalOperation) {
    bench.link.setHandshaking(false);
    bench.prepare({"ST2"});
    const auto sent = [this](Milliseconds ms) {
        bench.frames.clear();
        bench.hold("cmbFlKVPUp", ms);
        bench.wait(10000);
        std::map<std::string, int> counts;
        for (const auto& [time, text] : bench.frames) {
            ++counts[text];
        }
        return counts;
    };
    EXPECT_EQ(sent(2199), (std::map<std::string, int>{{"FLK+", 11}}));
    EXPECT_EQ(sent(2700), (std::map<std::string, int>{{"FLK+", 11}, {"FLK++", 2}}));
}

TEST_F(HeldKeysTest, PressesThatMustNotWork) {
    refuseEverything({"ST2"});
    for (const std::string_view key :
         {"cmbDAECBrightnessUp", "cmbAECBrightnessUp", "cmbDAECBrightnessDown", "cmbAECDensityUp",
          "cmbAECDensityDown", "cmbDAECDensityUp", "cmbDAECDensityDown", "cmbCalValueUp", "cmbCalValueDown",
          "cmbMACalUp", "cmbMACalDown"}) {
        EXPECT_THAT(steps(key, 2000), IsEmpty()) << key;
    }
}

TEST_F(HeldKeysTest, CalibrationPaceFollowsWhatIsCalibrated) {
    refuseEverything({"ST6", "MASE02"});
    EXPECT_EQ(steps("cmbCalValueUp", 11 * 400 + 3 * 400 - 1), timeLine(400, 400, "C+", "C+", "C+"));
    bench.receive({"ST9", "ST7"});
    EXPECT_EQ(steps("cmbCalValueDown", 401), (Entries{{0, "C-"}, {400, "C-"}}));
}

TEST_F(HeldKeysTest, ChoosingAnotherStationEmptiesTheValueOfTheLast) {
    refuseEverything({"ST6", "CV123"});
    ASSERT_EQ(bench.caption("txtCalValue"), "123");
    EXPECT_EQ(steps("cmbMACalUp", 100), (Entries{{0, "MAU"}}));
    EXPECT_EQ(bench.caption("txtCalValue"), "");
    EXPECT_EQ(bench.link["sldCalValue"].value(), 0);
    EXPECT_EQ(bench.link["sldCalValue"].toolTip(), "0");
}

TEST_F(HeldKeysTest, DensityRunsHereAndIsSentOnceAtTheRelease) {
    bench.link.setHandshaking(false);
    bench.prepare({"ST2", "MD4", "FN11", "FI11"});
    const auto press = [this](std::string_view key, Milliseconds ms) {
        bench.events.clear();
        bench.hold(key, ms);
        return bench.events.size();
    };
    EXPECT_EQ(press("cmbAECDensityUp", 1100), 3U); // 0, 500, 1000 ms
    EXPECT_THAT(bench.sentSoon(), ElementsAre("FN4"));
    EXPECT_EQ(press("cmbDAECDensityDown", 499), 1U);
    EXPECT_THAT(bench.sentSoon(), ElementsAre("FN3"));
    // A release alone tells the generator nothing.
    bench.receive("FI10");
    EXPECT_EQ(press("cmbAECDensityUp", 1100), 0U);
    EXPECT_THAT(bench.sentSoon(), IsEmpty());
}

TEST_F(HeldKeysTest, IntervalsAreProperties) {
    refuseEverything({"WM5"});
    const auto second = [this](std::string_view key) { return steps(key, 2000).at(1).first; };
    const Operations& operations = bench.link.operations();
    for (const auto& [property, key, readable] : {std::tuple{"KVPAutorepeatSlowInterval", "cmbKVPUp", true},
                                                  {"MASAutorepeatSlowInterval", "cmbMASUp", true},
                                                  {"MAAutorepeatSlowInterval", "cmbMASDown", true},
                                                  {"FLPPSSlowInterval", "cmbFlPPSUp", true},
                                                  {"BrightnessSlowInterval", "cmbDAECBrightnessUp", false}}) {
        EXPECT_EQ(second(key), 400) << property;
        operations.set(property, 123);
        EXPECT_EQ(second(key), 123) << property;
        EXPECT_EQ(operations.canGet(property), readable) << property;
    }
    operations.set("KVPAutorepeatFastInterval", 70);
    EXPECT_EQ(steps("cmbKVPUp", 11 * 123 + 3 * 70 - 1), timeLine(123, 70, "KVU", "KV+", "KV++"));
}

TEST_F(HeldKeysTest, TheLastPressOwnsTheTimerAndAnyReleaseStopsIt) {
    refuseEverything({});
    bench.press("cmbKVPUp");
    bench.wait(4500);
    bench.events.clear();
    bench.press("cmbMAUp");
    const Milliseconds start = bench.now();
    bench.wait(400);
    bench.release("cmbKVPUp");
    bench.wait(2000);
    bench.release("cmbMAUp");
    EXPECT_THAT(bench.events, ElementsAre(LinkBench::Entry{start, "WrongPhase \"MAU\""},
                                          LinkBench::Entry{start + 400, "WrongPhase \"MA+\""}));
}

TEST_F(HeldKeysTest, RoutinesWorkByNameAsTheKeysDo) {
    refuseEverything({"MD4", "FN11", "FI11"});
    bench.link.call("FlPPSUpMouseDown");
    bench.wait(400);
    bench.link.call("FLPPSUpMouseUp");
    bench.link.call("MASDownMouseDown");
    bench.link.call("MASDownMouseUp");
    bench.link.call("AECDensityDownMouseDown");
    bench.link.call("AECDensityDownMouseUp");
    bench.wait(1000);
    EXPECT_THAT(bench.takeEvents(),
                ElementsAre("WrongPhase \"FLPU\"", "WrongPhase \"FLP+\"", "WrongPhase \"MXD\"",
                            "AECDensityChange 0 True", "WrongPhase \"FN0\""));
}

TEST_F(HeldKeysTest, ABoxBreaksTheHoldOffAndThePollGoesOn) {
    bench.receive({"ST2", "MD4", "FN11", "FI11"});
    bench.link.setStatusUpdateEnable(true);
    bench.settle();
    bench.press("cmbAECDensityUp");
    bench.wait(600);
    bench.frames.clear();
    bench.wait(3000);
    EXPECT_THAT(bench.frames, IsEmpty()); // silent while the key is held
    bench.input.boxOpened();
    bench.events.clear();
    const auto sent = bench.sentSoon();
    EXPECT_THAT(sent, testing::Each(testing::AnyOf("ST", "HU")));
    EXPECT_EQ(sent.size(), 2U);
    EXPECT_THAT(bench.events, IsEmpty());
    bench.release("cmbAECDensityUp");
    EXPECT_THAT(bench.sentSoon(), testing::Not(testing::Contains("FN4")));
}

TEST_F(HeldKeysTest, AMinuteAgainstAGeneratorThatAcknowledgesNothing) {
    bench.prepare({"ST2"});
    const Milliseconds start = bench.now();
    bench.hold("cmbKVPUp", 60000);
    bench.wait(10000);

    // Only the first step waits for its acknowledgement: four times, 350 ms apart, and then the rest goes.
    Entries expected;
    for (const Milliseconds at : {350, 700, 1050, 1400}) {
        expected.emplace_back(at, "KVU");
    }
    Milliseconds free = 2100;
    std::size_t most = 0;
    std::vector<Milliseconds> made;
    for (int tick = 1; tick <= 10; ++tick) {
        made.push_back(tick * 400);
    }
    for (Milliseconds at = 4400; at <= 60000; at += 500) {
        made.push_back(at);
    }
    for (std::size_t step = 0; step < made.size(); ++step) {
        const Milliseconds leaves = std::max(free, made[step] + 350);
        expected.emplace_back(leaves, step < 10 ? "KV+" : "KV++");
        free = leaves + 350;
        const auto waiting = std::upper_bound(made.begin(), made.end(), leaves) - made.begin();
        most = std::max(most, static_cast<std::size_t>(waiting) - step);
    }
    for (auto& [time, text] : bench.frames) {
        time -= start;
    }
    EXPECT_EQ(bench.frames, expected);
    EXPECT_LE(most, 5U); // of the queue's hundred
}

TEST_F(HeldKeysTest, AFullQueueStopsTheRepeatAndLosesNothing) {
    bench.prepare({"ST2"});
    bench.link.operations().set("KVPAutorepeatSlowInterval", 1);
    bench.link.operations().set("KVPAutorepeatFastInterval", 1);
    bench.press("cmbKVPUp");
    bench.wait(98);
    EXPECT_TRUE(bench.link.timer("tmrAutoRepeat").running());
    bench.wait(1);
    EXPECT_FALSE(bench.link.timer("tmrAutoRepeat").running());
    bench.wait(60000);
    EXPECT_EQ(bench.frames.size(), 4 + 99U);
    EXPECT_FALSE(bench.link.timer("tmrAutoRepeat").running());
    bench.release("cmbKVPUp");
    bench.press("cmbKVPUp");
    EXPECT_TRUE(bench.link.timer("tmrAutoRepeat").running());
}

} // namespace
} // namespace quillon
