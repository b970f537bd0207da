#include <algorithm>
#include <map>

#include "tests/unit/fluoro/PanelTest.h"

namespace quillon {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Entries = std::vector<std::pair<Milliseconds, std::string>>;

/// What a key did, and when, counted from its press. A command that the phase refuses is told to the host at
/// the very moment at which it was called for, so in phase 7 every step shows its time.
class HeldKeysTest : public PanelTest {
protected:
    HeldKeysTest() {
        link.setHandshaking(true);
        link.events().WrongPhase.connect(
            [this](const std::string& message) { made.emplace_back(platform.time.now() - begin, message); });
    }
    void refuseEverything(std::initializer_list<std::string_view> before) {
        receive(before);
        prepare({"ST7"});
    }
    Entries steps(std::string_view key, Milliseconds ms) {
        made.clear();
        forget();
        hold(key, ms);
        advance(5000);
        return made;
    }

    Entries made;
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
    refuseEverything({"ST6", "WM5", "CV0123"});
    // clang-format off
    for (const Row& row : {
             Row{"cmbKVPUp",              400, 500, "KVU",  "KV+",  "KV++"},
             Row{"cmbMAUp",               400, 400, "MAU",  "MA+",  "MA+"},
             Row{"cmbMACalDown",          400, 400, "MAD",  "MA-",  "MA-"},
             Row{"cmbMSUp",               400, 400, "MSU",  "MS+",  "MS+"},
             Row{"cmbMASDown",            400, 400, "MXD",  "MX-",  "MX-"},
             Row{"cmbFlKVPUp",            400, 400, "FLKU", "FLKU", "FLKU"},
             Row{"cmbFlPPSUp",            400, 400, "FLPU", "FLP+", "FLP+"},
             Row{"cmbAECBrightnessUp",    400, 300, "BRU",  "BR+",  "BR++"},
             Row{"cmbDAECBrightnessUp",   400, 300, "BRU",  "BR+",  "BR++"},
             Row{"cmbDAECBrightnessDown", 400, 300, "BRD",  "BR-",  "BR--"},
             Row{"cmbCalValueDown",       400, 350, "C-",   "C-",   "C-"},
         }) {
        // clang-format on
        EXPECT_EQ(steps(row.key, 11 * row.slow + 3 * row.fast - 1),
                  timeLine(row.slow, row.fast, std::string(row.first), std::string(row.slowStep),
                           std::string(row.fastStep)))
            << row.key;
    }
    EXPECT_EQ(caption("txtCalValue"), "0123") << "no other station was chosen";
    EXPECT_EQ(control("sldCalValue").value(), 123);
    // Released within the first interval: one step. This one has no press, and one step at its release.
    EXPECT_EQ(steps("cmbKVPUp", 399), (Entries{{0, "KVU"}}));
    EXPECT_EQ(steps("cmbAECBrightnessDown", 2000), (Entries{{2000, "BRD"}}));
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

TEST_F(HeldKeysTest, DensityRunsHereAndIsSentOnceAtTheRelease) {
    link.setHandshaking(false);
    prepare({"ST2", "MD4", "FN11", "FI11"});
    const auto heardFrom = [this](std::string_view key, Milliseconds ms) {
        events.clear();
        hold(key, ms);
        return events.size();
    };
    EXPECT_EQ(heardFrom("cmbAECDensityUp", 1100), 3U); // 0, 500, 1000 ms
    EXPECT_THAT(sentSoon(), ElementsAre("FN4"));
    EXPECT_EQ(heardFrom("cmbDAECDensityDown", 1100), 3U);
    EXPECT_THAT(sentSoon(), ElementsAre("FN1"));
    // A release alone tells the generator nothing.
    msg("FI10");
    EXPECT_EQ(heardFrom("cmbAECDensityUp", 1100), 0U);
    EXPECT_THAT(sentSoon(), IsEmpty());
}

TEST_F(HeldKeysTest, IntervalsAreProperties) {
    refuseEverything({"WM5"});
    const auto second = [this](std::string_view key) { return steps(key, 2000).at(1).first; };
    const Operations& operations = link.operations();
    for (const auto& [property, key] : {std::pair{"KVPAutorepeatSlowInterval", "cmbKVPUp"},
                                        {"MASAutorepeatSlowInterval", "cmbMASUp"},
                                        {"MAAutorepeatSlowInterval", "cmbMASDown"},
                                        {"FLPPSSlowInterval", "cmbFlPPSUp"},
                                        {"BrightnessSlowInterval", "cmbDAECBrightnessUp"}}) {
        EXPECT_EQ(second(key), 400) << property;
        operations.set(property, 123);
        EXPECT_EQ(second(key), 123) << property;
    }
    operations.set("KVPAutorepeatFastInterval", 70);
    EXPECT_EQ(steps("cmbKVPUp", 11 * 123 + 3 * 70 - 1), timeLine(123, 70, "KVU", "KV+", "KV++"));
}

TEST_F(HeldKeysTest, TheLastPressOwnsTheTimerAndAnyReleaseStopsIt) {
    refuseEverything({});
    press("cmbKVPUp");
    advance(4500);
    made.clear();
    forget();
    press("cmbMAUp");
    advance(400);
    release("cmbKVPUp");
    advance(2000);
    release("cmbMAUp");
    EXPECT_EQ(made, (Entries{{0, "MAU"}, {400, "MA+"}}));
}

TEST_F(HeldKeysTest, ABoxBreaksTheHoldOffAndThePollGoesOn) {
    receive({"ST2", "MD4", "FN11", "FI11"});
    link.setStatusUpdateEnable(true);
    settle();
    press("cmbAECDensityUp");
    advance(600);
    EXPECT_THAT(sentSoon(), IsEmpty()); // silent while the key is held
    input.boxOpened();
    events.clear();
    EXPECT_THAT(sentSoon(), testing::UnorderedElementsAre("ST", "HU"));
    EXPECT_THAT(events, IsEmpty());
    release("cmbAECDensityUp");
    EXPECT_THAT(sentSoon(), testing::Not(testing::Contains("FN4")));
}

} // namespace
} // namespace quillon
