#include "model/Positioner.h"

#include "tests/unit/model/LinkFixture.h"

namespace quillon {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using PositionerTest = LinkTest;

TEST_F(PositionerTest, ItsThreeAnswersBecomeEvents) {
    struct Row {
        std::string_view message;
        std::string_view event;
    };
    // clang-format off
    const Row rows[]{
        {"URSCG0100 0200",  "URSCalibrationGet(\"0100 0200\")"},
        {"URSCG",           "URSCalibrationGet(\"\")"},
        {"URSRQ12345",      "URSRequestADC(\"1234\")"},
        {"URSRQ1",          "URSRequestADC(\"1\")"},
        {"URSSG0012",       "URSSidGetResponse(12)"},
        {"URSSG00127",      "URSSidGetResponse(12)"},
        {"URSSG 9xy",       "URSSidGetResponse(9)"},
        {"URSSG12.5",       "URSSidGetResponse(12)"},
        {"URSSG",           "URSSidGetResponse(0)"},
        {"URSSGabcd",       "URSSidGetResponse(0)"},
    };
    // clang-format on
    link.setEventEnabled(false);
    for (const Row& row : rows) {
        EXPECT_THAT(eventsAfter(row.message), ElementsAre(row.event)) << "whether events are on or not";
    }
    EXPECT_THAT(eventsAfter("URSSG9e9"), IsEmpty());
}

TEST_F(PositionerTest, AnyOtherAnswerIsTheHosts) {
    msg("URSXX12");
    EXPECT_THAT(events, IsEmpty());

    std::vector<std::string> heard;
    Operations host;
    host.add("fmessOrla", [&heard](const std::string& value) { heard.push_back(value); });
    link.AddParentMessage("URS", "fmessOrla", host);
    for (const std::string_view message : {"URSXX12", "URS", "URSC", "URSCG1", "URSrq12", "URSSG9e9"}) {
        msg(message);
    }
    EXPECT_THAT(heard, ElementsAre("XX12", "", "C", "rq12"));
    EXPECT_THAT(events, ElementsAre("URSCalibrationGet(\"1\")"));
}

} // namespace
} // namespace quillon
