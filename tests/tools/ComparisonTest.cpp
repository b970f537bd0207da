#include <gmock/gmock.h>

#include <string>
#include <string_view>
#include <vector>

#include "base/Text.h"
#include "sim/Generator.h"
#include "tools/replay/Comparison.h"

namespace quillon {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

/// What the console sends and what people do at the machine ("!"), at which time.
struct Act {
    Milliseconds time;
    std::string_view text;
};
constexpr Act kSession[] = {
    {1'000, "KV?"},           {1'500, "KV 130"},     {2'000, "KV 80"},          {2'500, "MA 160"},
    {3'000, "MA 100"},        {4'000, "!hand 2"},    {7'000, "!hand 0"},        {9'000, "!hand 1"},
    {9'200, "!collimator 1"}, {9'900, "!hand 0"},    {10'500, "!collimator 0"}, {12'000, "CF1"},
    {15'000, "WS2"},          {16'000, "CF0"},       {19'000, "CA1"},           {22'000, "CAU1"},
    {30'000, "CAU0"},         {33'000, "CA0"},       {36'000, "!error 12"},     {38'000, "AR"},
    {40'000, "!power off"},   {41'000, "!power on"}, {47'000, "RX1"},           {51'000, "VR?"}};

simulator::Options machine(std::string_view profile) {
    simulator::Options options;
    EXPECT_EQ(applyProfile(options, std::string(profile)), "");
    return options;
}

/// The session as a recording of this machine, which is asked for its phase all the time.
Journal recorded(std::string_view profile) {
    Journal journal;
    journal.recorded = true;
    simulator::Options options = machine(profile);
    options.startPhase = Phase::NormalOperation;
    std::string partial;
    Milliseconds now = 0;
    simulator::Generator generator(
        options,
        [&](std::string_view bytes) {
            partial += bytes;
            for (auto end = partial.find("\r\n"); end != std::string::npos; end = partial.find("\r\n")) {
                journal.entries.push_back({Entry::Kind::Received, partial.substr(0, end), now});
                partial.erase(0, end + 2);
            }
        },
        0);
    const auto send = [&](std::string_view text) {
        journal.entries.push_back({Entry::Kind::Sent, std::string(text), now});
        generator.receive(std::string(text) + "\r\n\x03", now);
    };
    const Act* next = kSession;
    for (; now < 55'000; ++now) {
        generator.advance(now);
        for (; next != std::end(kSession) && next->time == now; ++next) {
            if (next->text.starts_with('!')) {
                EXPECT_EQ(generator.command(next->text.substr(1), now), "") << next->text;
            } else {
                send(next->text);
            }
        }
        if (now % 1350 == 1) {
            send("ST");
        }
    }
    return journal;
}

TEST(Comparison, FindsWhatWasSetAndNothingElse) {
    struct Case {
        std::string_view profile;
        std::vector<std::string> differences;
    };
    const Case kCases[] = {
        {"", {}},
        {"answer=70\nack=35\nmodechange=900\npowerup=4200\nautocal.question=3100\n",
         {"delay of AK", "delay of answer", "delay of CF1 to ST8", "delay of CF0 to ST2",
          "delay of CA1 to ST6", "delay of CA0 to ST2", "delay of CAU0 to ST6", "delay of AR to ST2",
          "delay of CAU1 to ST11", "delay of ST1 to ST2"}},
        {"kvp=45..125\nsmall=10..125,15\nversion=OTHER 2\n",
         {"another value of KV", "another value of MA", "another value of MXS", "only the machine says WN"}},
        {"hand=held\nrotor=1800\nack=off\n",
         {"only the simulator says AK", "delay of ST3 to ST4", "delay of PS1 to PR1", "another moment of PS",
          "another moment of XS"}},
        {"stops=door,collimator\n", {"another moment of PS", "another moment of ST2"}},
    };
    for (const Case& each : kCases) {
        const Journal recording = recorded(each.profile);
        const Comparison found = compared(playAgainst(recording, {}));
        EXPECT_THAT(found.differences, testing::UnorderedElementsAreArray(each.differences))
            << each.profile << found.report;
        const Comparison same = compared(playAgainst(recording, machine(each.profile)));
        EXPECT_THAT(same.differences, IsEmpty()) << each.profile << same.report;
    }
}

TEST(Comparison, ToldAsAProfileTheDelaysMakeTheSameMachine) {
    const std::string_view profile = "answer=70\nack=35\nmodechange=900\npowerup=4200\nrotor=1800\n"
                                     "autocal.question=3100\n";
    const Comparison found = compared(playAgainst(recorded(profile), {}));
    for (const std::string_view line : split(profile, "\n")) {
        EXPECT_THAT(found.profile, HasSubstr(std::string(line)));
    }
    EXPECT_THAT(found.profile, HasSubstr("# not measured: autocal.begin"));
    EXPECT_EQ(applyProfile(*std::make_unique<simulator::Options>(), found.profile), "");
}

TEST(Comparison, TellsWhatWasDoneAtTheMachine) {
    const Playback playback = playAgainst(recorded(""), {});
    EXPECT_THAT(playback.hands, ElementsAre("4000 hand 1", "4000 hand 2", "5100 hand 0", "9000 hand 1",
                                            "9200 collimator 1", "9900 hand 0", "10500 collimator 0",
                                            "36000 error 12", "39192 power off", "41000 power on"));
    EXPECT_THAT(playback.strayed, IsEmpty());
}

} // namespace
} // namespace quillon
