#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "screenshots/Scenes.h"
#include "tests/qt/Inspection.h"

namespace quillon {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class EveryScene : public testing::TestWithParam<QSize> {};

INSTANTIATE_TEST_SUITE_P(AllSizes, EveryScene,
                         testing::Values(QSize(640, 480), QSize(800, 600), QSize(1024, 768),
                                         QSize(1280, 1024)),
                         [](const auto& size) {
                             return std::to_string(size.param.width()) + "x" +
                                    std::to_string(size.param.height());
                         });

TEST_P(EveryScene, ShowsAllItsTextAndNothingLiesOverAnother) {
    std::map<std::string, Place> places;
    for (const Scene& scene : scenes()) {
        SCOPED_TRACE(scene.name);
        Stage stage(scene.installation, GetParam());
        scene.play(stage);
        EXPECT_THAT(inspect(stage.screen(), stage.application().form()), IsEmpty());
        // From one state to the next everything stays where it is.
        for (const auto& control : stage.console().controls()) {
            if (control->has(Property::Geometry) && !control->name().empty()) {
                const auto [known, first] = places.emplace(pathOf(*control), control->place());
                EXPECT_EQ(known->second, control->place()) << known->first << " has moved";
            }
        }
    }
}

TEST(TouchTargets, AreAFingerWideInTheWindowThatFitsTheTouchPanel) {
    constexpr QSize kFitted(1012, 756); // on a screen of 1024 x 768
    constexpr int kFinger = 45;         // 9 mm where 1024 pixels are 10 inches in the diagonal
    for (const Scene& scene : scenes()) {
        SCOPED_TRACE(scene.name);
        Stage stage(scene.installation, kFitted);
        scene.play(stage);
        EXPECT_THAT(smallTargets(stage.screen(), stage.application().form(), kFinger), IsEmpty());
    }
}

/// The inspection itself: each fault that it is there for is made and has to be told.
class InspectionTest : public testing::Test {
protected:
    InspectionTest() {
        scenes()[2].play(stage);
        EXPECT_THAT(findings(), IsEmpty());
    }
    std::vector<std::string> findings() { return inspect(stage.screen(), stage.application().form()); }

    Stage stage{{}, QSize(1024, 768)};
};

TEST_F(InspectionTest, TellsOfACaptionThatIsTooLong) {
    stage.control("cmbConfiguration").setCaption("Konfigurationseinstellungsverwaltung");
    EXPECT_THAT(findings(), ElementsAre(HasSubstr("cmbConfiguration \"Konfig")));
    stage.control("cmbConfiguration").setCaption("Configuration");
    EXPECT_THAT(findings(), IsEmpty());
    stage.control("lblError").setCaption("123456789012345");
    EXPECT_THAT(findings(), ElementsAre(HasSubstr("lblError \"1234")));
}

TEST_F(InspectionTest, TellsOfTextThatDoesNotFitABox) {
    stage.control("fraRemote").setVisible(true);
    stage.control("txtRemoteSID").setText("1234567890123");
    EXPECT_THAT(findings(), Contains(HasSubstr("txtRemoteSID \"1234567890123\" is clipped")));
}

TEST_F(InspectionTest, TellsOfWhatLiesOverAnotherOrLeavesItsPlace) {
    Control& key = stage.control("cmbConfiguration");
    key.setTop(key.top() + 300);
    EXPECT_THAT(findings(), Contains(HasSubstr("cmbConfiguration lies half under cmbManualCalibration")));
    key.setTop(key.top() - 300);
    key.setWidth(key.width() + 3000);
    EXPECT_THAT(findings(), Contains(HasSubstr("cmbConfiguration leaves Quillon")));
}

TEST_F(InspectionTest, TellsOfSmallTargetsAndPoorContrast) {
    stage.control("cmbClose").setHeight(600);
    EXPECT_THAT(smallTargets(stage.screen(), stage.application().form(), 45),
                ElementsAre(HasSubstr("cmbClose is ")));
    stage.control("cmbClose").setBackColour(0x404040);
    EXPECT_THAT(findings(), ElementsAre(HasSubstr("cmbClose \"Close\" has a contrast of 1.")));
}

} // namespace
} // namespace quillon
