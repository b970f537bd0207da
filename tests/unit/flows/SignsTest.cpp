#include "console/Glance.h"
#include "tests/unit/flows/Flow.h"

namespace quillon {
namespace {

using testing::ElementsAre;

class SignsTest : public FlowTest {
protected:
    SignsTest() { start(); }
    [[nodiscard]] Signs signs() { return application->signs(); }
};

TEST_F(SignsTest, AtAGlanceStandsWhatTheGeneratorSaidLast) {
    const struct {
        std::vector<const char*> messages;
        const char* lines; ///< a mark in front of an alarm
    } rows[] = {
        {{}, "Generator=Ready;Errors since the start=0;"},
        {{"HE12", "DL1", "HL1"},
         "Generator=Ready;Tube heat=12 %;!Standing=Door open, Overheat;Errors since the start=0;"},
        {{"DL0", "HL0", "ST10"}, "!Generator=Tube too hot;Tube heat=12 %;Errors since the start=0;"},
        // One error, however often it is reported, until it is over.
        {{"ST7", "ER12", "ST7", "ER12"}, "!Generator=Error;Tube heat=12 %;Errors since the start=1;"},
        {{"ST2", "ER12", "AR0", "ER12", "AR1"}, "Generator=Ready;Tube heat=12 %;Errors since the start=4;"},
        {{"ST1"}, "Generator=Powering Up;Errors since the start=4;"},
    };
    int changes = 0;
    signs().glance.changed.connect([&] { ++changes; });
    for (const auto& row : rows) {
        for (const char* message : row.messages) {
            report(message);
        }
        std::string lines;
        for (const GlanceLine& line : signs().glance.lines()) {
            lines.append(line.alarm ? "!" : "").append(line.subject + "=" + line.state + ";");
        }
        EXPECT_EQ(lines, row.lines);
        EXPECT_EQ(std::exchange(changes, 0) > 0, !row.messages.empty());
    }
    std::vector<int> codes;
    for (const SessionError& error : signs().glance.errors()) {
        codes.push_back(error.code);
    }
    EXPECT_THAT(codes, ElementsAre(0, 12, 12, 12));
    EXPECT_EQ(signs().glance.errors()[0].words, "EXPOSURE ABORTED BY BACK-UP TIMER");
}

} // namespace
} // namespace quillon
