#include <algorithm>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include <QApplication>

#include "base/CodePage.h"
#include "qt/Look.h"
#include "qt/QtDesktop.h"
#include "qt/QtPower.h"
#include "qt/QtRuntime.h"
#include "qt/QtSerialPort.h"
#include "qt/QtStores.h"
#include "qt/Screen.h"
#include "qt/StartupTrace.h"
#include "qt/Tour.h"
#include "shell/Application.h"

namespace quillon {

namespace {

constexpr const char* kHelp =
    R"(Usage: quillon [SWITCH...]
Service console for X-ray generators.

  -Pn             COM port n, 1 to 6
  -S9600, -S19200 speed shown in the title
  -FitToScreen    the window covers the screen
  -ResetCounters  exposure counters can be reset
  -ORLA           calibration of the autotracking positioner
  -logFile        the traffic on the line goes to "log.txt"
  -swsync         key for exposures by software
  -d              the PC is never restarted

Any switch keeps the section CONFIG of "Quillon.ini" from being read.
Alone on the command line:
  --help          this text
  --version       the version
In front of all switches:
  --tour DIR      a look round without a display; pictures go to DIR

QUILLON_HOME names the directory of "Quillon.ini", "temp.ini", "error_info.txt" and
"log.txt"; without it, they lie beside the executable.
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

int run(const Options& options) {
    const SteadyClock clock;
    Schedule schedule(clock);
    const QtScheduleDriver driver(schedule);
    QtEventLoop loop(schedule);
    DiskFolder folder(DiskFolder::home());
    QtSerialPort port(folder);
    QtUserStore store(std::make_unique<QSettings>());
    QtDesktop desktop;
    QtPower power;

    Application application({schedule, loop, port, store, folder, desktop, power}, options.commandLine);
    // exit() and not quit(), which would ask the window first and be refused.
    application.onEnded = [] { QCoreApplication::exit(); };
    Screen screen(application.form(), application.input(),
                  {[&application](Twips width, Twips height) { application.resizeWindow(width, height); },
                   [&application] { application.requestClose(); }});
    application.setScreen(&screen);
    desktop.setWindow(&screen.window());
    const StartupTrace trace(screen.window());

    std::unique_ptr<Tour> tour;
    if (!options.tour.isEmpty()) {
        tour = std::make_unique<Tour>(application.form(), screen, application.input(), clock, options.tour);
        tour->onFinished = [] { QCoreApplication::exit(); };
    }
    application.start();
    if (!application.ended() && !(tour && tour->finished())) {
        QApplication::exec();
    }
    application.setScreen(nullptr);
    return tour && !tour->passed() ? 1 : 0;
}

} // namespace

} // namespace quillon

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
    if (arguments.size() == 1 && arguments[0] == "--help") {
        std::fputs(quillon::kHelp, stdout);
        return 0;
    }
    if (arguments.size() == 1 && arguments[0] == "--version") {
        std::puts("quillon " QUILLON_VERSION);
        return 0;
    }
    quillon::setUpQt();
    int shown = 1; // the switches are the console's, none of them is Qt's
    QApplication application(shown, argv);
    QApplication::setPalette(quillon::consolePalette());
    QApplication::setFont(quillon::consoleFont(10));
    return quillon::run(quillon::optionsOf(arguments));
}
