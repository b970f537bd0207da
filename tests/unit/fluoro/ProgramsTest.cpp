#include "tests/unit/base/Faults.h"
#include "tests/unit/fluoro/PanelTest.h"

namespace quillon {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Arguments = std::vector<Value>;

Arguments operator+(Arguments first, const Arguments& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

// Workstation, KVP, mA, ms, Focus, then the fields, film screen and density, or AEC, brightness, road
// mapping.
const Arguments kRad{1, 80, 100, 50, 0, 1, 0, 1, 0, 4};
const Arguments kDigital{2, 75, 12, 345, 0, 1, 7, 0};
// KVP, PPS, ABC, HighDose, Contrast, Tracking
const Arguments kFluoro{70, 3, 1, 0, 2, 5};
constexpr std::string_view kFluoroPart = "FLK070FLP03ABC1FLHD0FLC2KVT5";

Arguments texts(const Arguments& numbers) {
    Arguments all;
    for (const Value& value : numbers) {
        all.emplace_back(valueTo<std::string>(value));
    }
    return all;
}

class ProgramsTest : public PanelTest {
protected:
    ProgramsTest() { prepare({"ST2", "MD8"}); }

    std::vector<std::string> sentBy(std::string_view routine, const Arguments& arguments) {
        link.operations().call(routine, arguments);
        return sentSoon();
    }
};

TEST_F(ProgramsTest, LayoutsToTheByte) {
    struct Row {
        std::string_view textRoutine;
        std::string_view integerRoutine;
        Arguments arguments;
        std::string message;
    };
    const std::string fluoro(kFluoroPart);
    const std::string rad = "WS1FO0ET0FI101FS0FN4KV080MA00100MS00050";
    const std::string digital = "WS2FO0AEC1BR007RM0KV075MA00012MS00345";
    const std::vector<Row> rows{
        {"SendAPRRAD", "APRRAD", kRad, "SA" + rad},
        {"SendAPRDigital", "APRDigital", kDigital, "SC" + digital},
        {"SendAPRFluoro", "APRFluoro", Arguments{3} + kFluoro, "SBWS3" + fluoro},
        {"SendAPRRADFluoro", "APRRADFluoro", kRad + kFluoro, "SD" + rad + fluoro},
        {"SendAPRDigitalFluoro", "APRRADDigitalFluoro", kDigital + kFluoro, "SE" + digital + fluoro},
    };
    for (const Row& row : rows) {
        EXPECT_THAT(sentBy(row.textRoutine, texts(row.arguments)), ElementsAre(row.message));
        EXPECT_THAT(sentBy(row.integerRoutine, row.arguments), ElementsAre(row.message));
        EXPECT_EQ(faultOf([&] { (void)sentBy(row.textRoutine, Arguments{1}); }), Fault::kArgumentsRefused);
    }
}

TEST_F(ProgramsTest, TextsAndTheDigitalProgramGetFourIntervals) {
    put("RetriesInterval", 500);
    for (const auto& [routine, arguments, wait] : {std::tuple{"SendAPRRAD", texts(kRad), 2000},
                                                   {"APRRAD", kRad, 500},
                                                   {"APRFluoro", Arguments{3} + kFluoro, 500},
                                                   {"APRRADFluoro", kRad + kFluoro, 500},
                                                   {"APRRADDigitalFluoro", kDigital + kFluoro, 500},
                                                   {"APRDigital", kDigital, 2000}}) {
        settle();
        forget();
        link.operations().call(routine, arguments);
        advance(wait - 1);
        EXPECT_THAT(sent, IsEmpty()) << routine;
        advance(1);
        EXPECT_THAT(sent, testing::SizeIs(1)) << routine;
    }
}

TEST_F(ProgramsTest, OutsidePhase2NothingIsSent) {
    prepare({"ST7"});
    EXPECT_THAT(sentBy("SendAPRRAD", texts(kRad)), IsEmpty());
    EXPECT_EQ(link.timer("timerStatusUpdate").interval(), 1000);
    EXPECT_THAT(takeEvents(), ElementsAre("WrongPhase(\"SA\")"));
    link.setEventEnabled(false);
    EXPECT_THAT(sentBy("APRFluoro", Arguments{3} + kFluoro), IsEmpty());
    EXPECT_EQ(link.timer("timerStatusUpdate").interval(), 10000);
    EXPECT_THAT(takeEvents(), ElementsAre("WrongPhase(\"SBWS3" + std::string(kFluoroPart) + "\")"));
}

} // namespace
} // namespace quillon
