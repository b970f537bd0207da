#include <filesystem>
#include <fstream>
#include <iterator>

#include <QAccessible>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QTemporaryDir>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/file.h>
#include <unistd.h>

#include "console/RecordsTextTable.h"
#include "qt/RecordsKey.h"
#include "qt/StatusBar.h"
#include "screenshots/Scenes.h"
#include "shell/RecordingReader.h"
#include "shell/TextFile.h"
#include "tests/qt/Bench.h"
#include "tools/records/RecordsWindow.h"

namespace quillon {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using Kind = RecordingState::Kind;

constexpr QSize kWindow(1012, 756);

QString nameOf(QWidget& widget) {
    QAccessibleInterface* node = QAccessible::queryAccessibleInterface(&widget);
    return node == nullptr ? QString() : node->text(QAccessible::Name);
}

void strike(Stage& stage, int code) {
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, code, Qt::NoModifier);
        QCoreApplication::sendEvent(stage.screen().window().windowHandle(), &event);
    }
}

void tap(Stage& stage, QPoint place) {
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, place, place, place, Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(stage.screen().window().windowHandle(), &event);
    }
}

TEST(RecordsKey, TellsWhatBecomesOfTheRecording) {
    const auto stage = sceneNamed("ready").staged(kWindow);
    RecordsKey& key = *stage->screen().recordsKey();
    const std::pair<Kind, const char*> rows[] = {
        {Kind::Recording, "Records, recording"},
        {Kind::InMemory, "Records, recording in memory only, gone at logout"},
        {Kind::Full, "Records, the disk takes nothing"},
        {Kind::Off, "Records, recording is off"},
        {Kind::None, "Records, no recording"},
    };
    QImage before;
    for (const auto& [kind, name] : rows) {
        key.setState({kind, "000007"});
        EXPECT_EQ(nameOf(key).toStdString(), name);
        EXPECT_EQ(QAccessible::queryAccessibleInterface(&key)->role(), QAccessible::Button);
        const QImage now = key.grab().toImage();
        // Disk, memory and no recording at all have the sign of a warning in common.
        EXPECT_EQ(now == before, kind == Kind::Full) << name;
        before = now;
    }
    key.onPress = nullptr;
    EXPECT_THAT(nameOf(key).toStdString(), HasSubstr("is not installed"));
}

TEST(RecordsKey, OpensTheRecordsWhateverStandsAndTheSessionKnowsNothingOfIt) {
    for (const std::string_view scene : {"ready", "calibration-station", "counters-question", "error",
                                         "workstation", "calibration-entering"}) {
        SCOPED_TRACE(scene);
        const auto stage = sceneNamed(scene).staged(kWindow);
        int gestures = 0;
        stage->application().input().onGesture = [&gestures](Gesture, const Control&, std::string_view) {
            ++gestures;
        };
        stage->screen().flush();
        RecordsKey& key = *stage->screen().recordsKey();
        std::vector<std::string> opened;
        bool starts = true;
        key.onPress = [&](const std::string& folder) {
            opened.push_back(folder);
            return starts;
        };
        key.setState({Kind::Recording, "000007", "/records"});
        ASSERT_TRUE(key.isVisible());
        tap(*stage, key.geometry().center());
        strike(*stage, Qt::Key_F2);
        EXPECT_THAT(opened, testing::ElementsAre("/records", "/records"));
        EXPECT_EQ(gestures, 0);
        const auto foot = [&stage] {
            std::string all;
            for (const Words& words : stage->screen().bar()->words()) {
                all += words.text.toStdString();
            }
            return all;
        };
        key.setState({Kind::None, {}, {}, "Read-only file system"});
        strike(*stage, Qt::Key_F2);
        EXPECT_THAT(foot(), HasSubstr("no recording: Read-only file system"));
        starts = false;
        strike(*stage, Qt::Key_F2);
        EXPECT_THAT(foot(), HasSubstr("cannot be started"));
        key.onPress = nullptr;
        tap(*stage, key.geometry().center());
        EXPECT_THAT(foot(), HasSubstr("is not installed"));
    }
}

TEST(RecordsKey, GoesWhereTheActualParametersStand) {
    int hidden = 0;
    for (const Scene& scene : scenes()) {
        const auto stage = scene.staged(kWindow);
        stage->screen().flush();
        const bool parameters = stage->control("fraActualExposureParameters").visible();
        EXPECT_EQ(stage->screen().recordsKey()->isVisible(), !parameters) << scene.name;
        hidden += parameters ? 1 : 0;
    }
    EXPECT_GT(hidden, 0);
}

std::string contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

/// The records' window with two visits, worked by the keyboard.
class RecordsWindowTest : public testing::TestWithParam<bool> {
protected:
    RecordsWindowTest() {
        std::filesystem::create_directories(home / "recordings");
        put("000001.000.scn", first);
        put("000002.000.scn", second);
        RecordsWindow::Setup setup;
        setup.home = {home, home};
        setup.folder = recordingsFolder(setup.home);
        setup.screen = {640, 480};
        setup.sticks = [this] {
            return std::vector<Stick>{{"KINGSTON", folder.path() + "/stick", 14'200'000'000}};
        };
        setup.openPage = [this](const QString& file) {
            opened = contentOf(file.toStdString());
            return true;
        };
        if (GetParam()) {
            (void)readTexts(contentOf(QUILLON_SOURCE_DIR "/samples/texts-de.txt"),
                            [&setup](const auto& name, const auto& text) {
                                setup.texts.replace(name, text);
                                return true;
                            });
        }
        QDir().mkpath(folder.path() + "/stick");
        applyFingerStyle(PanelSizes(setup.screen));
        say = std::make_unique<Speech>(setup.texts);
        window = std::make_unique<RecordsWindow>(setup);
        window->resize(RecordsWindow::kSmallest);
        window->show();
        window->activateWindow();
        const auto* list = window->findChild<QTableView*>("visits");
        EXPECT_TRUE(waitFor([list] { return !list->selectionModel()->selectedRows().isEmpty(); }));
        waitFor([this] { return window->focusWidget() != nullptr; });
    }

    ~RecordsWindowTest() override {
        window.reset();
        QApplication::setStyle(QStringLiteral("fusion"));
        QApplication::setFont(font);
        QApplication::setPalette(QApplication::style()->standardPalette());
    }

    void put(const std::string& name, const std::string& text) const {
        std::ofstream(home / "recordings" / name, std::ios::binary) << text;
    }
    void type(int code) const {
        QWidget* at = window->focusWidget();
        ASSERT_NE(at, nullptr);
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, code, Qt::NoModifier);
            QCoreApplication::sendEvent(at, &event);
        }
        turn();
    }
    /// Tab, until the keyboard is there; and that can be seen.
    void tabTo(const char* name) const {
        for (int stops = 0; stops < 20 && window->focusWidget()->objectName() != QLatin1String(name);
             ++stops) {
            type(Qt::Key_Tab);
        }
        QWidget* at = window->focusWidget();
        ASSERT_EQ(at->objectName(), QLatin1String(name));
        const QImage marked = at->grab().toImage();
        at->clearFocus();
        EXPECT_NE(marked, at->grab().toImage()) << name;
        at->setFocus(Qt::TabFocusReason);
    }
    void pressKey(const char* name) const {
        tabTo(name);
        type(Qt::Key_Return);
    }
    [[nodiscard]] std::string saved(const std::string& name) const {
        return recordingTextOf(contentOf(std::filesystem::path(folder.path().toStdString()) / name)).text;
    }

    const std::string head = "# Recorded by Quillon 0.1.0.\n# console V6.18\nscreen 1024 768\nstart\n";
    const std::string first =
        head + "# 0 clock 2026-05-19T13:10:00.000+01:00\nrx \"ST2\\r\\n\"\nwait 60000\n";
    const std::string second = head + "# 0 clock 2026-11-25T09:04:00.000+01:00\nrx \"ST2\\r\\n\"\n"
                                      "# 5 tx \"HU\"\nwait 60000\n";
    QTemporaryDir folder;
    std::filesystem::path home{folder.path().toStdString()};
    std::string opened;
    const QFont font = QApplication::font();
    std::unique_ptr<Speech> say;
    std::unique_ptr<RecordsWindow> window;
};

INSTANTIATE_TEST_SUITE_P(Languages, RecordsWindowTest, testing::Bool(),
                         [](const auto& row) { return row.param ? "German" : "English"; });

TEST_P(RecordsWindowTest, SavesTheLastVisitByTheKeyboardAlone) {
    pressKey("save0");
    EXPECT_THAT(window->told().toStdString(), HasSubstr((*say)("sRecordsPull").toStdString()));
    EXPECT_EQ(saved("stick/quillon-2026-11-25-0904.scn.gz"), second);

    // The one before it, elsewhere, with its report.
    tabTo("visits");
    type(Qt::Key_Down);
    tabTo("withReport");
    type(Qt::Key_Space);
    pressKey("other");
    pressKey("here");
    EXPECT_EQ(saved("stick/quillon-2026-05-19-1310.scn.gz"), first);
    EXPECT_THAT(saved("stick/quillon-2026-05-19-1310.html"), HasSubstr("</html>"));

    // What cannot be written is told, and nothing of it is left.
    QDir(folder.path() + "/stick").removeRecursively();
    pressKey("save0");
    EXPECT_EQ(window->told().left(1), QStringLiteral("!"));
}

TEST_P(RecordsWindowTest, ReadsAndComparesVisitsAndTurnsTheSwitch) {
    pressKey("report");
    type(Qt::Key_Tab);
    type(Qt::Key_Return);
    EXPECT_THAT(opened, HasSubstr("</html>"));
    type(Qt::Key_Escape);

    pressKey("compare");
    type(Qt::Key_Down);
    type(Qt::Key_Return);
    const auto* text = window->findChild<QPlainTextEdit*>();
    ASSERT_TRUE(text->isVisible());
    EXPECT_LT(text->toPlainText().indexOf("2026-05-19"), text->toPlainText().indexOf("2026-11-25"))
        << "the earlier one stands first, whichever was marked first";
    type(Qt::Key_Escape);

    std::ofstream(home / "Quillon.ini", std::ios::binary) << "[CONFIG]\r\nPORT=2\r\n";
    pressKey("switch");
    EXPECT_EQ(contentOf(home / "Quillon.ini"), "[CONFIG]\r\nPORT=2\r\n[RECORDINGS]\r\nKEEP=NO\r\n");
    pressKey("switch");
    EXPECT_EQ(contentOf(home / "Quillon.ini"), "[CONFIG]\r\nPORT=2\r\n[RECORDINGS]\r\nKEEP=YES\r\n");
    std::vector<std::string> files;
    for (const FoundFile& file : filesOf(home / "recordings")) {
        files.push_back(file.name);
    }
    EXPECT_THAT(files, testing::UnorderedElementsAre("000001.000.scn", "000002.000.scn"));
}

TEST_P(RecordsWindowTest, FollowsTheSessionThatRunsAndStandsStillWhenScrolledUp) {
    // As its writer holds it.
    const int file = ::open((home / "recordings/000002.000.scn").c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(::flock(file, LOCK_EX), 0);
    const auto add = [this](int rows) {
        std::ofstream stream(home / "recordings/000002.000.scn", std::ios::binary | std::ios::app);
        for (; rows > 0; --rows) {
            stream << "rx \"KV081\\r\\n\"\nwait 10\n";
        }
    };
    add(1); // the list sees that it has grown, and that it runs
    const auto* list = window->findChild<QTableView*>("visits");
    ASSERT_TRUE(waitFor([&] { return list->model()->index(0, 2).data().toString() == "\u2013"; }, 10'000));
    pressKey("traffic");
    auto* table = window->findChild<QTableView*>("traffic");
    const int before = table->model()->rowCount();
    add(100);
    QElapsedTimer since;
    since.start();
    ASSERT_TRUE(waitFor([&] { return table->model()->rowCount() == before + 100; }));
    RecordProperty("delay", static_cast<int>(since.elapsed()));
    EXPECT_LT(since.elapsed(), 1000) << "a third of that on a PC that is not busy";
    QScrollBar* bar = table->verticalScrollBar();
    EXPECT_EQ(bar->value(), bar->maximum());
    bar->setValue(5);
    add(10);
    ASSERT_TRUE(waitFor([&] { return table->model()->rowCount() == before + 110; }));
    EXPECT_EQ(bar->value(), 5);
    pressKey("toEnd");
    EXPECT_EQ(bar->value(), bar->maximum());
    ::close(file);
}

TEST_P(RecordsWindowTest, KeysAreAFingerWideShowAllTheirWordsAndHaveNames) {
    const int finger = 29; // 9 mm on a panel of ten inches with 640 x 480
    const auto look = [this, finger](const char* page) {
        turn();
        EXPECT_EQ(window->size(), RecordsWindow::kSmallest) << page;
        for (QWidget* each : window->findChildren<QWidget*>()) {
            const auto* key = qobject_cast<QPushButton*>(each);
            if (!each->isVisible() || (key == nullptr && each->focusPolicy() == Qt::NoFocus)) {
                continue;
            }
            EXPECT_FALSE(nameOf(*each).isEmpty()) << page << ": " << each->objectName().toStdString();
            if (key != nullptr) {
                EXPECT_GE(std::min(key->width(), key->height()), finger) << key->text().toStdString();
                EXPECT_LE(key->fontMetrics().horizontalAdvance(key->text()), key->width() - 4)
                    << key->text().toStdString();
            }
        }
    };
    look("list");
    pressKey("report");
    look("report");
    type(Qt::Key_Escape);
    pressKey("other");
    look("place");
    type(Qt::Key_Escape);
    pressKey("traffic");
    look("traffic");
    EXPECT_EQ(window->findChild<QTableView*>("traffic")->model()->rowCount(), 1) << "the poll is left out";
    pressKey("withoutPoll");
    EXPECT_EQ(window->findChild<QTableView*>("traffic")->model()->rowCount(), 2);
}

} // namespace
} // namespace quillon
