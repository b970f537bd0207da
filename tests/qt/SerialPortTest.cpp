#include <ctime>
#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

#include <QTemporaryDir>

#include "Bench.h"
#include "qt/QtSerialPort.h"
#include "runtime/MemoryPlatform.h"

namespace quillon {
namespace {

/// The generator's end of a line.
class FarEnd {
public:
    FarEnd() {
        int device = -1;
        char name[128];
        termios raw{};
        cfmakeraw(&raw);
        EXPECT_EQ(openpty(&master_, &device, name, &raw, nullptr), 0);
        path_ = name;
        fcntl(master_, F_SETFL, O_NONBLOCK);
        ::close(device);
    }
    ~FarEnd() { hangUp(); }
    FarEnd(const FarEnd&) = delete;
    FarEnd& operator=(const FarEnd&) = delete;

    [[nodiscard]] const std::string& path() const { return path_; }
    void send(std::string_view bytes) const {
        EXPECT_EQ(::write(master_, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    }
    [[nodiscard]] std::string take() const {
        std::string bytes(1 << 16, '\0');
        const ssize_t count = ::read(master_, bytes.data(), bytes.size());
        bytes.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
        return bytes;
    }
    void hangUp() {
        if (master_ >= 0) {
            ::close(std::exchange(master_, -1));
        }
    }

private:
    int master_ = -1;
    std::string path_;
};

class SerialPortTest : public testing::Test {
protected:
    void SetUp() override {
        link = directory.filePath("generator").toStdString();
        folder.put("Quillon.ini", "[PORTS]\r\nCOM3 = " + link + "\r\n");
        port.setReceiver([this](std::string_view bytes) { received += bytes; });
    }
    void plug(const FarEnd& end) const {
        ::unlink(link.c_str());
        ASSERT_EQ(::symlink(end.path().c_str(), link.c_str()), 0);
    }
    bool open() { return port.open(3, "19200,n,8,1"); }

    QTemporaryDir directory;
    std::string link;
    MemoryFolder folder;
    QtSerialPort port{folder};
    std::string received;
};

TEST_F(SerialPortTest, BytesPassAsTheyAreInBothDirections) {
    FarEnd generator;
    plug(generator);
    ASSERT_TRUE(open());
    const std::string traffic("ST2\r\n\x03\x11\x13\x00\xFF", 10);
    std::string heard;
    port.write(traffic);
    EXPECT_TRUE(waitFor([&] { return (heard += generator.take()).size() >= traffic.size(); }));
    EXPECT_EQ(heard, traffic);
    generator.send(traffic);
    EXPECT_TRUE(waitFor([&] { return received.size() >= traffic.size(); }));
    EXPECT_EQ(received, traffic);

    port.close();
    generator.send("old\r\n");
    ASSERT_TRUE(open());
    generator.send("new\r\n");
    received.clear();
    EXPECT_TRUE(waitFor([&] { return received.size() >= 5; }));
    EXPECT_EQ(received, "new\r\n") << "a line hears nothing while it is closed";
}

TEST_F(SerialPortTest, ADeviceThatVanishesIsClosedOnceAndComesBackByItself) {
    auto generator = std::make_unique<FarEnd>();
    plug(*generator);
    ASSERT_TRUE(open());
    generator->hangUp();
    EXPECT_TRUE(waitFor([&] { return port.losses() == 1; }));
    EXPECT_TRUE(port.isOpen()) << "to the link nothing happened";
    EXPECT_FALSE(port.connected());
    port.write("HU\r\n\x03");
    EXPECT_EQ(port.waiting(), 0) << "thrown away";

    const std::clock_t before = std::clock();
    waitFor([] { return false; }, 1200);
    EXPECT_LT(std::clock() - before, CLOCKS_PER_SEC / 4) << "a missing device costs next to nothing";
    EXPECT_EQ(port.losses(), 1);

    FarEnd again;
    plug(again);
    ASSERT_TRUE(waitFor([&] { return port.connected(); }));
    again.send("ST2\r\n");
    EXPECT_TRUE(waitFor([&] { return received == "ST2\r\n"; }));
    port.write("ST\r\n\x03");
    std::string heard;
    EXPECT_TRUE(waitFor([&] { return (heard += again.take()) == "ST\r\n\x03"; }));
}

TEST_F(SerialPortTest, WhatWaitsForTheLineIsBoundedAndLostInWholeFrames) {
    FarEnd generator;
    plug(generator);
    ASSERT_TRUE(open());
    std::string frame(997, 'x');
    frame += "\r\n\x03";
    for (int i = 0; i < 400; ++i) {
        port.write(frame);
        turn();
        ASSERT_LE(port.waiting(), QtSerialPort::kWriteLimit);
    }
    EXPECT_GT(port.waiting(), QtSerialPort::kWriteLimit - 1000);
    std::string heard;
    waitFor([&] {
        heard += generator.take();
        return port.waiting() == 0;
    });
    waitFor([&] { return (heard += generator.take()).size() % frame.size() == 0; }, 200);
    ASSERT_EQ(heard.size() % frame.size(), 0U);
    EXPECT_LT(heard.size(), 400 * frame.size());
    for (std::size_t at = 0; at < heard.size(); at += frame.size()) {
        ASSERT_EQ(heard.substr(at, frame.size()), frame);
    }
}

TEST_F(SerialPortTest, AFirstOpenThatFailsSaysSo) {
    EXPECT_FALSE(open());
    EXPECT_FALSE(port.isOpen());
    waitFor([] { return false; }, 1100);
    EXPECT_FALSE(port.connected()) << "what was never open is not tried again";
    const FarEnd generator;
    plug(generator);
    EXPECT_FALSE(port.open(3, "fast,n,8,1"));
    EXPECT_TRUE(open());
}

TEST_F(SerialPortTest, PortsAreNamedByTheIniFileOrTheSystem) {
    EXPECT_EQ(devicePath(3, folder).toStdString(), link);
    EXPECT_EQ(devicePath(1, folder), "/dev/ttyS0");
    EXPECT_EQ(devicePath(6, MemoryFolder{}), "/dev/ttyS5");
}

TEST(LineSettings, AreReadFromOneText) {
    const auto line = LineSettings::parse("9600,e,7,2");
    ASSERT_TRUE(line.has_value());
    EXPECT_EQ(line->baudRate, 9600);
    EXPECT_EQ(line->parity, QSerialPort::EvenParity);
    EXPECT_EQ(line->dataBits, QSerialPort::Data7);
    EXPECT_EQ(line->stopBits, QSerialPort::TwoStop);
    for (const char* wrong : {"", "9600", "9600,n,8", "9600,x,8,1", "0,n,8,1", "9600,n,9,1", "9600,n,8,3"}) {
        EXPECT_FALSE(LineSettings::parse(wrong).has_value()) << wrong;
    }
}

} // namespace
} // namespace quillon
