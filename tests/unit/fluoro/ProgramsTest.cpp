#include <gmock/gmock.h>
#include <gtest/gtest.h>

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
const Arguments kRad{1, 80, 100, 50, 0, 1, 0, 0, 0, 4};
const Arguments kDigital{2, 75, 12, 345, 1, 1, 7, 0};
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
    const std::string rad = "WS1FO0ET0FI100FS0FN4KV080MA00100MS00050";
    const std::string digital = "WS2FO1AEC1BR007RM0KV075MA00012MS00345";
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

TEST_F(ProgramsTest, DensityIsSentAsAStepExactInTextsAndRoundedInIntegers) {
    struct Row {
        std::string maximum;
        std::int32_t key;
        std::string text;
        std::string integer;
    };
    for (const Row& row : {Row{"8", 4, "4", "4"}, Row{"4", 4, "2", "2"}, Row{"5", 4, "2.5", "2"},
                           Row{"5", 5, "3.5", "4"}, Row{"3", 2, "-0.5", "0"}, Row{"3", 1, "-1.5", "-2"},
                           Row{"7", 0, "-0.5", "0"}, Row{"0", 4, "0", "0"}}) {
        SCOPED_TRACE(row.maximum + " " + std::to_string(row.key));
        msg("MD" + row.maximum);
        Arguments arguments = kRad;
        arguments.back() = row.key;
        const auto message = [](const std::string& density) {
            return "SAWS1FO0ET0FI100FS0FN" + density + "KV080MA00100MS00050";
        };
        EXPECT_THAT(sentBy("SendAPRRAD", texts(arguments)), ElementsAre(message(row.text)));
        EXPECT_THAT(sentBy("APRRAD", arguments), ElementsAre(message(row.integer)));
        EXPECT_THAT(sentBy("SendAPRRADFluoro", texts(arguments + kFluoro)),
                    ElementsAre("SD" + message(row.text).substr(2) + std::string(kFluoroPart)));
    }
}

TEST_F(ProgramsTest, TextsThatAreNoNumbersPassExceptTheDensity) {
    Arguments arguments{"a", "b", "c", "d", "", "f", "g", "h", "i", "4"};
    EXPECT_THAT(sentBy("SendAPRRAD", arguments), ElementsAre("SAWSaFOET0FIfghFSiFN4KVbMAcMSd"));
    arguments.back() = "x";
    EXPECT_EQ(faultOf([&] { link.operations().call("SendAPRRAD", arguments); }), Fault::kTypeMismatch);
    EXPECT_THAT(sentSoon(), IsEmpty());
    EXPECT_EQ(link.timer("timerStatusUpdate").interval(), 10000);
    EXPECT_EQ(faultOf([&] { link.operations().call("APRFluoro", Arguments{40000} + kFluoro); }),
              Fault::kArgumentsRefused);
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

TEST_F(ProgramsTest, WaitsForItsAcknowledgementByRoutine) {
    struct Row {
        std::string_view routine;
        Arguments arguments;
        Milliseconds wait;
    };
    link.setHandshaking(true);
    for (const Row& row :
         {Row{"SendAPRFluoro", texts(Arguments{3} + kFluoro), 800},
          Row{"SendAPRRADFluoro", texts(kRad + kFluoro), 800}, Row{"APRDigital", kDigital, 800},
          Row{"APRRAD", kRad, 200}, Row{"APRFluoro", Arguments{3} + kFluoro, 200},
          Row{"APRRADFluoro", kRad + kFluoro, 200}, Row{"APRRADDigitalFluoro", kDigital + kFluoro, 200}}) {
        SCOPED_TRACE(row.routine);
        call("KVPRequest"); // waits, and is thrown away
        forget();
        link.operations().call(row.routine, row.arguments);
        advance(4 * row.wait);
        ASSERT_EQ(timeline.size(), 4U);
        for (std::size_t sending = 0; sending < 4; ++sending) {
            const Milliseconds at = static_cast<Milliseconds>(sending + 1) * row.wait;
            EXPECT_THAT(timeline[sending], testing::StartsWith(std::to_string(at) + " S"));
        }
        settle();
    }
}

TEST_F(ProgramsTest, AcknowledgementsAndTechniqueWarningReachTheHostInAnyCase) {
    link.setEventEnabled(false);
    receive({"SA", "SC1", "SBx", "SD", "SE", "AT12", "AT x", "AT"});
    EXPECT_THAT(takeEvents(), ElementsAre("AcknowledgeAPRRAD()", "AcknowledgeAPRDigital()",
                                          "AcknowledgeAPRFluoro()", "AcknowledgeAPRRADFluoro()",
                                          "AcknowledgeAPRDigitalFluoro()", "APRTechniqueWarning(\"12\")"));
}

} // namespace
} // namespace quillon
