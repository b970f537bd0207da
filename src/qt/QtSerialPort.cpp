#include "qt/QtSerialPort.h"

#include <cstdio>
#include <utility>

#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QThread>

#ifndef _WIN32
#include <cerrno>
#include <csignal>

#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#endif

#include "base/Numbers.h"
#include "base/Text.h"
#include "qt/Convert.h"
#include "runtime/ProfileFile.h"

namespace quillon {

namespace {

constexpr int kWatchInterval = 1000;
constexpr int kDrainTime = 1000;  // ms that a close waits for the last bytes
constexpr int kRetryInterval = 5; // about two short frames at 19200 baud
constexpr std::size_t kLongestPath = 255;

/// Waits until all that was written is on the line. Without it the close would throw away what Qt still
/// holds, and change the speed under what the system holds.
void drain(QSerialPort& device) {
    const QDeadlineTimer end(kDrainTime);
    while (device.bytesToWrite() > 0 && device.waitForBytesWritten(static_cast<int>(end.remainingTime()))) {
    }
#ifndef _WIN32
    int held = 0;
    while (ioctl(device.handle(), TIOCOUTQ, &held) == 0 && held > 0 && !end.hasExpired()) {
        QThread::msleep(1);
    }
    if (device.bytesToWrite() == 0 && held == 0) {
        tcdrain(device.handle()); // the last bytes, which are in the device itself
    }
#endif
}

/// The file that locks the device; empty when there is none.
QString lockFileOf(const QString& portName) {
    for (const char* directory : {"/var/lock", "/run/lock", "/var/spool/lock", "/tmp", "/var/tmp"}) {
        QString file =
            QStringLiteral("%1/LCK..%2").arg(QLatin1String(directory), QString(portName).replace(u'/', u'_'));
        if (QFileInfo::exists(file)) {
            return file;
        }
    }
    return {};
}

/// Who has locked the device; empty when nobody has.
QString lockOf(const QString& portName) {
    const QString file = lockFileOf(portName);
    qint64 process = 0;
    QString host;
    QString program;
    const bool told = !file.isEmpty() && QLockFile(file).getLockInfo(&process, &host, &program);
    return told ? QStringLiteral("process %1 (%2), ").arg(process).arg(program) + file : file;
}

/// The process that locked the device has ended.
bool lockLeft(const QString& portName) {
#ifdef _WIN32
    return false;
#else
    qint64 process = 0;
    QString host;
    QString program;
    const QString file = lockFileOf(portName);
    return !file.isEmpty() && QLockFile(file).getLockInfo(&process, &host, &program) && process > 0 &&
           host == QSysInfo::machineHostName() && kill(static_cast<pid_t>(process), 0) != 0 && errno == ESRCH;
#endif
}

std::string reasonOf(const QSerialPort& device, const QString& path) {
    QString reason = path + ": " + device.errorString();
    if (device.error() == QSerialPort::PermissionError) {
        if (const QString owner = lockOf(device.portName()); !owner.isEmpty()) {
            reason += ", locked by " + owner;
        }
    }
    return fromQt(reason);
}

} // namespace

std::optional<LineSettings> LineSettings::parse(std::string_view text) {
    const auto pieces = split(text, ",");
    if (pieces.size() != 4 || pieces[1].size() != 1) {
        return std::nullopt;
    }
    const int baudRate = toQt(pieces[0]).trimmed().toInt();
    const int dataBits = toQt(pieces[2]).trimmed().toInt();
    const int stopBits = toQt(pieces[3]).trimmed().toInt();
    if (baudRate <= 0 || dataBits < 5 || dataBits > 8 || stopBits < 1 || stopBits > 2) {
        return std::nullopt;
    }
    LineSettings settings{baudRate, QSerialPort::NoParity, static_cast<QSerialPort::DataBits>(dataBits),
                          stopBits == 1 ? QSerialPort::OneStop : QSerialPort::TwoStop};
    switch (lowerCase(pieces[1][0])) {
    case 'n':
        return settings;
    case 'e':
        settings.parity = QSerialPort::EvenParity;
        return settings;
    case 'o':
        settings.parity = QSerialPort::OddParity;
        return settings;
    default:
        return std::nullopt;
    }
}

QString devicePath(int port, const Folder& folder) {
    const std::string name = "COM" + std::to_string(port);
    const ProfileFile file(folder.read("Quillon.ini", kProfileFileLimit).value_or(std::string{}));
    const std::string path = file.read("PORTS", name, "", kLongestPath);
    if (!path.empty()) {
        return QString::fromLocal8Bit(path.data(), static_cast<qsizetype>(path.size()));
    }
#ifdef _WIN32
    return toQt(name);
#else
    return QStringLiteral("/dev/ttyS%1").arg(port - 1);
#endif
}

QtSerialPort::QtSerialPort(const Folder& folder, const Clock& clock)
    : folder_(folder), clock_(clock),
      backlog_([this](std::string_view frame, bool sent) { tellOutcome(frame, sent); }) {
    connect(&watch_, &QTimer::timeout, this, [this] { watch(); });
    connect(&retry_, &QTimer::timeout, this, [this] { pass(); });
    retry_.setInterval(kRetryInterval);
}

bool QtSerialPort::open(int port, std::string_view settings) {
    close();
    const std::optional<LineSettings> line = LineSettings::parse(settings);
    if (line) {
        port_ = port;
        path_ = devicePath(port, folder_);
        settings_ = *line;
        wanted_ = connectDevice();
    } else {
        failure_ = "COM" + std::to_string(port) + ": no settings of a line: " + std::string(settings);
    }
    if (line) {
        watch_.start(kWatchInterval);
    }
    if (!wanted_) {
        std::fprintf(stderr, "quillon: %s\n", failure_.c_str());
    }
    return wanted_;
}

void QtSerialPort::close() {
    wanted_ = false;
    failure_.clear();
    watch_.stop();
    const QDeadlineTimer end(kDrainTime);
    while (device_ != nullptr && !backlog_.empty() && !end.hasExpired()) {
        if (device_->bytesToWrite() == 0 || !device_->waitForBytesWritten(1)) {
            QThread::msleep(1);
        }
        pass();
    }
    if (device_ != nullptr) {
        device_->disconnect(this); // its signals are ignored from now on
        drain(*device_);
    }
    dropDevice();
}

void QtSerialPort::write(std::string_view frame) {
    if (!wanted_) {
        return;
    }
    backlog_.add(frame, clock_.now());
    if (device_ == nullptr) {
        backlog_.clear();
    } else {
        pass();
    }
}

void QtSerialPort::pass() {
    backlog_.pass(clock_.now(), [this](std::string_view frame) { return take(frame); });
    if (backlog_.empty()) {
        retry_.stop();
    } else if (!retry_.isActive()) {
        retry_.start();
    }
}

/// The device may fail in here; what waits is lost then, this frame included.
bool QtSerialPort::take(std::string_view frame) {
    if (inDevice() > 0 || !hasRoom()) {
        return false;
    }
    device_->write(frame.data(), static_cast<qint64>(frame.size()));
    if (device_ != nullptr) {
        device_->flush();
    }
    return device_ != nullptr;
}

/// Bytes that the device has taken and that are not out yet.
qint64 QtSerialPort::inDevice() const {
    if (device_ == nullptr) {
        return 0;
    }
    int queued = 0;
#ifndef _WIN32
    if (ioctl(device_->handle(), TIOCOUTQ, &queued) != 0) {
        queued = 0; // the driver does not know
    }
#endif
    return device_->bytesToWrite() + queued;
}

/// Without room a frame would lie in Qt's buffer, out of reach, for as long as the far end takes nothing.
bool QtSerialPort::hasRoom() const {
#ifdef _WIN32
    return device_ != nullptr;
#else
    if (device_ == nullptr) {
        return false;
    }
    pollfd line{device_->handle(), POLLOUT, 0};
    return poll(&line, 1, 0) > 0 && (line.revents & POLLOUT) != 0;
#endif
}

/// Empty when it cannot be opened. Qt takes a lock for each path and has no switch for it, and one that
/// another account's console left when it was killed may not be removed: a slash more, and the lock is
/// another one. While the device is open, Qt has the system refuse it to others.
std::unique_ptr<QSerialPort> QtSerialPort::openDevice() {
    constexpr qsizetype kMostLocks = 8;
    for (QString path = path_;; path.prepend(u'/')) {
        auto device = std::make_unique<QSerialPort>(path);
        device->setBaudRate(settings_.baudRate);
        device->setParity(settings_.parity);
        device->setDataBits(settings_.dataBits);
        device->setStopBits(settings_.stopBits);
        device->setFlowControl(QSerialPort::NoFlowControl);
        if (device->open(QIODevice::ReadWrite)) {
            return device;
        }
        const bool left = device->error() == QSerialPort::PermissionError && lockLeft(device->portName());
        if (!left || !path.startsWith(u'/') || path.size() > path_.size() + kMostLocks) {
            failure_ = "COM" + std::to_string(port_) + ": " + reasonOf(*device, path_);
            return nullptr;
        }
    }
}

std::string QtSerialPort::identity() const {
    const QString real = QFileInfo(path_).canonicalFilePath();
    QString text = path_;
    if (!real.isEmpty()) {
        text += real == path_ ? QString() : QStringLiteral(" = ") + real;
        const QDir names(QStringLiteral("/dev/serial/by-id"));
        for (const QFileInfo& name : names.entryInfoList(QDir::Files | QDir::System)) {
            text += name.canonicalFilePath() == real ? QStringLiteral(", ") + name.fileName() : QString();
        }
    }
    return text.toStdString();
}

bool QtSerialPort::connectDevice() {
    auto device = openDevice();
    if (!device) {
        return false;
    }
    // A line hears nothing while it is closed, whatever the system kept of that time.
    device->clear();
    device->clearError();
    failure_.clear();
    device_ = std::move(device);
    connect(device_.get(), &QSerialPort::readyRead, this, [this] { receive(); });
    connect(device_.get(), &QSerialPort::errorOccurred, this, [this](QSerialPort::SerialPortError error) {
        if (error != QSerialPort::NoError && error != QSerialPort::TimeoutError) {
            deviceLost();
        }
    });
    return true;
}

void QtSerialPort::dropDevice() {
    if (device_ == nullptr) {
        return;
    }
    retry_.stop();
    // It may be in the middle of telling its error: silenced at once, and destroyed afterwards.
    QSerialPort* device = device_.release();
    device->disconnect(this);
    device->close();
    device->deleteLater();
    backlog_.clear();
}

void QtSerialPort::deviceLost() {
    if (device_ != nullptr) {
        ++losses_;
        dropDevice();
        tellNotice(fromQt(QStringLiteral("COM%1: %2 is gone").arg(port_).arg(path_)));
    }
}

void QtSerialPort::watch() {
    if (device_ == nullptr) {
        if (connectDevice()) {
            const bool late = !std::exchange(wanted_, true);
            const QString what = late ? QStringLiteral("has come") : QStringLiteral("is back");
            tellNotice(fromQt(QStringLiteral("COM%1: %2 %3").arg(port_).arg(path_, what)));
            if (late) {
                tellArrival();
            }
        }
    } else if (hungUp()) {
        deviceLost();
    }
}

/// Some ends of a line go away without an error that Qt would report.
bool QtSerialPort::hungUp() const {
#ifdef _WIN32
    return false;
#else
    pollfd line{device_->handle(), 0, 0};
    return poll(&line, 1, 0) > 0 && (line.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0;
#endif
}

void QtSerialPort::receive() {
    const QByteArray bytes = device_->readAll();
    if (!bytes.isEmpty() && receiver_) {
        receiver_(std::string_view(bytes.data(), static_cast<std::size_t>(bytes.size())));
    }
}

} // namespace quillon
