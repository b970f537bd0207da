#include "RecordsPicture.h"

#include <array>
#include <fstream>
#include <stdexcept>
#include <string>

#include <QApplication>
#include <QDeadlineTimer>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>

#include "qt/Look.h"
#include "shell/TextFile.h"
#include "tools/records/RecordsWindow.h"

namespace quillon {

namespace {

struct RecordedDay {
    const char* begun;
    int presses;
    int errors;
    bool spoke = true;
};

// clang-format off
constexpr std::array kDays{
    RecordedDay{"2025-12-04T10:02:00.000+01:00", 57,  1},
    RecordedDay{"2026-05-19T13:10:00.000+02:00", 212, 3},
    RecordedDay{"2026-11-25T07:21:00.000+01:00", 4,   0, false},
    RecordedDay{"2026-11-25T09:04:00.000+01:00", 31,  2},
};
// clang-format on

std::string recordingOf(const RecordedDay& day) {
    constexpr int kPace = 9; // s
    std::string text = "# Recorded by Quillon 0.1.0.\n# console V6.18\nscreen 1024 768\nstart\n# 0 clock ";
    text.append(day.begun).append("\nwait 500\n");
    text += day.spoke ? "rx \"VR3.07_QLC1\\r\\nST2\\r\\n\"\n" : "";
    for (int press = 0; press < day.presses; ++press) {
        text += "press Quillon.cmbResetError\nrelease Quillon.cmbResetError\nwait " +
                std::to_string(kPace * 1000) + "\n";
        if (press < day.errors) {
            text += "rx \"ST7\\r\\nER1" + std::to_string(press) + "\\r\\n\"\nwait 4000\nrx \"ST2\\r\\n\"\n";
        }
    }
    return text;
}

void goOnUntil(const std::function<bool()>& holds) {
    for (const QDeadlineTimer end(10'000); !holds();) {
        if (end.hasExpired()) {
            throw std::runtime_error("the list is not read");
        }
        QCoreApplication::processEvents();
    }
}

} // namespace

QImage recordsPicture(QSize screen, std::string_view texts) {
    const QTemporaryDir folder;
    const QByteArray ownHome = qgetenv("HOME");
    qputenv("HOME", folder.path().toLocal8Bit());
    const std::filesystem::path home =
        std::filesystem::path(folder.path().toStdString()) / ".local/state/quillon";
    RecordsWindow::Setup setup;
    setup.home = {home, home};
    setup.folder = recordingsFolder(setup.home);
    std::filesystem::create_directories(setup.folder);
    for (std::size_t i = 0; i < kDays.size(); ++i) {
        std::ofstream(setup.folder / partName(static_cast<std::int64_t>(i + 1), 0), std::ios::binary)
            << recordingOf(kDays.at(i));
    }
    setup.screen = screen;
    setup.sticks = [&folder] {
        return std::vector<Stick>{{QStringLiteral("KINGSTON"), folder.path(), 14'200'000'000}};
    };
    setup.openPage = [](const QString&) { return false; };
    (void)readTexts(texts, [&setup](const std::string& name, const std::string& text) {
        setup.texts.replace(name, text);
        return true;
    });
    const QFont font = QApplication::font();
    applyFingerStyle(PanelSizes(screen));
    QImage picture;
    {
        RecordsWindow window(setup);
        window.resize(
            QSize(screen.width() * 7 / 8, screen.height() * 5 / 6).expandedTo(RecordsWindow::kSmallest));
        window.show();
        const auto* list = window.findChild<QTableView*>(QStringLiteral("visits"));
        const auto complete = [list] {
            const QAbstractItemModel& model = *list->model();
            return model.rowCount() == static_cast<int>(kDays.size()) &&
                   model.index(model.rowCount() - 1, 4).data().toString() != QStringLiteral("\u2013");
        };
        goOnUntil(complete);
        for (QPushButton* key : window.findChildren<QPushButton*>(QStringLiteral("save0"))) {
            if (key->isVisible()) {
                key->click();
            }
        }
        QCoreApplication::processEvents();
        picture = window.grab().toImage();
    }
    QApplication::setStyle(QStringLiteral("fusion"));
    QApplication::setFont(font);
    qputenv("HOME", ownHome);
    return picture;
}

} // namespace quillon
