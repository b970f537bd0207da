#include "sim/lesson/Classroom.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace simulator::test {
namespace {

using testing::ElementsAre;

constexpr std::string_view kHead = "title T\ntask\nDo it.\n\nAll.\nend\nmachine powerup=1500\n";

TEST(LessonFile, TellsEachMistakeByItsLine) {
    const Lesson good = readLesson(std::string(kHead) + "step phase = ready : Up\nexplain\nSo.\nend\n");
    EXPECT_THAT(good.problems, ElementsAre());
    EXPECT_EQ(good.task, "Do it.\n\nAll.");
    struct Case {
        std::string_view line;
        std::string_view problem;
    };
    const Case kCases[] = {
        {"step phase = ready", "' : ' and words behind it are wanted"},
        {"step dor = on : X", "the machine has no 'dor'"},
        {"step door = ajar : X", "door wants =, <, > or ! and a value"},
        {"step door is on : X", "door wants =, <, > or ! and a value"},
        {"step door = on but heat > 3 : X", "'and' or 'or' is wanted, not 'but'"},
        {"step door = on and : X", "the condition ends too early"},
        {"step door = on for 3 : X", "the condition ends too early"},
        {"step door = : X", "the condition ends too early"},
        {"wrong many door = on : X", "points from 0 to 100 are wanted"},
        {"fault door = on : dor 1", "the machine knows no command 'dor 1'"},
        {"before powr off", "the machine knows no command 'powr off'"},
        {"machine colour=red", "there is no option 'colour'"},
        {"stop phase = ready : X", "there is no 'stop' in a lesson"},
    };
    for (const Case& each : kCases) {
        const Lesson read =
            readLesson(std::string(kHead) + std::string(each.line) + "\nstep phase = ready : Up\n");
        EXPECT_THAT(read.problems, ElementsAre("8: " + std::string(each.problem))) << each.line;
    }
    EXPECT_EQ(readLesson("title T\n").problems.size(), 1U);
}

/// A lesson of these lines, and what it tells of a session: commands of the machine, each after so many ms.
struct Act {
    std::int64_t ms;
    std::string_view command;
};
std::vector<std::string> told(std::string_view lines, const std::vector<Act>& acts) {
    const Lesson lesson = readLesson(std::string(kHead) + std::string(lines));
    EXPECT_THAT(lesson.problems, ElementsAre());
    std::vector<std::string> news;
    Classroom room(
        {}, [](std::string_view) {}, 0);
    room.told = [&](const std::string& line) { news.push_back(line); };
    std::int64_t now = 0;
    room.begin(lesson, now);
    for (const auto& [ms, command] : acts) {
        room.advance(now += ms);
        if (command == "hint") {
            room.hint();
        } else if (command.starts_with('>')) {
            room.receive(std::string(command.substr(1)) + "\r\n\x03", now);
        } else if (!command.empty()) {
            EXPECT_EQ(room.command(command, now), "") << command;
        }
    }
    return news;
}

TEST(LessonRun, TakesItsStepsInTheirOrderAndCountsEachWrongWayOnce) {
    EXPECT_THAT(told("step phase = ready : Up\n"
                     "step taken.KV+ > 1 and kvp changed : Twice\n"
                     "step door = on or rotor = on : Open\n"
                     "wrong 30 heat > 50 : Hot\n"
                     "hint 20 Look.\n",
                     {{2000, "door 1"}, // too early: its step has not come
                      {100, "heat 60"},
                      {100, "heat 0"},
                      {100, "heat 60"},
                      {100, "door 0"},
                      {100, ">KV+"},
                      {100, "hint"},
                      {100, "hint"},
                      {100, ">KV+"},
                      {400, "rotor 1"}}),
                ElementsAre("lesson step 1 Up", "lesson wrong 30 Hot", "lesson hint 20 Look.",
                            "lesson step 2 Twice", "lesson step 3 Open", "lesson solved 50 in 3 s"));
}

TEST(LessonRun, HoldsForItsTimeAndFaultsComeOnceOrAgain) {
    // A millisecond in a phase is enough to be seen, and 'for' begins anew whenever it breaks.
    EXPECT_THAT(told("fault phase = preparation for 0.4 s : door 1\n"
                     "fault again error = 0 and phase = ready for 1 s : error 7\n"
                     "step phase = starting : Begun\n"
                     "step door = on : Opened\n"
                     "step error = 7 for 2 s : Stood\n"
                     "step error = 0 : Gone\n"
                     "step error = 7 : Back\n",
                     {{1600, ">RX1"},
                      {0, "prepare"},
                      {399, ""},
                      {1, ""},
                      {1900, ">AR"},
                      {2999, ""},
                      {1, ">AR"},
                      {1000, ""}}),
                ElementsAre("lesson step 1 Begun", "lesson step 2 Opened", "lesson step 3 Stood",
                            "lesson step 4 Gone", "lesson step 5 Back", "lesson solved 100 in 7 s"));
}

} // namespace
} // namespace simulator::test
