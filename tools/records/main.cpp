#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include <QApplication>
#include <QDesktopServices>
#include <QScreen>
#include <QUrl>

#ifndef _WIN32
#include <unistd.h>
#endif

#include "FingerStyle.h"
#include "Instance.h"
#include "RecordsWindow.h"
#include "base/ProgramArguments.h"
#include "shell/TextFile.h"

namespace quillon {

namespace {

constexpr const char* kHelp = R"(Usage: quillon-records [FOLDER]

A window with what is recorded of the console's sessions: a visit is saved to a stick, its report read, two are compared,
the traffic of the running session followed. Recordings are read and never changed. The key "Records" of the console opens it.

FOLDER is that of the recordings, where it is not that of the console beside this program.
The words come from "texts.txt" and those of reports from "report.txt" where the console's own small files lie.
--help, -h: this text.
--version: the version.
)";

std::string contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

RecordsWindow::Setup setupFor(const QString& folder) {
    RecordsWindow::Setup setup;
    setup.home = homeFolders(QCoreApplication::applicationDirPath().toStdU16String());
    setup.folder =
        folder.isEmpty() ? recordingsFolder(setup.home) : std::filesystem::absolute(folder.toStdU16String());
    setup.screen = QGuiApplication::primaryScreen()->size();
    setup.sticks = mountedSticks;
    setup.openPage = [](const QString& file) { return QDesktopServices::openUrl(QUrl::fromLocalFile(file)); };
    // What is wrong with the first is the console's to tell; the rest of its texts are not for here.
    (void)readTexts(contentOf(setup.home.read / kTextFile), [&setup](const auto& name, const auto& text) {
        setup.texts.replace(name, text);
        return true;
    });
    for (const std::string& problem : setup.report.replace(contentOf(setup.home.read / "report.txt"))) {
        std::fprintf(stderr, "quillon-records: report.txt, %s\n", problem.c_str());
    }
    return setup;
}

/// As large as is comfortable, on a small screen all of it but the frame of the window.
QRect placeOn(const QRect& free) {
    constexpr int kFrame = 24;
    const QSize most(free.width(), free.height() - kFrame);
    QRect place(QPoint(), QSize(free.width() * 15 / 16, free.height() * 5 / 6)
                              .expandedTo(RecordsWindow::kSmallest)
                              .boundedTo(most));
    place.moveCenter(free.center() + QPoint(0, kFrame / 2));
    return place;
}

int show(const QString& folder) {
    Instance instance;
    if (!instance.isFirst() && instance.ask(folder)) {
        return 0;
    }
    applyFingerStyle(PanelSizes(QGuiApplication::primaryScreen()->size()));
    std::unique_ptr<RecordsWindow> window;
    QString shown;
    const auto open = [&window, &shown](const QString& wanted) {
        if (!window || (shown != wanted && !wanted.isEmpty())) {
            shown = wanted;
            window = std::make_unique<RecordsWindow>(setupFor(wanted));
            window->setGeometry(placeOn(QGuiApplication::primaryScreen()->availableGeometry()));
        }
        window->comeUp();
    };
    instance.onAsked = open;
    open(folder);
    return QApplication::exec();
}

} // namespace

} // namespace quillon

int main(int argc, char** argv) {
    quillon::ProgramArguments read =
        quillon::readArguments(std::vector<std::string>(argv + 1, argv + argc), {});
    if (read.words.size() > 1 && !read.help && !read.version && read.error.empty()) {
        read.error = "one folder at most";
    }
    if (const auto status = quillon::answerAtOnce(read, "quillon-records", quillon::kHelp)) {
        return *status;
    }
#ifndef _WIN32
    constexpr int kNice = 10; // the console beside it comes first
    [[maybe_unused]] const int nice = ::nice(kNice);
#endif
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORMTHEME")) {
        qputenv("QT_QPA_PLATFORMTHEME", "generic"); // nothing of the desktop's theme is used
    }
    QApplication::setDesktopSettingsAware(false);
    QGuiApplication::setDesktopFileName(QStringLiteral("quillon-records"));
    int shown = 1; // no word is one of Qt's
    const QApplication application(shown, argv);
    return quillon::show(read.words.empty() ? QString() : QString::fromLocal8Bit(read.words.front().c_str()));
}
