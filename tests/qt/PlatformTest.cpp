#include <fstream>
#include <iterator>

#include <QDBusConnection>
#include <QDir>
#include <QFile>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>

#include "Bench.h"
#include "qt/Convert.h"
#include "qt/QtDesktop.h"
#include "qt/QtPower.h"
#include "qt/QtRuntime.h"
#include "qt/QtStores.h"

namespace quillon {
namespace {

TEST(QtScheduleDriver, TimersRunOnTimeInsideEveryLoop) {
    const SteadyClock clock;
    Schedule schedule(clock);
    const QtScheduleDriver driver(schedule, clock);
    int ticks = 0;
    int inner = 0;
    Timer slow(schedule);
    Timer fast(schedule, [&] { ++inner; });
    const Milliseconds start = clock.now();
    slow.setTick([&] {
        ++ticks;
        slow.stop();
        fast.start(10);
        EXPECT_TRUE(waitFor([&] { return inner >= 3; })) << "a handler that runs the loop holds nothing up";
    });
    slow.start(40);
    EXPECT_TRUE(waitFor([&] { return inner >= 5; }));
    EXPECT_EQ(ticks, 1);
    EXPECT_GE(clock.now() - start, 40 + 5 * 10) << "never early";
}

TEST(QtEventLoop, ServesWhatIsDueAndReturns) {
    const SteadyClock clock;
    Schedule schedule(clock);
    QtEventLoop loop(schedule);
    int served = 0;
    schedule.post(0, [&] { ++served; });
    schedule.post(60'000, [&] { ++served; });
    loop.processEvents();
    EXPECT_EQ(served, 1);
}

TEST(QtDesktop, OneBoxIsUpAtATimeAndTimeGoesOn) {
    const SteadyClock clock;
    Schedule schedule(clock);
    const QtScheduleDriver driver(schedule, clock);
    QtDesktop desktop;
    std::vector<std::string> order;
    const auto boxUp = [] {
        std::vector<QMessageBox*> up;
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (auto* box = qobject_cast<QMessageBox*>(widget); box != nullptr && box->isVisible()) {
                up.push_back(box);
            }
        }
        return up.size() == 1 ? up.front() : nullptr;
    };
    schedule.post(20, [&] { order.push_back(desktop.ask("second", "2?") ? "second yes" : "second no"); });
    schedule.post(60, [&] {
        ASSERT_NE(boxUp(), nullptr);
        EXPECT_EQ(boxUp()->text(), "1");
        boxUp()->accept();
    });
    schedule.post(90, [&] {
        ASSERT_NE(boxUp(), nullptr);
        EXPECT_EQ(boxUp()->text(), "2?");
        boxUp()->button(QMessageBox::Yes)->click();
    });
    desktop.message(BoxKind::Critical, "first", "1");
    order.emplace_back("first");
    EXPECT_EQ(order, (std::vector<std::string>{"second yes", "first"}));
}

// A system bus that is not there refuses everything, and nothing of this PC can be reached through it.
TEST(QtPower, ARestartThatNobodyCarriesOutIsRefusedWithTheReason) {
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nowhere/bus");
    ASSERT_FALSE(QDBusConnection::systemBus().isConnected());
    const Refusal refusal = QtPower().exitWindows(true, false);
    ASSERT_TRUE(refusal.has_value());
    EXPECT_NE(*refusal, "");
    EXPECT_NE(*refusal, "no answer");
}

TEST(DiskFolder, ReadsWithinItsLimitAndWritesThrough) {
    const QTemporaryDir directory;
    DiskFolder folder(directory.path());
    EXPECT_FALSE(folder.read("temp.ini", 100).has_value());
    const auto sink = folder.create("temp.ini");
    ASSERT_NE(sink, nullptr);
    EXPECT_TRUE(sink->write("[TM]\r\n"));
    EXPECT_TRUE(sink->write(std::string("\0\xFF", 2)));
    EXPECT_EQ(folder.read("temp.ini", 8), std::string("[TM]\r\n\0\xFF", 8)) << "while it is still open";
    EXPECT_FALSE(folder.read("temp.ini", 7).has_value());
    EXPECT_EQ(DiskFolder(directory.filePath("missing")).create("log.txt"), nullptr);

    // A path leads elsewhere, however its parts are separated.
    const QTemporaryDir other;
    ASSERT_NE(DiskFolder(other.path()).create("temp.ini"), nullptr);
    EXPECT_EQ(folder.read(fromQt(other.filePath("temp.ini")), 8), "");
    EXPECT_TRUE(folder.read("..\\" + fromQt(QDir(directory.path()).dirName()) + "\\temp.ini", 8).has_value());
}

TEST(DiskFolder, IsTheProgramsOwnOrElseTheUsers) {
    const QTemporaryDir own;
    EXPECT_EQ(DiskFolder::homeOf(own.path()).readPath(), own.path());

    // A folder that is not there can be written as little as one of the system's.
    const QString system = own.filePath("bin");
    const QTemporaryDir user;
    qputenv("XDG_CONFIG_HOME", user.filePath("config").toUtf8());
    qputenv("XDG_STATE_HOME", user.filePath("state").toUtf8());
    DiskFolder folder = DiskFolder::homeOf(system);
    EXPECT_EQ(folder.readPath(), user.filePath("config/quillon"));
    EXPECT_NE(folder.create("log.txt"), nullptr);
    EXPECT_TRUE(QFile::exists(user.filePath("state/quillon/log.txt")));

    qputenv("XDG_CONFIG_HOME", "relative");
    qunsetenv("XDG_STATE_HOME");
    folder = DiskFolder::homeOf(system);
    EXPECT_EQ(folder.readPath(), QDir::home().filePath(".config/quillon"));
    EXPECT_EQ(folder.writtenPath(), QDir::home().filePath(".local/state/quillon"));
    qunsetenv("XDG_CONFIG_HOME");
}

TEST(QtUserStore, KeepsValuesByApplicationSectionAndKey) {
    const QTemporaryDir directory;
    const auto store = [&] {
        return QtUserStore(std::make_unique<QSettings>(directory.filePath("store"), QSettings::IniFormat));
    };
    {
        QtUserStore written = store();
        written.write("", "TorvaneSerial", "Baudrate", "19200");
        written.write("Other", "TorvaneSerial", "Baudrate", "a, \"b\" \xE9");
    }
    QtUserStore read = store();
    EXPECT_EQ(read.read("", "TorvaneSerial", "Baudrate"), "19200");
    EXPECT_EQ(read.read("Other", "TorvaneSerial", "Baudrate"), "a, \"b\" \xE9");
    EXPECT_FALSE(read.read("", "TorvaneSerial", "Port").has_value());
    read.removeSection("", "TorvaneSerial");
    EXPECT_FALSE(read.read("", "TorvaneSerial", "Baudrate").has_value());
    EXPECT_TRUE(read.read("Other", "TorvaneSerial", "Baudrate").has_value());
}

} // namespace
} // namespace quillon
