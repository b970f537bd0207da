#include <fstream>
#include <iterator>
#include <random>
#include <regex>
#include <set>
#include <sstream>

#include <gmock/gmock.h>

#include "console/GeneratorSummary.h"
#include "console/ctrQuillonConsole.h"
#include "link/TorvaneSerial.h"
#include "qt/Convert.h"
#include "qt/Look.h"
#include "qt/StatusBar.h"
#include "screenshots/Scenes.h"
#include "tests/qt/Inspection.h"

namespace quillon {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr QSize kWindow(1024, 768);

std::vector<std::string> findingsOf(Stage& stage) {
    return inspect(stage.screen(), stage.application().form());
}

std::string germanTexts() {
    std::ifstream file(QUILLON_SOURCE_DIR "/samples/texts-de.txt", std::ios::binary);
    file.exceptions(std::ios::failbit); // without the file there is nothing to test
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// The texts that are built in, and those of the second language.
class EveryScene : public testing::TestWithParam<std::tuple<bool, QSize>> {};

/// The smallest window, and those that fill screens of 640 x 480 to 1280 x 1024.
const auto kSizes = testing::Values(FormWindow::kSmallest, QSize(628, 468), QSize(788, 588), QSize(1012, 756),
                                    QSize(1268, 1012));
INSTANTIATE_TEST_SUITE_P(AllSizes, EveryScene, testing::Combine(testing::Bool(), kSizes),
                         [](const auto& row) {
                             return (std::get<0>(row.param) ? "German" : "English") +
                                    std::to_string(std::get<1>(row.param).width());
                         });

TEST_P(EveryScene, ShowsAllItsTextAndNothingLiesOverAnother) {
    const auto& [german, size] = GetParam();
    const std::string texts = german ? germanTexts() : std::string();
    std::map<std::string, Place> places;
    for (const Scene& scene : scenes()) {
        SCOPED_TRACE(scene.name);
        const auto stage = scene.staged(size, texts);
        EXPECT_THAT(findingsOf(*stage), IsEmpty());
        // At rest the whole of what is known of the generator, and not a part of its words.
        if (stage->screen().summary()->isVisible() && !stage->control("fraTorvaneSerial").visible()) {
            const std::string text = textOn(stage->screen(), stage->application().form());
            for (const SummaryLine& line : stage->application().indicators().summary.lines()) {
                EXPECT_THAT(text, HasSubstr(toQt(line.subject).toStdString()));
                EXPECT_THAT(text, HasSubstr(toQt(line.state).toStdString()));
            }
        }
        // From one state to the next everything stays where it is.
        for (const auto& control : stage->console().controls()) {
            if (control->has(Property::Geometry) && !control->name().empty()) {
                const auto [known, first] = places.emplace(pathOf(*control), control->place());
                EXPECT_EQ(known->second, control->place()) << known->first << " has moved";
            }
        }
    }
}

TEST(StatusBar, ShowsAllItsTextOnALargeScreenAndItsAlarmInTallLetters) {
    for (const std::string& texts : {std::string(), germanTexts()}) {
        for (const Scene& scene : statusScenes()) {
            EXPECT_THAT(inspectBar(scene.staged(QSize(1908, 1068), texts)->screen()), IsEmpty())
                << scene.name;
        }
    }
    constexpr double kCapitals = 2.3; // mm; they are read from an arm's length
    for (const QSize size : {FormWindow::kSmallest, QSize(788, 588), QSize(1012, 756), QSize(1268, 1012)}) {
        const auto stage = sceneNamed("error").staged(size);
        stage->screen().flush();
        const Words alarm = stage->screen().bar()->words().back();
        ASSERT_TRUE(alarm.text.startsWith("44  Anode"));
        EXPECT_GE(QFontMetrics(fitWords(alarm).font).capHeight(), panelPixels(kCapitals, size));
    }
}

/// The runs of letters outside of the marks "<12>" that stand for a replaced text.
std::vector<std::string> wordsOf(const std::string& text) {
    static const std::regex kMark("<[0-9]+>");
    static const std::regex kWord("[A-Za-z\x80-\xFF]+");
    const std::string plain = std::regex_replace(text, kMark, " ");
    return {std::sregex_token_iterator(plain.begin(), plain.end(), kWord), {}};
}

/// What has no language: units, abbreviations that stand on the machine, names and versions.
const std::set<std::string> kWithoutLanguage{
    "kVp", "mA",  "ms",  "mAs", "HU",   "SID", "ADC",  "PT",    "WS",      "E",       "COM",
    "RAD", "RF",  "AEC", "IC",  "DAEC", "WM",  "PPS",  "MAG",   "ABS",     "HW",      "SW",
    "DSI", "STD", "P",   "n",   "V",    "QLC", "Tomo", "Bucky", "Quillon", "Torvane", "Serial"};
/// What the scenes' generator, their table of errors and their operator say.
const std::array<std::string_view, 6> kGivenWords{
    "Anode of tube 2 does not reach its speed in time",
    "Exposures to come",
    "Collimator: field exceeds the cassette",
    "12a",
    "/dev/ttyUSB0: Permission denied, locked by process 1234 (minicom), /var/lock/LCK..ttyUSB0",
    "ttyUSB0"};

/// The words of a text that are neither marked nor without a language.
std::string unmarked(const std::string& text) {
    std::string left;
    std::string own = text;
    for (const std::string_view given : kGivenWords) {
        if (const auto at = own.find(given); at != std::string::npos) {
            own.erase(at, given.size());
        }
    }
    for (const std::string& word : wordsOf(own)) {
        left += kWithoutLanguage.contains(word) ? "" : word + " ";
    }
    return left;
}

TEST(Scenes, BetweenThemShowEachTextThatCanBeReplacedAndNoOther) {
    const std::vector<std::string> names =
        sceneNamed("power-up").staged(kWindow)->application().console().textNames();
    const auto mark = [](std::size_t number) { return "<" + std::to_string(number) + ">"; };
    std::string texts;
    for (std::size_t i = 0; i < names.size(); ++i) {
        texts += names[i] + "=" + mark(i) + "\n";
    }
    std::string seen;
    for (const Scene& scene : scenes()) {
        const auto stage = scene.staged(kWindow, texts);
        for (const auto& [path, text] : textsOn(stage->screen(), stage->application().form())) {
            seen += text + "\n";
            EXPECT_EQ(unmarked(text), "") << path << " in " << scene.name << " cannot be replaced";
        }
    }
    // The console has no key for the first; then what stands in message boxes, and what no scene comes to.
    const std::string elsewhere =
        " scmbCancel sBoxTitle sBoxYes sBoxNo sShutdownQuestion sRestartRefused sNoNumber sNoBaudrate "
        "sNoPort "
        "sCannotOpenPort TorvaneSerial.sInitialization TorvaneSerial.sPreparation TorvaneSerial.sRADExposure "
        "TorvaneSerial.sTubeTooHot TorvaneSerial.sResetError "
        "TorvaneSerial.sTube2RAD "
        "TorvaneSerial.sLow TorvaneSerial.sDirect TorvaneSerial.sOn ";
    for (std::size_t i = 0; i < names.size(); ++i) {
        // Their window is another program; here is the key to it.
        if (names[i].starts_with("sRecords") && names[i] != "sRecords" && names[i] != "sRecordsOn") {
            continue;
        }
        EXPECT_EQ(seen.find(mark(i)) != std::string::npos,
                  elsewhere.find(" " + names[i] + " ") == std::string::npos)
            << names[i];
    }
}

TEST(TouchTargets, AreAFingerWideInTheWindowThatFitsTheTouchPanel) {
    const struct {
        QSize fitted; // to a screen of 10 inches that is 12 pixels wider and higher
        int finger;   // 9 mm there
    } rows[] = {{{628, 468}, 29}, {{788, 588}, 36}, {{1012, 756}, 46}, {{1268, 1012}, 59}};
    for (const auto& [fitted, finger] : rows) {
        for (const Scene& scene : scenes()) {
            SCOPED_TRACE(std::string(scene.name) + " " + std::to_string(fitted.width()));
            const auto stage = scene.staged(fitted);
            EXPECT_THAT(smallTargets(stage->screen(), stage->application().form(), finger), IsEmpty());
        }
    }
}

/// The controls of the console and of the generator's keyboard.
std::vector<const Control*> controlsOf(Stage& stage) {
    std::vector<const Control*> all;
    for (ControlHost* host : {&stage.console(), static_cast<ControlHost*>(&stage.application().link())}) {
        for (const auto& control : host->controls()) {
            all.push_back(control.get());
        }
    }
    return all;
}

/// Where everything is and how large its text.
std::vector<std::string> places(Stage& stage) {
    stage.screen().flush();
    std::vector<std::string> all;
    for (const Control* control : controlsOf(stage)) {
        if (!control->has(Property::Geometry)) {
            continue;
        }
        std::ostringstream line;
        const Place& place = control->place();
        line << pathOf(*control) << ' ' << place.left << ' ' << place.top << ' ' << place.width << ' '
             << place.height << ' ' << (control->has(Property::Font) ? control->fontSize() : 0);
        if (const ControlView* view = stage.screen().view(*control)) {
            line << " at pixel " << view->x() << ' ' << view->y();
        }
        all.push_back(line.str());
    }
    return all;
}

void toDesignSize(Stage& stage) {
    constexpr Twips kBelowConsole = 250;
    stage.application().resizeWindow(12180, 9180 + kBelowConsole);
}

TEST(Resize, AThousandTimesAndBackLeavesEverythingInItsPlace) {
    Stage untouched({}, kWindow);
    toDesignSize(untouched);
    Stage stage({}, kWindow);
    std::mt19937 random(20240229);
    // Down to windows in which the panel is nothing but its icon.
    std::uniform_int_distribution<int> width(40, 1920);
    std::uniform_int_distribution<int> height(40, 1200);
    for (int i = 0; i < 1000; ++i) {
        stage.resize({width(random), height(random)});
    }
    EXPECT_NE(places(stage), places(untouched));
    toDesignSize(stage);
    EXPECT_EQ(places(stage), places(untouched));
    const Control& key = stage.control("cmbConfiguration");
    EXPECT_EQ(key.place(), (Place{9240, 3750, 2700, 840})) << "the place that the table gives it";
}

TEST(Lamps, StayLitWhileWhatTheyLieOnIsDisabled) {
    const auto stage = sceneNamed("all-lamps").staged(kWindow);
    Screen& screen = stage->screen();
    stage->control("cmdPrep").setBackColour(kPreparationColour);
    stage->control("cmdExposure").setBackColour(kExposureColour);
    const Control& value = stage->control("link.txtKVp");
    const auto look = [&screen](const Control& control) {
        screen.flush();
        return screen.view(control)->grab().toImage();
    };
    std::vector<std::pair<const Control*, QImage>> lit{{&value, look(value)}};
    for (const Control* control : controlsOf(*stage)) {
        if (control->lamp() && control->shown() && control->container() != &stage->console()) {
            lit.emplace_back(control, look(*control));
        }
    }
    EXPECT_EQ(lit.size(), 1 + 9U) << "preparation, exposure and the seven conditions of the generator";

    for (const std::string_view frame : {"fraTorvaneSerial", "fraPrepExp"}) {
        stage->control(frame).setEnabled(false);
    }
    for (const auto& [control, before] : lit) {
        EXPECT_EQ(look(*control) == before, control->lamp()) << control->name();
        EXPECT_FALSE(screen.view(*control)->isEnabled());
    }
    EXPECT_EQ(screen.view(stage->control("link.txtDoorOpenWarning"))->words()->background.rgb(), kAlarmFace);
}

TEST(Ranks, FollowWhatIsSaidAndAreToldWithoutColour) {
    const struct {
        std::string_view scene;
        std::string_view label;
        Role rank;
    } rows[] = {
        {"communications-error", "lblHelp", Role::Alarm},
        {"autocal-error", "lblHelp", Role::Alarm},
        {"error", "lblErrorDescription", Role::Alarm},
        {"error-back-up-timer", "lblErrorDescription", Role::Warning},
        {"autocal-ok", "lblHelp", Role::Good},
        {"autocal-expose", "lblHelp", Role::Prompt},
    };
    std::map<Role, QImage> looks;
    for (const auto& [scene, name, rank] : rows) {
        const auto stage = sceneNamed(scene).staged(kWindow);
        Control& label = stage->control(name);
        EXPECT_EQ(label.role(), rank) << scene;
        // The same words at the same place, so that what differs is the rank's look.
        label.setFontSize(12);
        label.setCaption("WORDS");
        stage->screen().flush();
        looks[rank] = stage->screen().view(label)->grab().toImage().convertToFormat(QImage::Format_Mono);
    }
    for (auto one = looks.begin(); one != looks.end(); ++one) {
        for (auto other = std::next(one); other != looks.end(); ++other) {
            int differ = 0;
            const int pixels = one->second.width() * one->second.height();
            for (int i = 0; i < pixels; ++i) {
                const QPoint at(i % one->second.width(), i / one->second.width());
                differ += one->second.pixelIndex(at) != other->second.pixelIndex(at) ? 1 : 0;
            }
            EXPECT_GT(differ * 20, pixels);
        }
    }
}

TEST(Ranks, KeysThatAnErrorKeepsBackLookDeadAndAreDead) {
    const auto stage = sceneNamed("error").staged(kWindow);
    const auto cured = sceneNamed("error").staged(kWindow);
    cured->click("cmbResetError");
    const auto look = [](Stage& at, std::string_view key) {
        at.screen().flush();
        return at.screen().view(at.control(key))->grab().toImage();
    };
    std::string refused;
    stage->screen().onRefused = [&refused](const Control& control, const std::string& why) {
        refused = control.name() + ": " + why;
    };
    for (const std::string_view key : {"cmbReadExposureCounters", "cmbConfiguration", "cmbAutocalibration",
                                       "cmbClose", "cmbManualCalibration"}) {
        refused.clear();
        const bool alive = key == "cmbManualCalibration";
        EXPECT_EQ(look(*stage, key) == look(*cured, key), alive) << key;
        EXPECT_EQ(stage->screen().admits(stage->control(key)), alive) << key;
        EXPECT_EQ(refused, alive ? "" : std::string(key) + ": reset the error first");
    }
}

// Text on the screens is measured in every scene; this is what none of them shows, and what is no text.
TEST(Contrast, SignsCanBeReadAndOutlinesThatTellSomethingStandOut) {
    constexpr double kVisible = 3;
    const QRgb active = screenColour(kActiveColour).rgb();
    const struct {
        double least;
        QRgb ink;
        std::vector<QRgb> grounds;
    } rows[] = {
        {kReadable, kField, {kStrongEdge, kAlarmInk, kInk}},
        {kReadable, kInk, {screenColour(kErrorFlashColour).rgb(), kField, kPressedFace}},
        {kVisible, kEdge, {kSurface}},
        {kVisible, kActiveMark, {kSurface, active}},
        {kVisible, kFocusRing, {kSurface, kFace}},
    };
    for (const auto& [least, ink, grounds] : rows) {
        for (const QRgb background : grounds) {
            EXPECT_GE(contrast(QColor(ink), QColor(background)), least)
                << std::hex << ink << " on " << background;
        }
    }
}

// The inspection itself: each fault that it is there for is made and has to be told.

TEST(Inspection, TellsOfTextThatDoesNotFitOrCannotBeReadAndOfWhatIsInTheWrongPlace) {
    const struct {
        void (*spoil)(Stage& stage);
        const char* finding;
    } rows[] = {
        {[](Stage& stage) {
             stage.control("cmbConfiguration")
                 .setCaption(
                     "Konfigurationseinstellungsverwaltungsvorschriftensammlungsverzeichnisherausgabe");
         },
         "cmbConfiguration \"Konfig"},
        {[](Stage& stage) {
             stage.control("fraRemote").setVisible(true);
             stage.control("txtRemoteSID").setText("1234567890123");
         },
         "txtRemoteSID \"1234567890123\" is clipped"},
        {[](Stage& stage) { stage.control("cmbClose").setBackColour(0x404040); },
         "cmbClose \"Close\" has a contrast of 1."},
        {[](Stage& stage) {
             stage.control("cmbConfiguration").setTop(stage.control("cmbManualCalibration").top() - 300);
         },
         "cmbConfiguration lies half under cmbManualCalibration"},
        {[](Stage& stage) { stage.control("cmbConfiguration").setWidth(6000); },
         "cmbConfiguration leaves Quillon"},
    };
    for (const auto& [spoil, finding] : rows) {
        const auto stage = sceneNamed("ready").staged(kWindow);
        EXPECT_THAT(findingsOf(*stage), IsEmpty());
        spoil(*stage);
        EXPECT_THAT(findingsOf(*stage), Contains(HasSubstr(finding)));
    }
    const auto stage = sceneNamed("ready").staged(kWindow);
    Control& key = stage->control("cmbClose");
    key.setHeight(300);
    stage->control("cmbReadExposureCounters").setTop(key.top() + key.height()); // no free area below
    EXPECT_THAT(smallTargets(stage->screen(), stage->application().form(), 45),
                ElementsAre(HasSubstr("cmbClose is ")));
}

} // namespace
} // namespace quillon
