#include "desk/ConsoleProcess.h"

#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>
#include <utility>

#include <QProcessEnvironment>
#include <QTimer>

#include "desk/EndSignals.h"

namespace desk {

namespace {

constexpr int kPatienceMs = 5000;

/// In the child. A Ctrl-C of the terminal comes to the desk alone, which asks the console once: a second
/// asking would not leave it the time to give the machine back. It does not stay behind either.
void beforeProgram() {
    EndSignals::restore();
    (void)::setpgid(0, 0);
    (void)::prctl(PR_SET_PDEATHSIG, SIGTERM);
}

} // namespace

ConsoleProcess::ConsoleProcess(QString program, QStringList arguments, const QString& home)
    : program_(std::move(program)), arguments_(std::move(arguments)) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QUILLON_HOME"), home);
    process_.setProcessEnvironment(environment);
    process_.setProcessChannelMode(QProcess::ForwardedChannels);
    process_.setChildProcessModifier(beforeProgram);
    connect(&process_, &QProcess::finished, this, [this](int code, QProcess::ExitStatus status) {
        emit ended(asked_, status == QProcess::NormalExit ? code : 1);
    });
    connect(&process_, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            qWarning("generator-desk: %s cannot be started: %s", qPrintable(program_),
                     qPrintable(process_.errorString()));
            emit ended(asked_, 1);
        }
    });
}

void ConsoleProcess::start() {
    asked_ = false;
    process_.start(program_, arguments_);
}

void ConsoleProcess::end() {
    if (!running()) {
        emit ended(true, 0);
        return;
    }
    asked_ = true;
    process_.terminate();
    QTimer::singleShot(kPatienceMs, this, [this] { process_.kill(); });
}

} // namespace desk
