#pragma once

#include <QObject>
#include <QProcess>

namespace desk {

/// The console beside the machine. Whoever is asked to end first, the machine answers until the console has
/// given it back and is gone.
class ConsoleProcess final : public QObject {
    Q_OBJECT

public:
    /// `home`: the folder of its files.
    ConsoleProcess(QString program, QStringList arguments, const QString& home);

    void start();
    [[nodiscard]] bool running() const { return process_.state() != QProcess::NotRunning; }
    /// Asks it to end, a second time without patience; `ended` follows, at once where it does not run.
    void end();

signals:
    /// `asked`: by `end`, and not by its own key.
    void ended(bool asked, int status);

private:
    QString program_;
    QStringList arguments_;
    QProcess process_;
    bool asked_ = false;
};

} // namespace desk
