#include <algorithm>
#include <array>
#include <cstdio>
#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QList>

#include "LastScreens.h"
#include "RecordsPicture.h"
#include "Scenes.h"
#include "base/ProgramArguments.h"
#include "qt/Look.h"
#include "shell/RecordingReader.h"

namespace quillon {

namespace {

constexpr const char* kHelp = R"(Usage: quillon-screenshots DIRECTORY [PART OF A SCENE'S NAME [FILE OF TEXTS]]
       quillon-screenshots --last RECORDING DIRECTORY

Pictures of every scene whose name holds that part, at five sizes, in folders of DIRECTORY. With a file of texts, such
as samples/texts-de.txt, they show its language and are called so.
--last RECORDING: what its window showed in the last three seconds, from 000.png on.
--help, -h: this text.
--version: the version.

Ends with 0 when all was written, 1 when not, 2 when asked wrongly.
)";

constexpr std::array kSizes{QSize(640, 480), QSize(800, 600), QSize(1024, 768), QSize(1280, 1024),
                            QSize(1920, 1080)};

constexpr std::array kSwitches{ProgramSwitch{"--last", true}};

/// The colours of a picture, the most frequent first, as many as a palette holds.
QList<QRgb> paletteOf(const QImage& picture) {
    constexpr std::size_t kMost = 256;
    std::unordered_map<QRgb, int> counts;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            ++counts[picture.pixel(x, y)];
        }
    }
    std::vector<std::pair<int, QRgb>> colours;
    colours.reserve(counts.size());
    for (const auto& [colour, count] : counts) {
        colours.emplace_back(count, colour);
    }
    std::sort(colours.begin(), colours.end(), std::greater<>());
    colours.resize(std::min(colours.size(), kMost));
    QList<QRgb> palette;
    for (const auto& [count, colour] : colours) {
        palette.append(colour);
    }
    return palette;
}

/// A picture of few colours stays small with a palette of its own.
bool save(const QImage& picture, const QString& file) {
    constexpr int kSmallest = 0;
    const auto flags = Qt::ThresholdDither | Qt::AvoidDither;
    return picture.convertToFormat(QImage::Format_Indexed8, paletteOf(picture), flags)
        .save(file, "PNG", kSmallest);
}

/// What of all pictures is taken, and in which language.
struct Wanted {
    QDir directory;
    QString part;      ///< of the scenes' names; empty for all
    std::string texts; ///< the content of a file of texts
    QString suffix;    ///< of the pictures' names
};

/// False when the way to the picture was lost or it could not be written.
bool take(const std::function<QImage()>& picture, const QString& name, QSize size, const Wanted& wanted) {
    try {
        const QImage taken = picture();
        const QDir directory(
            wanted.directory.filePath(QStringLiteral("%1x%2").arg(size.width()).arg(size.height())));
        directory.mkpath(QStringLiteral("."));
        const QString file = directory.filePath(name + wanted.suffix + QStringLiteral(".png"));
        if (save(taken, file)) {
            return true;
        }
        std::fprintf(stderr, "cannot write %s\n", qPrintable(file));
    } catch (const std::exception& lost) {
        std::fprintf(stderr, "%s: %s\n", qPrintable(name), lost.what());
    }
    return false;
}

int takeAll(const Wanted& wanted) {
    int failed = 0;
    for (const QSize size : kSizes) {
        const auto takeNamed = [&](const QString& name, const std::function<QImage()>& picture) {
            if (name.contains(wanted.part)) {
                failed += take(picture, name, size, wanted) ? 0 : 1;
            }
        };
        for (const Scene& scene : scenes()) {
            takeNamed(QLatin1String(scene.name.data(), static_cast<qsizetype>(scene.name.size())),
                      [&] { return scene.staged(size, wanted.texts)->picture(); });
        }
        takeNamed(QStringLiteral("records-window"), [&] { return recordsPicture(size, wanted.texts); });
    }
    return failed == 0 ? 0 : 1;
}

std::optional<std::string> contentOf(const std::string& name) {
    QFile file(QString::fromLocal8Bit(name));
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "cannot read %s\n", name.c_str());
        return std::nullopt;
    }
    return file.readAll().toStdString();
}

int takeLast(std::string_view content, const QString& directory) {
    constexpr Milliseconds kStretch = 3'000;
    QDir().mkpath(directory);
    int count = 0;
    bool written = true;
    const bool played = lastScreens(recordingTextOf(content).text, kStretch, [&](const QImage& picture) {
        const QString place =
            QDir(directory).filePath(QStringLiteral("%1.png").arg(count++, 3, 10, QLatin1Char('0')));
        written = picture.save(place) && written;
    });
    return played && written ? 0 : 1;
}

} // namespace

} // namespace quillon

int main(int argc, char** argv) {
    quillon::ProgramArguments read =
        quillon::readArguments(std::vector<std::string>(argv + 1, argv + argc), quillon::kSwitches);
    if ((read.words.empty() || read.words.size() > 3) && !read.help && !read.version && read.error.empty()) {
        read.error = "a directory is needed, and two words more at most";
    }
    if (const auto status = quillon::answerAtOnce(read, "quillon-screenshots", quillon::kHelp)) {
        return *status;
    }
    read.words.resize(3);
    const QString directory = QString::fromLocal8Bit(read.words[0]);
    quillon::Wanted wanted{directory, QString::fromLocal8Bit(read.words[1]), {}, {}};
    const std::string recording = read.value("--last");
    const std::string& name = recording.empty() ? read.words[2] : recording;
    std::optional<std::string> content{""};
    if (!name.empty()) {
        content = quillon::contentOf(name);
        if (!content) {
            return 2;
        }
        // "texts-de.txt" makes "ready-de.png".
        wanted.suffix = QFileInfo(QString::fromLocal8Bit(name)).baseName().remove(QStringLiteral("texts"));
        wanted.texts = *content;
    }
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication::setStyle(QStringLiteral("fusion"));
    QGuiApplication::setQuitOnLastWindowClosed(false);
    const QApplication application(argc, argv);
    QApplication::setPalette(quillon::consolePalette());
    QApplication::setFont(quillon::consoleFont(10));
    return recording.empty() ? quillon::takeAll(wanted) : quillon::takeLast(*content, directory);
}
