#include <csignal>

#include <QDBusConnection>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>

#include "Bench.h"
#include "qt/Convert.h"
#include "qt/EndRequest.h"
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
    schedule.post(0, [&] { ++ticks; });
    schedule.post(60'000, [&] { ++ticks; });
    QtEventLoop(schedule).processEvents();
    EXPECT_EQ(ticks, 2) << "what is due, and no wait for the rest";
}

TEST(QtDesktop, OneBoxIsUpAtATimeAndTimeGoesOn) {
    const SteadyClock clock;
    Schedule schedule(clock);
    const QtScheduleDriver driver(schedule, clock);
    QtDesktop desktop;
    std::string order;
    const auto expectBox = [](const QString& text, QMessageBox::StandardButton answer) {
        std::vector<QMessageBox*> up;
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (auto* box = qobject_cast<QMessageBox*>(widget); box != nullptr && box->isVisible()) {
                up.push_back(box);
            }
        }
        ASSERT_EQ(up.size(), 1U);
        EXPECT_EQ(up.front()->text(), text);
        EXPECT_EQ(up.front()->textFormat(), Qt::PlainText) << "what a file holds is shown as it is";
        up.front()->button(answer)->click();
    };
    schedule.post(20, [&] { order += desktop.ask("second", "2?") ? "second yes, " : "second no, "; });
    schedule.post(60, [&] { expectBox("1", QMessageBox::Ok); });
    schedule.post(90, [&] { expectBox("2?", QMessageBox::Yes); });
    desktop.message(BoxKind::Critical, "first", "1");
    EXPECT_EQ(order + "first", "second yes, first");

    // The buttons speak the console's language; who answers without looking refuses.
    desktop.setButtonWords([] { return QtDesktop::ButtonWords{"J\xE4", "N&o", "Gut"}; });
    for (const int code : {Qt::Key_Escape, Qt::Key_Return, Qt::Key_J}) {
        schedule.post(20, [code] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            EXPECT_EQ(box->button(QMessageBox::Yes)->text(), QStringLiteral("Jä"));
            EXPECT_EQ(box->button(QMessageBox::No)->text(), "N&&o");
            for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
                QKeyEvent event(type, code, Qt::NoModifier);
                QApplication::sendEvent(box->focusWidget() != nullptr ? box->focusWidget() : box, &event);
            }
            if (box->isVisible()) {
                box->reject();
            }
        });
        EXPECT_FALSE(desktop.ask("third", "3?")) << code;
    }
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
    store().write("", "TorvaneSerial", "Baudrate", "19200");
    store().write("Other", "TorvaneSerial", "Baudrate", "a, \"b\" \xE9");
    QtUserStore read = store();
    EXPECT_EQ(read.read("", "TorvaneSerial", "Baudrate"), "19200");
    EXPECT_EQ(read.read("Other", "TorvaneSerial", "Baudrate"), "a, \"b\" \xE9");
    EXPECT_FALSE(read.read("", "TorvaneSerial", "Port").has_value());
    read.removeSection("", "TorvaneSerial");
    EXPECT_FALSE(read.read("", "TorvaneSerial", "Baudrate").has_value());
    EXPECT_TRUE(read.read("Other", "TorvaneSerial", "Baudrate").has_value());
}

TEST(EndRequest, TheEndOfTheSessionIsServedBeforeTheSystemGoesOn) {
    EndRequest request;
    int served = 0;
    request.onSessionEnd = [&served] { ++served; };
    char nobody = 0; // the session's manager, whom nobody asks anything
    QMetaObject::invokeMethod(qApp, "commitDataRequest", Qt::DirectConnection,
                              QGenericArgument("QSessionManager&", &nobody));
    EXPECT_EQ(served, 1);
    QMetaObject::invokeMethod(qApp, "aboutToQuit", Qt::DirectConnection);
    EXPECT_EQ(served, 2);
}

#ifndef _WIN32
TEST(EndRequest, SignalsOfOneMomentAreOneRequestAndIgnoredOnesStayIgnored) {
    std::signal(SIGHUP, SIG_IGN);
    {
        EndRequest request;
        std::string served;
        request.onFirst = [&served] { served += "first "; };
        request.onAgain = [&served] { served += "again "; };
        std::raise(SIGHUP);
        rest(50);
        EXPECT_EQ(served, "");
        std::raise(SIGTERM);
        waitFor([&] { return !served.empty(); });
        std::raise(SIGINT);
        rest(550);
        EXPECT_EQ(served, "first ");
        std::raise(SIGTERM);
        EXPECT_TRUE(waitFor([&] { return served == "first again "; }));
    }
    std::signal(SIGHUP, SIG_DFL);
}
#endif

} // namespace
} // namespace quillon
