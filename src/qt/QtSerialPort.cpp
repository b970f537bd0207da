#include "qt/QtSerialPort.h"

#include <QDeadlineTimer>

#ifndef _WIN32
#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>

#include <QThread>
#endif

#include "base/Numbers.h"
#include "base/Text.h"
#include "qt/Convert.h"
#include "runtime/ProfileFile.h"

namespace quillon {

namespace {

constexpr int kWatchInterval = 1000;
constexpr int kDrainTime = 1000; // ms that a close waits for the last bytes
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
        tcdrain(device.handle()); // the last few, which stand in the device itself
    }
#endif
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

QtSerialPort::QtSerialPort(const Folder& folder) : folder_(folder) {
    connect(&watch_, &QTimer::timeout, this, [this] { watch(); });
}

bool QtSerialPort::open(int port, std::string_view settings) {
    close();
    const std::optional<LineSettings> line = LineSettings::parse(settings);
    if (!line) {
        return false;
    }
    port_ = port;
    settings_ = *line;
    wanted_ = connectDevice();
    if (wanted_) {
        watch_.start(kWatchInterval);
    }
    return wanted_;
}

void QtSerialPort::close() {
    wanted_ = false;
    watch_.stop();
    if (device_ != nullptr) {
        device_->disconnect(this); // nothing is heard any more
        drain(*device_);
    }
    dropDevice();
}

void QtSerialPort::write(std::string_view bytes) {
    const auto size = static_cast<qint64>(bytes.size());
    if (device_ != nullptr && device_->bytesToWrite() + size <= kWriteLimit) {
        device_->write(bytes.data(), size);
    }
}

bool QtSerialPort::connectDevice() {
    auto device = std::make_unique<QSerialPort>(devicePath(port_, folder_));
    device->setBaudRate(settings_.baudRate);
    device->setParity(settings_.parity);
    device->setDataBits(settings_.dataBits);
    device->setStopBits(settings_.stopBits);
    device->setFlowControl(QSerialPort::NoFlowControl);
    if (!device->open(QIODevice::ReadWrite)) {
        return false;
    }
    // A line hears nothing while it is closed, whatever the system kept of that time.
    device->clear();
    device->clearError();
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
    // It may be in the middle of telling its error: silenced at once, and destroyed afterwards.
    QSerialPort* device = device_.release();
    device->disconnect(this);
    device->close();
    device->deleteLater();
}

void QtSerialPort::deviceLost() {
    if (device_ != nullptr) {
        ++losses_;
        dropDevice();
    }
}

void QtSerialPort::watch() {
    if (device_ == nullptr) {
        connectDevice();
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
