#include "shell/RecordingFolder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "runtime/Packing.h"
#include "shell/RecordingFacts.h"
#include "shell/RecordingReader.h"

namespace quillon {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> gone(const FileList& files, std::int64_t bound, std::int64_t running,
                              const std::vector<std::int64_t>& spoken) {
    return removable(
        sessionsIn(files), bound,
        [running](const RecordedSession& session) { return session.number == running; },
        [&spoken](const RecordedSession& session) {
            return std::ranges::find(spoken, session.number) != spoken.end();
        });
}

TEST(RecordingFolderTest, TheOldestGoAndHeadsVisitsAndWhatIsBeingWrittenStay) {
    const FileList files{{"000002.000.scn.gz", 10},     {"000001.000.scn.gz", 10}, {"000001.001.scn.gz", 10},
                         {"000001.001.scn", 50},        {"000003.000.scn.gz", 10}, {"000004.000.scn.gz", 10},
                         {"000005.000.scn.gz", 10},     {"000006.000.scn.gz", 10}, {"000006.001.scn.gz", 10},
                         {"000006.002.scn.gz", 10},     {"000006.003.scn", 10},    {"lock", 90},
                         {"000007.000.scn.gz.new", 90}, {"notes.txt", 90}};
    EXPECT_THAT(gone(files, 100, 6, {}), IsEmpty());
    EXPECT_THAT(gone(files, 75, 6, {}),
                ElementsAre("000001.001.scn.gz", "000001.000.scn.gz", "000002.000.scn.gz"));
    EXPECT_THAT(gone(files, 0, 6, {1, 2, 3, 5}), ElementsAre("000001.001.scn.gz", "000001.000.scn.gz",
                                                             "000004.000.scn.gz", "000006.001.scn.gz"));
    EXPECT_EQ(leftOversIn(files).size(), 2U);
    EXPECT_EQ(sessionsIn(files).back().number, 6);
    EXPECT_EQ(sessionsIn({{"1234567.1000.scn", 1}}).front().parts.front().number, 1000);
}

TEST(RecordingFolderTest, AVisitIsWhatFollowedShortlyAtTheSameDevice) {
    const auto session = [](Milliseconds begun, Milliseconds length, bool spoke, const char* device) {
        RecordingFacts facts;
        facts.begun = WallTime{begun, 0};
        facts.ended = WallTime{begun + length, 0};
        facts.spoke = spoke;
        facts.device = device;
        return facts;
    };
    constexpr Milliseconds kMinute = 60'000;
    const RecordingFacts all[] = {
        session(0, kMinute, true, "a"),
        session(20 * kMinute, kMinute, false, "a"), // 19 minutes later
        session(30 * kMinute, kMinute, true, "a"),
        session(20 * kMinute, kMinute, true, "a"), // the clock was set back, and it is not the same visit
        session(21 * kMinute, kMinute, true, "b"),
        session(50 * kMinute, kMinute, false, "b"),
    };
    const auto facts = [&all](std::size_t at) -> const RecordingFacts& { return all[at]; };
    EXPECT_THAT(visitAmong(6, facts, 1), ElementsAre(4U));
    EXPECT_THAT(visitAmong(6, facts, 2), ElementsAre(1U, 2U, 3U));
    EXPECT_THAT(visitAmong(6, facts, 3), ElementsAre(0U));
    EXPECT_THAT(visitAmong(6, facts, 4), IsEmpty());
}

TEST(RecordingFolderTest, ASessionIsReadFromWhatIsLeftOfIt) {
    const std::string head = "# Recorded by Quillon\nfile a\n# Recorded by nobody\nrx \"file\"\nend\nstart\n";
    const std::string clock = "# 500 clock 2026-03-01T00:30:00.000+01:00\nwait 1000\npress a\n";
    const auto folder = std::filesystem::path(testing::TempDir()) / "recordings";
    std::filesystem::create_directories(folder);
    const auto put = [&folder](const char* name, const std::string& content) {
        std::ofstream(folder / name, std::ios::binary) << content;
    };
    Packer packer;
    std::string packed = packer.add(head + clock);
    packed += packer.finish();
    put("000001.000.scn.gz", packed);
    put("000001.002.scn", "wait 10\n# 5010 tx \"ST\"\nrx \"ST2\"\nwait 1");
    auto sessions = sessionsIn(filesOf(folder));
    ASSERT_EQ(sessions.size(), 1U);
    RecordingText read = readSession(folder, sessions[0]);
    EXPECT_EQ(read.text, head + clock + "gap 4000 0\nwait 10\n# 5010 tx \"ST\"\nrx \"ST2\"\n");
    EXPECT_EQ(read.problem, "");
    const RecordingFacts facts = factsOf(read.text);
    EXPECT_EQ(facts.length, 5010);
    EXPECT_TRUE(facts.spoke);
    EXPECT_FALSE(factsOf(head).spoke) << "the words of a file are none of the generator's";
    EXPECT_EQ(facts.presses, 1);
    EXPECT_EQ(facts.gaps, 1);
    EXPECT_EQ(isoText(*facts.begun), "2026-03-01T00:29:59.500+01:00");
    EXPECT_EQ(isoText(*facts.ended), "2026-03-01T00:30:04.510+01:00");
    EXPECT_THAT(recordingsIn(head + clock + head), ElementsAre(head + clock, head));
    EXPECT_THAT(recordingsIn(clock + head), ElementsAre(clock + head)) << "no recording";

    RecordingText twice = recordingTextOf(packed + packed);
    EXPECT_EQ(twice.text, head + clock + head + clock);
    put("000001.000.scn.gz", packed.substr(0, packed.size() - 30));
    read = readSession(folder, sessions[0]);
    EXPECT_THAT(read.text, testing::StartsWith("# Recorded by Quillon\n"));
    EXPECT_EQ(read.problem, "000001.000.scn.gz: it is cut short or broken");
    std::filesystem::remove_all(folder);
}

} // namespace
} // namespace quillon
