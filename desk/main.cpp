// The simulated generator with the switches, lamps and gauges that a person standing at it has.

#include <algorithm>
#include <array>
#include <exception>
#include <iostream>
#include <optional>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <vector>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QScreen>
#include <QSocketNotifier>
#include <QStandardPaths>

#include "base/ProgramArguments.h"
#include "desk/ConsoleProcess.h"
#include "desk/EndSignals.h"
#include "desk/Places.h"
#include "desk/Tour.h"
#include "desk/Window.h"

namespace {

using namespace desk;

constexpr std::array kSwitches{
    quillon::ProgramSwitch{"--link", true},    quillon::ProgramSwitch{"--machine", true},
    quillon::ProgramSwitch{"--lesson", true},  quillon::ProgramSwitch{"--lessons", true},
    quillon::ProgramSwitch{"--console", true}, quillon::ProgramSwitch{"--tour", true},
    quillon::ProgramSwitch{"--home", true}};

constexpr const char* kHelp =
    R"(Usage: generator-desk [--link PATH] [--machine FILE] [--lessons DIR] [--lesson FILE] [KEY=VALUE...]
                      [--console PROGRAM [--home DIR] [--tour DIR] [-- ARGUMENT...]]

The simulated generator with a window: its switches, lamps and gauges, faults, and lessons. Its keys, and the
commands that come on standard input, are those of generator-sim; without --console the first line of the
output is the path of the device for the console to open.

  --link PATH        keeps a symbolic link to the device there
  --machine FILE     a machine's profile
  --lessons DIR      lessons to choose from; without it those that are installed
  --lesson FILE      begins with this lesson
  --console PROGRAM  starts the console beside it, with what stands behind --; both end together
  --home DIR         folder of that console's files; without it one of the training's own
  --tour DIR         a tour of the console, with pictures of both in DIR
  --help, -h         this text
  --version          the version
)";

struct Arguments {
    quillon::ProgramArguments read;
    QStringList console;
    simulator::Options options;
    std::optional<simulator::Lesson> lesson;
};

Arguments argumentsOf(int argc, char** argv) {
    Arguments all;
    const std::vector<std::string> given(argv + std::min(argc, 1), argv + argc);
    const auto mark = std::ranges::find(given, "--");
    all.read = quillon::readArguments({given.begin(), mark}, kSwitches);
    for (auto each = mark; each != given.end(); ++each) {
        if (each != mark) {
            all.console << QString::fromStdString(*each);
        }
    }
    std::string& error = all.read.error;
    if (all.read.has("--machine") && error.empty()) {
        error = applyProfileFile(all.options, all.read.value("--machine"));
    }
    for (const std::string& word : all.read.words) {
        if (error.empty()) {
            error = applyOption(all.options, word);
        }
    }
    if (const std::string file = all.read.value("--lesson"); !file.empty() && error.empty()) {
        all.lesson = simulator::readLessonFile(file);
        error = all.lesson->problems.empty() ? "" : file + ":" + all.lesson->problems.front();
    }
    return all;
}

/// Those of a folder, by their names. One that is wrong is told and left out.
std::vector<simulator::Lesson> lessonsOf(const QString& directory) {
    std::vector<simulator::Lesson> lessons;
    for (const QFileInfo& each :
         QDir(directory).entryInfoList({QStringLiteral("*.lesson")}, QDir::Files, QDir::Name)) {
        const std::string file = each.filePath().toStdString();
        simulator::Lesson lesson = simulator::readLessonFile(file);
        for (const std::string& problem : lesson.problems) {
            std::cerr << file << ":" << problem << "\n";
        }
        if (lesson.problems.empty()) {
            lessons.push_back(std::move(lesson));
        }
    }
    return lessons;
}

/// Beside the console. Where nobody can place a window, it has at least its size.
Places place(QWidget& window) {
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    const Places places = placesOn(screen, window.minimumSize());
    window.move(places.desk.topLeft());
    window.resize(places.desk.size());
    return places;
}

/// The folder that is the console's while it runs beside the desk, and never that of a console at a real
/// machine unless it is asked for.
QDir homeOf(const quillon::ProgramArguments& read) {
    const std::string given = read.value("--home");
    const QString own = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                        QStringLiteral("/quillon/training");
    QDir home(given.empty() ? own : QString::fromStdString(given));
    home.makeAbsolute();
    if (!home.mkpath(QStringLiteral("."))) {
        throw std::runtime_error(home.path().toStdString() + " cannot be made");
    }
    return home;
}

void prepareHome(const QDir& home, const std::string& link, QSize size) {
    const QString device =
        link.empty() ? home.filePath(QStringLiteral("generator")) : QString::fromStdString(link);
    QFile ini(home.filePath(QStringLiteral("Quillon.ini")));
    if (!ini.open(QIODevice::WriteOnly) || ini.write(consoleIni(device, size).toUtf8()) < 0) {
        throw std::runtime_error(ini.fileName().toStdString() + " cannot be written");
    }
    // The words of the machine's errors, where they are installed; those that are there already stay.
    const QString words = QStringLiteral("error_info.txt");
    (void)QFile::copy(QCoreApplication::applicationDirPath() +
                          QStringLiteral("/../share/doc/quillon/examples/") + words,
                      home.filePath(words));
}

/// Commands on standard input, as generator-sim takes them.
class Typed {
public:
    explicit Typed(Station& station) : station_(station), notifier_(STDIN_FILENO, QSocketNotifier::Read) {
        QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_, [this] { listen(); });
    }

private:
    void listen() {
        std::array<char, 1024> bytes{};
        const ssize_t count = ::read(STDIN_FILENO, bytes.data(), bytes.size());
        if (count <= 0) {
            notifier_.setEnabled(false);
            return;
        }
        partial_.append(bytes.data(), static_cast<std::size_t>(count));
        for (auto end = partial_.find('\n'); end != std::string::npos; end = partial_.find('\n')) {
            if (const std::string answer = station_.obey(partial_.substr(0, end)); !answer.empty()) {
                std::cout << answer << std::endl;
            }
            partial_.erase(0, end + 1);
        }
    }

    Station& station_;
    QSocketNotifier notifier_;
    std::string partial_;
};

/// The console's life and the desk's: both end together, but in a lesson the desk goes on when the console is
/// closed, for that may be what the lesson wants.
void runBeside(ConsoleProcess& console, Window& window) {
    window.mayClose = [&console] {
        console.end();
        return false; // the machine answers until the console is gone
    };
    QObject::connect(&console, &ConsoleProcess::ended, &window, [&window](bool asked, int status) {
        if (asked || !window.inLesson()) {
            QCoreApplication::exit(status);
        } else {
            window.setConsoleClosed(true);
        }
    });
    QObject::connect(&window, &Window::consoleAsked, &console, [&] {
        window.setConsoleClosed(false);
        console.start();
    });
    console.start();
}

int run(int argc, char** argv, const Arguments& arguments, EndSignals& endSignals) {
    const quillon::ProgramArguments& read = arguments.read;
    QApplication application(argc, argv);
    applyLook(application);
    const bool beside = read.has("--console");
    const QDir home = beside ? homeOf(read) : QDir();
    const std::string link = read.value("--link");
    Station station(arguments.options,
                    link.empty() && beside ? home.filePath(QStringLiteral("generator")).toStdString() : link);
    Window window(station, arguments.options);
    QObject::connect(&station, &Station::lessonTold, &window,
                     [](const QString& line) { std::cout << line.toStdString() << std::endl; });
    window.offer(lessonsOf(read.has("--lessons") ? QString::fromStdString(read.value("--lessons"))
                                                 : QCoreApplication::applicationDirPath() +
                                                       QStringLiteral("/../share/quillon/lessons")));
    const Typed typed(station);
    const Places places = place(window);
    std::optional<ConsoleProcess> console;
    std::optional<Tour> tour;
    if (beside) {
        prepareHome(home, link, read.has("--tour") ? QSize() : places.console);
        QStringList words = arguments.console;
        if (read.has("--tour")) {
            const QString directory = QString::fromStdString(read.value("--tour"));
            words = QStringList{QStringLiteral("--tour"), directory} + words;
            tour.emplace(window, directory);
        }
        console.emplace(QString::fromStdString(read.value("--console")), words, home.path());
        runBeside(*console, window);
        endSignals.listen([&console] { console->end(); });
    } else {
        std::cout << station.path() << std::endl;
        endSignals.listen([] { QCoreApplication::exit(); });
    }
    const bool narrow = QGuiApplication::primaryScreen()->availableGeometry().width() < 1024;
    narrow&& console && !tour ? window.showMinimized() : window.show();
    if (arguments.lesson) {
        window.begin(&*arguments.lesson);
    }
    const int status = QApplication::exec();
    if (tour) {
        tour->look();
    }
    return status;
}

} // namespace

int main(int argc, char** argv) {
    const Arguments arguments = argumentsOf(argc, argv);
    if (const auto status = quillon::answerAtOnce(arguments.read, "generator-desk", kHelp)) {
        return *status;
    }
    EndSignals endSignals; // before any thread
    try {
        // What stands in the command line is not the toolkit's.
        return run(std::min(argc, 1), argv, arguments, endSignals);
    } catch (const std::exception& failure) {
        std::cerr << "generator-desk: " << failure.what() << "\n";
        return 1;
    }
}
