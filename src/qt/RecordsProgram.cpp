#include "qt/RecordsProgram.h"

#include <QCoreApplication>
#include <QProcess>
#include <QStandardPaths>

namespace quillon {

QString recordsProgram() {
    const QString name = QStringLiteral("quillon-records");
    const QString beside = QStandardPaths::findExecutable(name, {QCoreApplication::applicationDirPath()});
    return beside.isEmpty() ? QStandardPaths::findExecutable(name) : beside;
}

bool startRecords(const QString& program, const std::string& folder) {
    QProcess process;
    process.setProgram(program);
    if (!folder.empty()) {
        process.setArguments({QString::fromStdString(folder)});
    }
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    return process.startDetached();
}

} // namespace quillon
