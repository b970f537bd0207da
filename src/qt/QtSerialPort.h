#pragma once

#include <memory>

#include <QObject>
#include <QSerialPort>
#include <QTimer>

#include "runtime/Clock.h"
#include "runtime/OutputBacklog.h"
#include "runtime/Platform.h"

namespace quillon {

/// The line settings in a text such as "19200,n,8,1".
struct LineSettings {
    int baudRate;
    QSerialPort::Parity parity;
    QSerialPort::DataBits dataBits;
    QSerialPort::StopBits stopBits;

    /// Nothing when the text names no such line.
    [[nodiscard]] static std::optional<LineSettings> parse(std::string_view text);
};

/// The path of the device that stands for COM port `port`: a line such as COM1=/dev/ttyUSB0 in the section
/// PORTS of "Quillon.ini", or else the system's own name for it.
[[nodiscard]] QString devicePath(int port, const Folder& folder);

/// A serial line of this PC. A device that vanishes is closed at the first sign and tried again once a
/// second; to the link the port stays open all the time, and the line is silent. One that could not be opened
/// is tried again as often; the port stands open from then on.
///
/// The device gets a frame when the one before it is out, so that nearly all that waits, waits here, where it
/// is dropped when it has become too old. What a device has taken cannot be called back.
class QtSerialPort final : public QObject, public SerialPort {
public:
    QtSerialPort(const Folder& folder, const Clock& clock);

    bool open(int port, std::string_view settings) override;
    [[nodiscard]] std::string failure() const override { return failure_; }
    [[nodiscard]] std::string device() const override { return path_.toStdString(); }
    [[nodiscard]] std::string identity() const override;
    [[nodiscard]] bool present() const override { return wanted_ && connected(); }
    void close() override;
    [[nodiscard]] bool isOpen() const override { return wanted_; }
    void write(std::string_view frame) override;

    /// The device is there; false while it is waited for.
    [[nodiscard]] bool connected() const { return device_ != nullptr; }
    /// Bytes that are not out on the line yet, those in the system's own queue included.
    [[nodiscard]] qint64 waiting() const { return static_cast<qint64>(backlog_.size()) + inDevice(); }
    /// How often a device has vanished while open.
    [[nodiscard]] int losses() const { return losses_; }

private:
    bool connectDevice();
    [[nodiscard]] std::unique_ptr<QSerialPort> openDevice();
    void dropDevice();
    void deviceLost();
    void watch();
    void receive();
    void pass();
    bool take(std::string_view frame);
    [[nodiscard]] qint64 inDevice() const;
    [[nodiscard]] bool hasRoom() const;
    [[nodiscard]] bool hungUp() const;

    const Folder& folder_;
    const Clock& clock_;
    OutputBacklog backlog_;
    std::unique_ptr<QSerialPort> device_;
    QTimer watch_;
    QTimer retry_; // runs while something waits
    int port_ = 0;
    QString path_; // of its device
    LineSettings settings_{};
    std::string failure_;
    bool wanted_ = false; // the port stands open
    int losses_ = 0;
};

} // namespace quillon
