#include "qt/Program.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <QApplication>
#include <QDateTime>
#include <QDeadlineTimer>
#include <QEvent>

#include "base/CodePage.h"
#include "base/Fault.h"
#include "base/ProgramArguments.h"
#include "base/Text.h"
#include "console/ConsoleTexts.h"
#include "console/ConsoleVersion.h"
#include "console/ctrQuillonConsole.h"
#include "qt/BlackBox.h"
#include "qt/Convert.h"
#include "qt/EndRequest.h"
#include "qt/Look.h"
#include "qt/Priority.h"
#include "qt/QtDesktop.h"
#include "qt/QtPower.h"
#include "qt/QtRuntime.h"
#include "qt/QtSerialPort.h"
#include "qt/QtStores.h"
#include "qt/RecordsKey.h"
#include "qt/RecordsProgram.h"
#include "qt/Screen.h"
#include "qt/Tour.h"
#include "runtime/HomeFolders.h"
#include "runtime/ProfileFile.h"
#include "shell/Application.h"
#include "shell/Recorder.h"
#include "shell/RecordingSwitches.h"
#include "shell/SwitchHints.h"

namespace quillon {

namespace {

constexpr const char* kHelp =
    R"(Usage: quillon [SWITCH...]
Service console for X-ray generators.

  -Pn             COM port n, 1 to 6
  -S9600, -S19200 speed shown in the title; the line stays at 19200
  -FitToScreen    a window as large as the screen
  -ResetCounters  no effect: the counters' reset keys are always there
  -ORLA           calibration of the autotracking positioner, until the first mode is entered
  -logFile        the traffic on the line goes to "log.txt"
  -swsync         offers Expose during preparation, where the workstation synchronises by software
  -d              a held "Close" closes the port and does not restart the PC

Any switch keeps the section CONFIG of "Quillon.ini" from being read, the port and the
positioner with it: add -P2 at a site on COM2.
Alone on the command line:
  --help, -h      this text
  --version       the version, and the one that the screen shows
In front of all switches:
  --tour DIR      a look round without an operator; pictures go to DIR. Without a display: QT_QPA_PLATFORM=offscreen

"Quillon.ini", "temp.ini", "error_info.txt", "texts.txt" and "log.txt" lie in the folder that QUILLON_HOME
names. Without it they lie beside the executable if there is a "Quillon.ini" or new files can be written;
if not, in quillon below XDG_CONFIG_HOME (~/.config), and the log in quillon below XDG_STATE_HOME
(~/.local/state).
Each session is recorded, in "recordings" beside the log; quillon-replay --list shows what is there, --save
takes it along. KEEP=NO in section RECORDINGS of "Quillon.ini" leaves it, QUILLON_RECORD=no for one start;
QUILLON_RECORD=FILE puts it in that file.
)";

/// What the process was asked for.
struct Options {
    std::string commandLine; ///< what the application gets, raw
    QString tour;            ///< where the pictures of a tour go; empty for none
};

Options optionsOf(const std::vector<std::string>& arguments) {
    Options options;
    auto next = arguments.begin();
    if (arguments.size() >= 2 && arguments[0] == "--tour") {
        options.tour = QString::fromLocal8Bit(arguments[1].c_str());
        next += 2;
    }
    for (; next != arguments.end(); ++next) {
        options.commandLine += (options.commandLine.empty() ? "" : " ") + *next;
    }
    options.commandLine = codePageFromUtf8(options.commandLine).value_or(options.commandLine);
    return options;
}

/// Help and version are asked for alone: beside others, every word is a switch of the console's.
std::optional<int> answered(const std::vector<std::string>& arguments) {
    if (arguments.size() != 1) {
        return std::nullopt;
    }
    ProgramArguments read = readArguments(arguments, {});
    read.error.clear();
    const auto status = answerAtOnce(read, "quillon", kHelp);
    if (status && read.version) {
        std::cout << "on the screen: " << kConsoleVersion << '\n';
    }
    return status;
}

/// Nothing of the desktop's theme is used, so nothing of it is loaded.
void setUpQt() {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORMTHEME")) {
        qputenv("QT_QPA_PLATFORMTHEME", "generic");
    }
    qputenv("QT_NO_GLIB", "1");
    QApplication::setStyle(QStringLiteral("fusion"));
    QApplication::setDesktopSettingsAware(false);
    QCoreApplication::setOrganizationName(QStringLiteral("Torvane"));
    QCoreApplication::setApplicationName(QStringLiteral("Quillon"));
    QGuiApplication::setQuitOnLastWindowClosed(false);
}

/// Brings a recorded session's time up to date before anything of the operator's is handed over.
class CatchUp final : public QObject {
public:
    explicit CatchUp(Recorder& recorder) : recorder_(recorder) { qApp->installEventFilter(this); }

    bool eventFilter(QObject* receiver, QEvent* event) override {
        // What the system sends, and timers, come from the event loop and never from inside a handler.
        if (event->type() == QEvent::Timer || (event->spontaneous() && receiver->isWindowType())) {
            recorder_.catchUp();
        }
        return false;
    }

private:
    Recorder& recorder_;
};

/// What QUILLON_RECORD asks for.
std::string recordAskedFor() {
    return fromQt(qEnvironmentVariable("QUILLON_RECORD"));
}

/// A look round is nobody's session; it is recorded where that is asked for.
bool mayRecord(const Options& options) {
    const std::string asked = recordAskedFor();
    return asked.empty() ? options.tour.isEmpty() : !equalsNoCase(asked, "no");
}

WallTime wallTime() {
    const QDateTime now = QDateTime::currentDateTime();
    return {now.toMSecsSinceEpoch(), now.offsetFromUtc() / 60};
}

/// Nothing when the session is not to be recorded, or can't be.
std::unique_ptr<Recorder> recorderFor(const Platform& machine, const DiskFolder& folder,
                                      const std::string& commandLine, BlackBox* box) {
    if (box == nullptr) {
        return nullptr;
    }
    const std::string name = recordAskedFor();
    RecordingPlace place;
    if (!name.empty()) {
        // Seen from where the program was started, unlike the installation's own files.
        place.file = QDir::current().absoluteFilePath(toQt(name)).toStdString();
    } else {
        const auto ini = machine.folder.read("Quillon.ini", kProfileFileLimit);
        const RecordingSwitches switches = recordingSwitches(ini.value_or(std::string()));
        if (!switches.keep) {
            return nullptr;
        }
        place.bound = switches.bytes;
        place.folder = recordingsFolder({{}, folder.writtenPath().toStdString()}).string();
        const QString memory = qEnvironmentVariable("XDG_RUNTIME_DIR");
        place.spare =
            memory.isEmpty() ? std::string() : (memory + QStringLiteral("/quillon/recordings")).toStdString();
    }
    std::string problem;
    auto file = box->record(place, problem);
    if (!file) {
        if (!name.empty()) {
            machine.desktop.message(BoxKind::Critical, kBoxTitle, "The recording cannot be written: " + name);
        }
        return nullptr;
    }
    return std::make_unique<Recorder>(machine, std::move(file), commandLine, wallTime);
}

/// The key to the records tells what becomes of this one, and opens their window.
void connectRecords(Screen& screen, QtDesktop& desktop, BlackBox* box, bool records) {
    RecordsKey& key = *screen.recordsKey();
    if (const QString program = recordsProgram(); !program.isEmpty()) {
        key.onPress = [program](const std::string& folder) { return startRecords(program, folder); };
    }
    desktop.setF2([&key] { key.act(); });
    if (!records) {
        key.setState({RecordingState::Kind::Off});
        return;
    }
    box->onState = [&key, box] { key.setState(box->state()); };
    box->onState();
}

/// The system wants the program to end: the generator is given back first.
void leave(Application& application, Recorder* recorder) {
    if (recorder != nullptr) {
        recorder->catchUp();
    }
    application.input().releaseAll();
    if (recorder != nullptr) {
        recorder->leaveRequested();
    }
    application.leave();
}

/// The same where the process is gone as soon as this returns.
void leaveAndWait(Application& application, Recorder* recorder) {
    constexpr int kWatchdog = 5000;
    if (application.ended()) {
        return;
    }
    leave(application, recorder);
    const QDeadlineTimer end(kWatchdog);
    while (!application.ended() && !end.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::WaitForMoreEvents);
    }
}

int run(const Options& options, BlackBox* box, const Watch& watch) {
    const SteadyClock clock;
    std::optional<BoxCloser> boxCloser;
    if (!options.tour.isEmpty()) {
        boxCloser.emplace(clock);
    }
    Schedule schedule(clock);
    QtScheduleDriver driver(schedule, clock);
    QtEventLoop loop(schedule);
    DiskFolder folder = DiskFolder::home();
    QtSerialPort port(folder, clock);
    QtUserStore store(std::make_unique<QSettings>());
    QtDesktop desktop;
    QtPower power;
    EndRequest endRequest;
    endRequest.onAgain = [&port] {
        port.close();
        std::_Exit(EXIT_SUCCESS);
    };

    const Platform machine{schedule, loop, port, store, folder, desktop, power};
    const std::unique_ptr<Recorder> recorder = recorderFor(machine, folder, options.commandLine, box);
    const Platform platform = recorder ? recorder->platform() : machine;
    platform.schedule.handlers().faulted.connect([](const Cause& cause, int fault) {
        std::fprintf(stderr, "quillon: fault %d ended %s\n", fault, textOf(cause).c_str());
    });
    Application application(platform, options.commandLine);
    // exit() and not quit(), which would ask the window first and be refused.
    application.onEnded = [&recorder] {
        if (recorder) {
            recorder->end();
        }
        QCoreApplication::exit();
    };
    Screen screen(application.form(), application.input(),
                  {[&application, &recorder](Twips width, Twips height) {
                       if (recorder) {
                           recorder->windowResized(width, height);
                       }
                       application.resizeWindow(width, height);
                   },
                   [&application, &recorder] {
                       if (recorder) {
                           recorder->closeRequested();
                       }
                       application.requestClose();
                   }},
                  application.indicators());
    if (recorder) {
        screen.onRefused = [&recorder](const Control& control, const std::string& why) {
            recorder->refused(control, why);
        };
    }
    application.setScreen(&screen);
    screen.window().setReadable();
    desktop.setWindow(&screen.window());
    desktop.setButtonWords([&application] {
        const ConsoleTexts& texts = application.console().texts();
        return QtDesktop::ButtonWords{texts.sBoxYes, texts.sBoxNo, texts.sBoxOK};
    });
    const bool wanted = box != nullptr && (recorder || box->state().kind == RecordingState::Kind::None);
    connectRecords(screen, desktop, box, wanted);
    driver.guard(screen.window());
    const Priority priority;
    const std::shared_ptr<void> watching = watch ? watch(driver, schedule, screen.window()) : nullptr;

    std::unique_ptr<Tour> tour;
    if (!options.tour.isEmpty()) {
        tour = std::make_unique<Tour>(application.form(), screen, application.input(), clock, options.tour);
        tour->onFinished = [] { QCoreApplication::exit(); };
    }
    std::optional<CatchUp> catchUp;
    if (recorder) {
        recorder->begin(application);
    }
    application.start();
    if (recorder) {
        recorder->started();
        catchUp.emplace(*recorder);
    }
    screen.setStart(QDateTime::currentDateTime().addMSecs(-platform.schedule.now()));
    endRequest.onFirst = [&application, &recorder] { leave(application, recorder.get()); };
    if (!tour) {
        endRequest.onSessionEnd = [&application, &recorder] { leaveAndWait(application, recorder.get()); };
    }
    if (!application.ended() && !(tour && tour->finished())) {
        QApplication::exec();
    }
    if (recorder) {
        recorder->end();
    }
    if (box != nullptr) {
        box->onState = nullptr;
    }
    application.setScreen(nullptr);
    return tour && !tour->passed() ? 1 : 0;
}

/// The edge of every handler that the event loop runs: a fault ends its handler and nothing else, and is told
/// where a developer finds it, by name where it ended a key's, a timer's or a message's.
class HandlerEdge final : public QApplication {
public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override {
        try {
            return QApplication::notify(receiver, event);
        } catch (const Fault& fault) {
            if (!fault.told()) {
                std::fprintf(stderr, "quillon: fault %d ended a handler of the window\n", fault.number());
            }
            return true;
        }
    }
};

} // namespace

int runProgram(int argc, char** argv, const Watch& watch) {
#ifndef _WIN32
    // Who reads the program's words may go; the generator is not left alone for that.
    std::signal(SIGPIPE, SIG_IGN);
#endif
    const std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
    if (const auto status = answered(arguments)) {
        return *status;
    }
    const Options options = optionsOf(arguments);
    std::optional<BlackBox> box;
    if (mayRecord(options)) {
        box.emplace(); // before Qt has threads
    }
    for (const std::string& hint : switchHints(options.commandLine)) {
        std::fprintf(stderr, "quillon: %s; \"quillon --help\" lists them\n", hint.c_str());
    }
    setUpQt();
    int shown = 1; // the switches are the console's, none of them is Qt's
    const HandlerEdge application(shown, argv);
    QApplication::setPalette(consolePalette());
    QApplication::setFont(consoleFont(10));
    return run(options, box ? &*box : nullptr, watch);
}

} // namespace quillon
