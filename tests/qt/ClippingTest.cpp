#include <fstream>
#include <iterator>
#include <map>
#include <ostream>
#include <string>
#include <tuple>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "console/ctrQuillonConsole.h"
#include "screenshots/Scenes.h"
#include "tests/qt/Inspection.h"

namespace quillon {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// The operator's texts as they are built in, and in the second language.
struct Language {
    std::string_view name;
    std::string texts;
};

void PrintTo(const Language& language, std::ostream* out) {
    *out << language.name;
}

Language german() {
    std::ifstream file(QUILLON_SOURCE_DIR "/samples/texts-de.txt", std::ios::binary);
    file.exceptions(std::ios::failbit); // without the file there is nothing to test
    return {"German", {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()}};
}

using LanguageAndSize = std::tuple<Language, QSize>;

std::string nameOf(const testing::TestParamInfo<LanguageAndSize>& row) {
    const auto& [language, size] = row.param;
    return std::string(language.name)
        .append(std::to_string(size.width()))
        .append("x")
        .append(std::to_string(size.height()));
}

class EveryScene : public testing::TestWithParam<LanguageAndSize> {};

INSTANTIATE_TEST_SUITE_P(AllSizes, EveryScene,
                         testing::Combine(testing::Values(Language{"English", {}}, german()),
                                          testing::Values(QSize(640, 480), QSize(800, 600), QSize(1024, 768),
                                                          QSize(1280, 1024))),
                         &nameOf);

TEST_P(EveryScene, ShowsAllItsTextAndNothingLiesOverAnother) {
    const auto& [language, size] = GetParam();
    std::map<std::string, Place> places;
    for (const Scene& scene : scenes()) {
        SCOPED_TRACE(scene.name);
        const auto stage = scene.staged(size, language.texts);
        EXPECT_THAT(inspect(stage->screen(), stage->application().form()), IsEmpty());
        // From one state to the next everything stays where it is.
        for (const auto& control : stage->console().controls()) {
            if (control->has(Property::Geometry) && !control->name().empty()) {
                const auto [known, first] = places.emplace(pathOf(*control), control->place());
                EXPECT_EQ(known->second, control->place()) << known->first << " has moved";
            }
        }
    }
}

TEST(Scenes, BetweenThemShowEachTextThatCanBeReplaced) {
    const std::vector<std::string> names =
        sceneNamed("power-up").staged(QSize(1024, 768))->application().console().textNames();
    const auto mark = [](std::size_t number) {
        return std::string("<").append(std::to_string(number)).append(">");
    };
    std::string texts;
    for (std::size_t i = 0; i < names.size(); ++i) {
        texts.append(names[i]).append("=").append(mark(i)).append("\n");
    }
    std::string seen;
    for (const Scene& scene : scenes()) {
        const auto stage = scene.staged(QSize(1024, 768), texts);
        seen += textOn(stage->screen(), stage->application().form());
    }
    std::vector<std::string> unseen;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (seen.find(mark(i)) == std::string::npos) {
            unseen.push_back(names[i]);
        }
    }
    EXPECT_THAT(unseen, ElementsAre("scmbCancel")) << "the console has no such key";
}

TEST(TouchTargets, AreAFingerWideInTheWindowThatFitsTheTouchPanel) {
    constexpr QSize kFitted(1012, 756); // on a screen of 1024 x 768
    constexpr int kFinger = 45;         // 9 mm where 1024 pixels are 10 inches in the diagonal
    for (const Scene& scene : scenes()) {
        SCOPED_TRACE(scene.name);
        const auto stage = scene.staged(kFitted);
        EXPECT_THAT(smallTargets(stage->screen(), stage->application().form(), kFinger), IsEmpty());
    }
}

// The inspection itself: each fault that it is there for is made and has to be told.

constexpr QSize kWindow(1024, 768);

std::vector<std::string> findingsOf(Stage& stage) {
    return inspect(stage.screen(), stage.application().form());
}

TEST(Inspection, TellsOfTextThatDoesNotFitOrCannotBeReadAndOfWhatIsInTheWrongPlace) {
    const struct {
        void (*spoil)(Stage& stage);
        const char* finding;
    } rows[] = {
        {[](Stage& stage) {
             stage.control("cmbConfiguration").setCaption("Konfigurationseinstellungsverwaltung");
         },
         "cmbConfiguration \"Konfig"},
        {[](Stage& stage) { stage.control("lblError").setCaption("123456789012345"); }, "lblError \"1234"},
        {[](Stage& stage) {
             stage.control("fraRemote").setVisible(true);
             stage.control("txtRemoteSID").setText("1234567890123");
         },
         "txtRemoteSID \"1234567890123\" is clipped"},
        {[](Stage& stage) { stage.control("cmbClose").setBackColour(0x404040); },
         "cmbClose \"Close\" has a contrast of 1."},
        {[](Stage& stage) {
             Control& key = stage.control("cmbConfiguration");
             key.setTop(key.top() + 300);
         },
         "cmbConfiguration lies half under cmbManualCalibration"},
        {[](Stage& stage) {
             Control& key = stage.control("cmbConfiguration");
             key.setWidth(key.width() + 3000);
         },
         "cmbConfiguration leaves Quillon"},
    };
    for (const auto& [spoil, finding] : rows) {
        const auto stage = sceneNamed("ready").staged(kWindow);
        EXPECT_THAT(findingsOf(*stage), IsEmpty());
        spoil(*stage);
        EXPECT_THAT(findingsOf(*stage), Contains(HasSubstr(finding)));
    }
    const auto stage = sceneNamed("ready").staged(kWindow);
    stage->control("cmbClose").setHeight(600);
    EXPECT_THAT(smallTargets(stage->screen(), stage->application().form(), 45),
                ElementsAre(HasSubstr("cmbClose is ")));
}

} // namespace
} // namespace quillon
