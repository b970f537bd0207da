#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QComboBox>
#include <QLineEdit>
#include <QPointingDevice>
#include <QProgressBar>
#include <QTouchEvent>

#include "desk/Places.h"
#include "desk/Window.h"
#include "tests/qt/Bench.h"

namespace desk {
namespace {

using quillon::rest;
using quillon::turn;
using quillon::waitFor;
using testing::ElementsAre;

class DeskTest : public testing::Test {
protected:
    DeskTest() {
        QObject::connect(&station, &Station::message, &window,
                         [this](qint64, const QString& text) { ++said[text.toStdString()]; });
        window.resize(window.minimumSize());
        window.show();
        turn();
    }

    static simulator::Options options() {
        simulator::Options quick;
        for (const char* each : {"startphase=2", "answer=0", "ack=0", "rotor=150"}) {
            EXPECT_EQ(applyOption(quick, each), "");
        }
        return quick;
    }

    static QString nameOf(QWidget* widget) {
        const QAccessibleInterface* node = QAccessible::queryAccessibleInterface(widget);
        return node == nullptr ? QString() : node->text(QAccessible::Name);
    }

    template <class Kind> Kind& the(const char* name) {
        for (Kind* each : window.findChildren<Kind*>()) {
            if (nameOf(each).startsWith(QLatin1String(name))) {
                return *each;
            }
        }
        throw std::runtime_error(std::string("there is no ") + name);
    }

    void stroke(int key, bool down) {
        QKeyEvent event(down ? QEvent::KeyPress : QEvent::KeyRelease, key, Qt::NoModifier);
        QCoreApplication::sendEvent(window.windowHandle(), &event);
    }

    /// The mouse, pressed, moved or let go in the middle of a widget; the events go to where it was pressed.
    void mouse(QEvent::Type type, QWidget& target, const QWidget& over) {
        const QPointF at = over.mapToGlobal(QPointF(over.width() / 2.0, over.height() / 2.0));
        const bool up = type == QEvent::MouseButtonRelease;
        QMouseEvent event(type, target.mapFromGlobal(at), at, Qt::LeftButton,
                          up ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&target, &event);
    }

    int hand() { return station.gauges().hand; }

    std::map<std::string, int> said;
    Station station{options(), ""};
    Window window{station, options()};
    QPushButton& prepare = the<QPushButton>("Prep");
    QPushButton& expose = the<QPushButton>("Expose");
};

TEST_F(DeskTest, AHeldKeyThatRepeatsIsOnePress) {
    stroke(Qt::Key_F6, true);
    for (int repeat = 0; repeat < 12; ++repeat) {
        rest(25);
        stroke(Qt::Key_F6, false);
        stroke(Qt::Key_F6, true);
    }
    stroke(Qt::Key_F6, false);
    EXPECT_EQ(said["PS1"], 1);
    EXPECT_EQ(said["XR1"], 1);
    EXPECT_TRUE(waitFor([this] { return hand() == 0; }));

    // A window that is left hears of no release.
    stroke(Qt::Key_F5, true);
    EXPECT_EQ(hand(), 1);
    QEvent left(QEvent::WindowDeactivate);
    QCoreApplication::sendEvent(window.findChild<SwitchBox*>(), &left);
    EXPECT_EQ(hand(), 0);
}

TEST_F(DeskTest, AFingerSlidesFromStageToStageAndAPressCanStay) {
    mouse(QEvent::MouseButtonPress, prepare, prepare);
    EXPECT_EQ(hand(), 1);
    mouse(QEvent::MouseMove, prepare, expose);
    EXPECT_EQ(hand(), 2);
    mouse(QEvent::MouseMove, prepare, prepare);
    EXPECT_EQ(hand(), 1);
    mouse(QEvent::MouseMove, prepare, the<QCheckBox>("Stay"));
    EXPECT_EQ(hand(), 0) << "it has slid off";
    mouse(QEvent::MouseButtonRelease, prepare, prepare);

    expose.click(); // as a screen reader does it
    EXPECT_EQ(hand(), 2);
    expose.click();
    EXPECT_EQ(hand(), 0);

    // Two fingers: one at the hand switch, one at the foot switch.
    auto& box = *window.findChild<SwitchBox*>();
    QPointingDevice fingers("fingers", 1, QInputDevice::DeviceType::TouchScreen,
                            QPointingDevice::PointerType::Finger, QInputDevice::Capability::Position, 2, 0);
    const auto touch = [&](QEvent::Type type, QEventPoint::State state) {
        const auto at = [&](int id, const QWidget& key) {
            const QPointF place = key.mapToGlobal(QPointF(key.rect().center()));
            return QEventPoint(id, state, place, place);
        };
        QTouchEvent event(type, &fingers, Qt::NoModifier,
                          {at(0, prepare), at(1, the<QPushButton>("Foot switch"))});
        QCoreApplication::sendEvent(&box, &event);
    };
    touch(QEvent::TouchBegin, QEventPoint::Pressed);
    EXPECT_EQ(hand(), 1);
    EXPECT_TRUE(box.footDown());
    touch(QEvent::TouchEnd, QEventPoint::Released);
    EXPECT_EQ(hand(), 0);
    EXPECT_FALSE(box.footDown());

    the<QCheckBox>("Stay").click();
    for (const int stays : {1, 0}) {
        mouse(QEvent::MouseButtonPress, prepare, prepare);
        mouse(QEvent::MouseButtonRelease, prepare, prepare);
        EXPECT_EQ(hand(), stays);
    }
}

TEST_F(DeskTest, APressWithoutEffectSaysWhyUntilTheNext) {
    (void)station.obey("door 1");
    const auto& box = *window.findChild<SwitchBox*>();
    stroke(Qt::Key_F7, true);
    EXPECT_EQ(box.complaint(), "No effect: the door is open");
    stroke(Qt::Key_F7, false);
    EXPECT_TRUE(waitFor([&] { return !box.footDown(); }));
    EXPECT_EQ(box.complaint(), "No effect: the door is open") << "letting go says nothing";
    (void)station.obey("door 0");
    stroke(Qt::Key_F5, true);
    EXPECT_EQ(box.complaint(), "");
}

TEST_F(DeskTest, EveryControlHasANameAndItsPlaceInTheSmallestWindow) {
    auto& tabs = *window.findChild<QTabWidget*>();
    for (int page = 0; page < tabs.count(); ++page) {
        tabs.setCurrentIndex(page);
        turn();
        for (auto* each : window.findChildren<QWidget*>()) {
            const bool control = qobject_cast<QAbstractButton*>(each) != nullptr ||
                                 qobject_cast<QComboBox*>(each) != nullptr ||
                                 qobject_cast<QAbstractSpinBox*>(each) != nullptr ||
                                 qobject_cast<QProgressBar*>(each) != nullptr ||
                                 qobject_cast<QTreeWidget*>(each) != nullptr ||
                                 (qobject_cast<QLineEdit*>(each) != nullptr &&
                                  qobject_cast<QAbstractSpinBox*>(each->parent()) == nullptr);
            if (!control || !each->isVisible() || qobject_cast<QTabBar*>(each->parent()) != nullptr) {
                continue;
            }
            const std::string name = nameOf(each).toStdString();
            EXPECT_NE(name, "") << each->metaObject()->className() << " on page " << page;
            EXPECT_GE(each->width(), each->minimumSizeHint().width()) << name;
            EXPECT_GE(each->height(), each->minimumSizeHint().height()) << name;
            const QRect place(each->mapTo(&window, QPoint()), each->size());
            EXPECT_TRUE(place.left() >= 0 && place.right() <= window.width()) << name;
        }
    }
    // Tab goes as one reads.
    tabs.setCurrentIndex(0);
    std::vector<std::string> order;
    the<QPushButton>("Mains").setFocus();
    for (int stop = 0; stop < 8; ++stop) {
        order.push_back(nameOf(QApplication::focusWidget()).toStdString());
        QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
        QCoreApplication::sendEvent(QApplication::focusWidget(), &tab);
    }
    EXPECT_THAT(order, ElementsAre("Mains ON", "Prep (F5)", "Expose (F6)", "Foot switch (F7)",
                                   "Stay where they are put", "Lesson", "No lesson: everything may be tried",
                                   "Begin"));
}

TEST_F(DeskTest, ALessonIsWorkedFromItsChoiceToItsEndAndHidesItsFaults) {
    window.offer(
        {simulator::readLesson("title Doors\ntask\nShut it.\nend\nmachine startphase=2\nbefore door 1\n"
                               "before silence on\nstep door = off : Shut\nwrong 20 rotor = on : Rotor\n"
                               "hint 10 Look.\nexplain\nSo it is.\nend\n")});
    auto& page = *window.findChild<LessonPage*>();
    auto& choice = *page.findChild<QComboBox*>();
    choice.setCurrentIndex(1);
    the<QPushButton>("Begin").click();
    turn();
    EXPECT_EQ(page.task(), "Doors\n\nShut it.");
    EXPECT_TRUE(the<QCheckBox>("Door open").isChecked());
    EXPECT_FALSE(the<QCheckBox>("Silent").isChecked());
    the<QPushButton>("Hint").click();
    the<QCheckBox>("Rotor").click();
    the<QCheckBox>("Door open").click();
    EXPECT_TRUE(waitFor([&] { return page.task() == "Solved, 70 points.\n\nSo it is."; }))
        << page.task().toStdString();

    choice.setCurrentIndex(0);
    the<QPushButton>("Begin").click();
    turn();
    EXPECT_EQ(page.task(), "");
    (void)station.obey("silence on");
    turn();
    EXPECT_TRUE(the<QCheckBox>("Silent").isChecked()) << "without a lesson it shows what is so";
}

TEST(DeskLine, KeepsTheLastMessagesAndGivesThemAsAScenario) {
    LinePage page;
    const auto add = [&](qint64 ms, bool console, const char* text) {
        page.add(ms, console, text, "meaning");
    };
    add(1000, true, "ST");
    add(1040, false, "ST2");
    add(2000, true, "ST");
    add(2040, false, "ST2"); // nothing new
    add(2050, true, "CF1");
    add(2350, false, "ST8");
    EXPECT_EQ(page.shown(), 3);
    EXPECT_EQ(page.asScenario().toStdString(),
              "# console: ST\nwait 40\nmsg ST2\n# console: ST\nwait 1000\nmsg ST2\n"
              "# console: CF1\nwait 310\nmsg ST8\n");
    page.findChild<QCheckBox*>()->click();
    EXPECT_EQ(page.shown(), 6);
    for (int more = 0; more < 600; ++more) {
        add(3000 + more, false, more % 2 == 0 ? "KV70" : "HE1");
    }
    EXPECT_EQ(page.shown(), 500);
    page.findChild<QCheckBox*>()->click();
    EXPECT_EQ(page.shown(), 250);
}

TEST(DeskPlaces, LeaveTheConsoleWhatItNeeds) {
    struct Case {
        QRect screen;
        QRect desk;
        QSize console;
    };
    const Case kCases[] = {{{0, 0, 1024, 768}, {632, 0, 392, 738}, {628, 738}},
                           {{0, 0, 1366, 768}, {910, 0, 456, 738}, {906, 738}},
                           {{0, 27, 1920, 1053}, {1280, 27, 640, 940}, {1276, 1023}},
                           {{0, 0, 800, 480}, {408, 0, 392, 600}, {404, 450}}};
    for (const Case& each : kCases) {
        const Places places = placesOn(each.screen, {392, 600});
        EXPECT_EQ(places.desk, each.desk) << each.screen.width();
        EXPECT_EQ(places.console, each.console) << each.screen.width();
    }
    EXPECT_EQ(consoleIni("/x", {600, 400}),
              "[CONFIG]\nPORT=1\nWidth=9000\nHeight=6000\n\n[PORTS]\nCOM1=/x\n");
    EXPECT_EQ(consoleIni("/x", QSize()), "[CONFIG]\nPORT=1\n\n[PORTS]\nCOM1=/x\n");
}

} // namespace
} // namespace desk
