#include "console/PendingKeys.h"
#include "console/ServiceSession.h"
#include "console/StatusLine.h"
#include "console/UnsavedValue.h"
#include "tests/unit/flows/Flow.h"

namespace quillon {
namespace {

using testing::ElementsAre;

class PendingTest : public FlowTest {
protected:
    PendingTest() { start(); }
};

// What a key sent is confirmed, or not, at the named time; a second later the key waits no more.
TEST_F(PendingTest, AKeyWaitsUntilWhatItSentIsAnsweredGivenUpOrThrownAway) {
    report("ST8");
    wait(1000);
    machine.port.onWritten = [](std::string_view) {};
    Control& key = application->link()["cmbDfltConfig"];
    Control& other = application->link().at("cmbConfTubeUp");
    indicators().pending.changed.connect(
        [changes = changes, &key](const Control* changed) { *changes += changed == &key ? 1 : 0; });
    const struct {
        const char* why;
        std::function<void()> ends;
        Milliseconds after;
    } rows[] = {
        {"acknowledged", [this] { report("AK"); }, 600},
        {"given up", [] {}, 1750}, // four times, and one time-out more
        {"thrown away",
         [this] {
             application->link().operations().call(
                 "SendMessage", std::array{Value{std::string("x")}, Value{std::int16_t{16383}}, Value{false},
                                           Value{std::int16_t{350}}, Value{true}});
         },
         600},
        {"the port is closed", [this] { application->link().setPortOpen(false); }, 600},
    };
    for (const auto& row : rows) {
        application->link().setPortOpen(true);
        *changes = 0;
        ASSERT_TRUE(application->input().click(key)) << row.why;
        EXPECT_TRUE(indicators().pending.waits(key)) << row.why;
        EXPECT_FALSE(indicators().pending.waits(other)) << row.why;
        wait(row.after - 1);
        EXPECT_TRUE(indicators().pending.waits(key)) << row.why;
        row.ends();
        wait(1);
        EXPECT_FALSE(indicators().pending.waits(key)) << row.why;
        EXPECT_EQ(*changes, 2) << row.why;
    }
}

TEST_F(PendingTest, AModesKeyWaitsAsLongAsItsRunWaitsForTheGenerator) {
    const auto waits = [this](std::string_view name) { return indicators().pending.waits(control(name)); };
    click("cmbManualCalibration");
    EXPECT_FALSE(waits("cmbManualCalibration")) << "it is the operator's turn";
    click("SelWSCal", "cmdOK");
    EXPECT_TRUE(waits("cmbManualCalibration"));
    wait(3000);
    report("ST6");
    wait(1000);
    EXPECT_TRUE(waits("cmbManualCalibration"));
    wait(1000);
    EXPECT_FALSE(waits("cmbManualCalibration"));
    click("cmbClose");
    wait(3000); // what its press sends is confirmed
    EXPECT_TRUE(waits("cmbClose"));
    report("ST1");
    EXPECT_FALSE(waits("cmbClose"));
    // What comes by itself is nobody's.
    report("ST6");
    report("ST9");
    ASSERT_TRUE(application->console().session().is(Run::HandingOver));
    EXPECT_FALSE(waits("cmbClose"));
}

TEST_F(PendingTest, AKeyThatIsGoneIsNobodysHand) {
    click("cmbManualCalibration");
    ASSERT_NE(panel("SelWSCal"), nullptr);
    const Control* before = nullptr;
    const Control* after = nullptr;
    Control& key = (*panel("SelWSCal"))["cmdOK"];
    key.on.click = [&] {
        before = application->input().gestureOwner();
        application->console().removeKeyed("SelWSCal");
        after = application->input().gestureOwner();
    };
    click("SelWSCal", "cmdOK");
    EXPECT_EQ(before, &key);
    EXPECT_EQ(after, nullptr);
}

TEST_F(PendingTest, AWorkstationThatWasAskedForIsWaitedForUntilItIsReported) {
    report("ST8\rWS1");
    wait(500);
    Control& key = application->link().at("cmbWS", 4);
    const Control& field = application->link()["txtCfgTube"];
    const auto press = [&] {
        ASSERT_TRUE(application->input().click(key));
        wait(2000); // acknowledged
        EXPECT_TRUE(indicators().pending.waits(key) && indicators().pending.outdated(field));
        EXPECT_EQ(indicators().status.doing().words, "WS5: waiting for the report");
    };
    const struct {
        const char* why;
        std::function<void()> ends;
        const char* words = "";
    } rows[] = {
        {"reported", [this] { report("WS5"); }},
        {"another one is reported", [this] { report("WS2"); }},
        {"another phase",
         [this] {
             report("ST7");
             report("ST8");
         }},
        {"given up", [this] { wait(9000); }, "WS5 was not reported"},
    };
    for (const auto& [why, ends, words] : rows) {
        report("WS1");
        press();
        ends();
        EXPECT_FALSE(indicators().pending.waits(key) || indicators().pending.outdated(field)) << why;
        EXPECT_EQ(indicators().status.doing().words, words) << why;
    }
    report("ST8");
    ASSERT_TRUE(application->input().click(*application->link().find("cmbConfTubeUp")));
    EXPECT_EQ(indicators().status.doing().words, "");
    report("WS5");
    ASSERT_TRUE(application->input().click(key));
    wait(2000);
    EXPECT_FALSE(indicators().pending.waits(key)) << "it is there already";
}

TEST_F(PendingTest, WhatWasNeverReportedIsNeitherOnNorOff) {
    const auto unknown = [this](PanelControl name, int index) {
        return PendingKeys::isUnknown(application->link().at(name, index));
    };
    const auto seen = [&unknown] {
        return std::vector{unknown("cmbAECFieldLeft", 0), unknown("cmbAECFieldRight", 0),
                           unknown("cmbAECFilmScreen", 0), unknown("cmbWS", 3)};
    };
    EXPECT_THAT(seen(), ElementsAre(true, true, true, true));
    report("WS2\rFI00\rFS11");
    EXPECT_THAT(seen(), ElementsAre(false, true, false, false)) << "one of a choice tells of all";
    report("ST1\rST2");
    EXPECT_THAT(seen(), ElementsAre(true, true, true, true)) << "it starts anew";
}

TEST_F(PendingTest, AChangedCalibrationValueIsToldUntilItIsStored) {
    report("ST6\rMA0100\rCV1234");
    wait(500);
    ControlHost& link = application->link();
    const auto change = [&] { ASSERT_TRUE(application->input().slide(link["sldCalValue"], 2000)); };
    const auto store = [&] { ASSERT_TRUE(application->input().click(link["cmbStoreCalValue"])); };
    const auto says = [this](const char* words) { EXPECT_EQ(indicators().status.doing().words, words); };
    const char* const changed = "Calibration value changed, not stored";
    const char* const left = "The calibration value was not stored";
    change();
    says(changed);
    store();
    says(changed);
    wait(2000);
    says("");
    change();
    wait(2000);
    machine.port.onWritten = [](std::string_view) {};
    store();
    wait(2500); // given up
    says(changed);
    ASSERT_TRUE(application->input().click(link["cmbMACalUp"])); // another station
    says(left);
    change();
    says(changed);
    report("ST2");
    says(left);
    wait(12000);
    click("cmbConfiguration");
    EXPECT_FALSE(indicators().unsaved.wasLeft()) << "something else has begun";
}

} // namespace
} // namespace quillon
