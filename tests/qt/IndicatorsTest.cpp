#include "console/ServiceSession.h"
#include "console/ctrQuillonConsole.h"
#include "qt/StatusBar.h"
#include "screenshots/Scenes.h"
#include "tests/qt/Bench.h"

namespace quillon {
namespace {

/// Without colour: a sign has to show to an operator who can't tell colours
/// apart.
QImage lookOf(Stage& stage, std::string_view name) {
    stage.screen().flush();
    return stage.screen().view(stage.control(name))->grab().toImage().convertToFormat(QImage::Format_Mono);
}

TEST(Indicators, AKeyThatWaitsLooksDifferentAtEverySizeAndItsCaptionStays) {
    for (const QSize size : {QSize(640, 480), QSize(1280, 1024)}) {
        const auto stage = sceneNamed("pending-configuration").staged(size);
        const QImage waits = lookOf(*stage, "link.cmbWS(3)");
        const QRect words = stage->screen().view(stage->control("link.cmbWS(3)"))->words()->place;
        stage->wait(11000);
        EXPECT_NE(waits, lookOf(*stage, "link.cmbWS(3)"));
        EXPECT_EQ(words, stage->screen().view(stage->control("link.cmbWS(3)"))->words()->place);
    }
}

TEST(Indicators, AValueFromBeforeTheSilenceLooksOldUntilItIsReported) {
    const auto stage = sceneNamed("silence").staged(QSize(640, 480));
    const QImage old = lookOf(*stage, "link.txtMACal");
    stage->report("MA0100");
    EXPECT_NE(lookOf(*stage, "link.txtMACal"), old);
}

TEST(Indicators, ALitKeyFromBeforeTheSilenceLooksOldUntilItIsReportedAgain) {
    const auto stage = sceneNamed("pending-configuration").staged(QSize(1012, 756));
    stage->report("WS1 FI11");
    const std::array<std::string_view, 2> keys{"link.cmbWS(0)", "link.cmbAECFieldCenter(1)"};
    const std::array before{lookOf(*stage, keys[0]), lookOf(*stage, keys[1])};
    stage->wait(10'000);
    for (std::size_t key = 0; key < keys.size(); ++key) {
        EXPECT_NE(lookOf(*stage, keys[key]), before[key]);
    }
    stage->report("WS1 FI11");
    for (std::size_t key = 0; key < keys.size(); ++key) {
        EXPECT_EQ(lookOf(*stage, keys[key]), before[key]);
    }
}

TEST(Indicators, AReplacedSIDLooksOldUntilItIsReportedAndTheWayBackIsLit) {
    const auto stage = sceneNamed("remote").staged(QSize(1012, 756));
    const QImage lit = lookOf(*stage, "cmdMultiRoom");
    const QImage stored = lookOf(*stage, "TxtStoredSID");
    stage->click("cmdSetNewSID");
    stage->wait(1000);
    EXPECT_NE(lookOf(*stage, "TxtStoredSID"), stored);
    stage->report("URSSG1250");
    EXPECT_EQ(lookOf(*stage, "TxtStoredSID"), stored);
    stage->click("cmdMultiRoom");
    stage->wait(2000); // what it sent is acknowledged
    EXPECT_NE(lookOf(*stage, "cmdMultiRoom"), lit);
}

TEST(Indicators, APressInVainIsToldAtTheFootAndBeginsNothing) {
    const struct {
        const char* scene;
        const char* key;
        const char* why;
    } rows[] = {
        {"status-no-step", "link.cmbMSCalDown", "ms -: the generator takes no step here"},
        {"status-fluoroscopy", "cmbManualCalibration",
         "Manual Calibration: not during preparation or exposure"},
        {"error", "cmbClose", "Close: reset the error first"},
    };
    for (const auto& [scene, key, why] : rows) {
        const auto stage = sceneNamed(scene).staged(QSize(1012, 756));
        stage->screen().flush();
        QWindow* window = stage->screen().window().windowHandle();
        const ControlView* view = stage->screen().view(stage->control(key));
        const QPointF at(view->mapTo(view->window(), view->rect().center()));
        for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            QMouseEvent event(type, at, at, at, Qt::LeftButton, Qt::LeftButton, {});
            QCoreApplication::sendEvent(window, &event);
        }
        QString told;
        for (const Words& words : stage->screen().bar()->words()) {
            told += words.text + "|";
        }
        EXPECT_TRUE(told.contains(why)) << told.toStdString();
        EXPECT_TRUE(stage->application().console().session().idle());
        EXPECT_FALSE(view->pressed());
    }
}

/// All that the foot tells.
std::string told(Stage& stage) {
    QString all;
    for (const Words& words : stage.screen().bar()->words()) {
        all += words.text + "|";
    }
    return all.toStdString();
}

TEST(Indicators, AValueThatIsNotTakenIsToldWithWhatMayStandThere) {
    const struct {
        const char* scene;
        const char* box;
        const char* value;
        const char* key;
        const char* told;
    } rows[] = {
        {"remote", "txtRemoteSID", "10000", "cmdSetNewSID", "|SID: 0 to 9999|"},
        {"remote", "TxtADCValueCalib", "", "cmdStoreCalibPoint", "|ADC Value: 0 to 9999|"},
        {"orla-tray", "txtOTCTrayPlus", "0", "cmdSetOTCTrayPlus", "Tray Position Calibration +: 1 to 999|"},
        {"orla-sid", "txtSIDMinus", "-1", "cmdSetSIDMinus", "|Min: 0 to 999|"},
    };
    for (const auto& [scene, box, value, key, words] : rows) {
        const auto stage = sceneNamed(scene).staged(QSize(1012, 756));
        stage->type(box, value);
        stage->touch(key);
        EXPECT_THAT(told(*stage), testing::HasSubstr(words));
    }
}

TEST(Indicators, CloseHasToBeHeldWhereAPositionersScreenIsOpen) {
    const auto stage = sceneNamed("remote").staged(QSize(1012, 756));
    stage->touch("cmbClose");
    EXPECT_THAT(told(*stage), testing::HasSubstr("Close: hold for 1 s to end the program"));
    EXPECT_TRUE(stage->application().console().session().idle());
    EXPECT_TRUE(stage->control("fraRemote").visible());
    stage->touch("cmbClose", 1100);
    EXPECT_TRUE(stage->application().console().session().is(Run::Closing));
    EXPECT_THAT(told(*stage), testing::Not(testing::HasSubstr("hold for")));

    const auto back = sceneNamed("remote").staged(QSize(1012, 756));
    back->touch("cmdMultiRoom");
    back->touch("cmbClose");
    EXPECT_TRUE(back->application().console().session().is(Run::Closing)) << "at rest it acts at once";
}

TEST(Indicators, TheFootAsksForTheTimeOnceASecondWhileItCounts) {
    const auto stage = sceneNamed("silence").staged(QSize(640, 480));
    int asked = 0;
    StatusBar bar(stage->application().indicators().status, &stage->screen().window());
    bar.onSecond = [&asked] { ++asked; };
    bar.sync();
    EXPECT_TRUE(waitFor([&asked] { return asked == 1; }));
    stage->report("ST6");
    bar.sync();
    EXPECT_FALSE(waitFor([&asked] { return asked == 2; }, 1200)) << "it answers again";
}

} // namespace
} // namespace quillon
