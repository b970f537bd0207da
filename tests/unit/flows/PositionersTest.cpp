#include "tests/unit/flows/Flow.h"

namespace quillon {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;
using testing::StartsWith;

class OrlaTest : public FlowTest {
protected:
    OrlaTest() {
        start("", "ORLA=YES\r\n");
        application->link().setStatusUpdateEnable(false);
        click("cmdOrla");
        wait(1000);
    }

    std::vector<std::string> set(std::string_view key) {
        forget();
        click(key);
        wait(1000);
        return sent;
    }
};

struct ValueCase {
    const char* text;
    const char* plus;  ///< what a row above zero sends; empty when it sends nothing
    const char* least; ///< the same for the row that takes zero
    bool cleared;      ///< whether the row above zero empties its box
};

class OrlaValue : public OrlaTest, public testing::WithParamInterface<ValueCase> {};

TEST_P(OrlaValue, IsTestedRoundedAndFilled) {
    const ValueCase& row = GetParam();
    const auto frames = [](const char* text) {
        return *text == 0 ? std::vector<std::string>{} : std::vector<std::string>{text};
    };
    type("txtSIDPlus", row.text);
    EXPECT_EQ(set("cmdSetSIDPlus"), frames(row.plus));
    EXPECT_EQ(control("txtSIDPlus").text(), row.cleared ? "" : row.text);
    type("txtSIDMinus", row.text);
    EXPECT_EQ(set("cmdSetSIDMinus"), frames(row.least));
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Values, OrlaValue, testing::Values(
    ValueCase{"5",     "URSSI+005", "URSSI-005", false},
    ValueCase{" 12 ",  "URSSI+012", "URSSI-012", false},
    ValueCase{"999",   "URSSI+999", "URSSI-999", false},
    ValueCase{"12.5",  "URSSI+012", "URSSI-012", false},
    ValueCase{"0.4",   "",          "URSSI-000", true},
    ValueCase{"1000",  "",          "",          true},
    ValueCase{"0",     "",          "URSSI-000", true},
    ValueCase{"-3",    "",          "",          true},
    ValueCase{"abc",   "",          "",          false},
    ValueCase{"",      "",          "",          false}));
// clang-format on

TEST_F(OrlaTest, EveryPositionIsToldUnderItsHeadAndShowsItsOwnReading) {
    struct Row {
        const char* stem;
        const char* head;
    };
    for (const Row& axis : {Row{"OTCLong", "PS"}, Row{"OTCTray", "PB"}, Row{"TubeAlfa", "AA"},
                            Row{"TubeBeta", "AB"}, Row{"SID", "SI"}}) {
        for (const Row& end : {Row{"Plus", "+"}, Row{"Zero", "+"}, Row{"Minus", "-"}}) {
            const bool zero = std::string_view(end.stem) == "Zero";
            if (zero && std::string_view(axis.head) == "SI") {
                continue;
            }
            const std::string position = std::string(axis.stem) + end.stem;
            const std::string number = zero ? "000" : "007";
            const std::string message = "URS" + std::string(axis.head) + end.head + number;
            if (!zero) {
                type("txt" + position, "7");
            }
            EXPECT_THAT(set("cmdSet" + position), ElementsAre(message));
            const std::string reading = decimalText(static_cast<double>(1000 + position.size()));
            report(message + reading);
            EXPECT_EQ(control("txt" + position + "ADC").text(), reading) << position;
            control("txt" + position + "ADC").setText("");
        }
    }
    // No answer has gone to a second box.
    for (const auto& each : application->console().controls()) {
        if (each->kind() == Kind::TextBox && each->name().ends_with("ADC")) {
            EXPECT_EQ(each->text(), "") << each->name();
        }
    }
}

TEST_F(OrlaTest, AnEndOfTheScaleWithoutAZeroPositionShowsTheReadingOfZero) {
    report("URSSI+0001111");
    report("URSSI-0002222");
    report("URSAB-0003333");
    EXPECT_EQ(control("txtSIDPlusADC").text(), "1111");
    EXPECT_EQ(control("txtSIDMinusADC").text(), "2222");
    EXPECT_EQ(control("txtTubeBetaMinusADC").text(), "3333");
}

class RemoteTest : public FlowTest {
protected:
    RemoteTest() {
        start("", "REMOTE=YES\r\n");
        click("cmdMultiRoom");
    }
};

TEST_F(RemoteTest, AParameterOfTheTableIsRoundedToWholeUnitsAndComesBackIntoTheBand) {
    report("URSCG0,0,1105,0,1115,0,0,0,");
    click("cmdNextCalibPoint");
    EXPECT_EQ(control("TxtParamCalib").text(), "110");
    click("cmdNextCalibPoint");
    EXPECT_EQ(control("TxtParamCalib").text(), "112");
    click("cmdNextCalibPoint");
    click("cmdUpParameter");
    EXPECT_EQ(control("TxtParamCalib").text(), "1");
    click("cmdDownParameter");
    EXPECT_EQ(control("TxtParamCalib").text(), "150");
}

struct TableCase {
    const char* table;
    const char* parameter1;
    const char* value1;
    const char* value4;
};

class RemoteTable : public RemoteTest, public testing::WithParamInterface<TableCase> {};

TEST_P(RemoteTable, IsReadFieldByField) {
    report(std::string("URSCG") + GetParam().table);
    EXPECT_EQ(control("LblParam1").caption(), GetParam().parameter1);
    EXPECT_EQ(control("LblValue1").caption(), GetParam().value1);
    EXPECT_EQ(control("LblValue4").caption(), GetParam().value4);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Tables, RemoteTable, testing::Values(
    TableCase{"1,2,3,4,5,6,7,8,",      "1",   "2",   "8"},
    TableCase{"1,2,3,4,5,6,7,8",       "1",   "2",   "---"}, // the last one has no end
    TableCase{"1,2,3,4,5,6,7,8,9,10,", "1",   "2",   "8"},
    TableCase{" 12x,,3,4,5,6,7,8,",    "12",  "0",   "8"},
    TableCase{"2.5,99999,3,4,5,6,7,8,", "2",  "---", "---"}, // it breaks off at what does not fit
    TableCase{"",                      "---", "---", "---"}));
// clang-format on

TEST_F(RemoteTest, AParameterThatNoMessageCanCarryIsMarkedAndNotSent) {
    report("URSCG0,0,32767,0,0,0,0,0,");
    report("URSRQ0100");
    click("cmdNextCalibPoint");
    ASSERT_EQ(control("TxtParamCalib").text(), "3277");
    forget();
    click("cmdStoreCalibPoint");
    wait(1400);
    EXPECT_EQ(control("TxtParamCalib").backColour(), kRefusedColour);
    EXPECT_THAT(sent, Not(Contains(StartsWith("URSCD"))));
    click("cmdUpParameter");
    EXPECT_EQ(control("TxtParamCalib").backColour(), kWindowColour);
}

TEST_F(RemoteTest, GivesTheModeButtonsTheStateTheyHad) {
    click("cmdMultiRoom");
    control("cmbManualCalibration").setEnabled(false);
    click("cmdMultiRoom");
    click("cmdMultiRoom");
    EXPECT_FALSE(control("cmbManualCalibration").enabled());
    EXPECT_FALSE(control("cmbConfiguration").enabled());
}

} // namespace
} // namespace quillon
