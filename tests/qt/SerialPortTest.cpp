#include <chrono>
#include <ctime>
#include <optional>

#include <QTemporaryDir>

#include "Bench.h"
#include "qt/QtSerialPort.h"
#include "runtime/MemoryPlatform.h"
#include "sim/PseudoTerminal.h"

namespace quillon {
namespace {

using simulator::DeviceLink;
using simulator::PseudoTerminal;

class SerialPortTest : public testing::Test {
protected:
    void SetUp() override {
        folder.put("Quillon.ini", "[PORTS]\r\nCOM3 = " + link + "\r\n");
        port.setReceiver([this](std::string_view bytes) { received += bytes; });
    }
    /// The generator takes the other end of the line.
    PseudoTerminal& plug() {
        cable.reset();
        generator.emplace();
        cable.emplace(link, generator->path());
        return *generator;
    }
    bool open() { return port.open(3, "19200,n,8,1"); }
    /// What the generator hears, until that many bytes are there.
    std::string heard(std::size_t count) {
        std::string bytes;
        waitFor([&] { return (bytes += generator->read()).size() >= count; });
        return bytes;
    }

    QTemporaryDir directory;
    const std::string link = directory.filePath("generator").toStdString();
    MemoryFolder folder;
    QtSerialPort port{folder};
    std::string received;
    std::optional<PseudoTerminal> generator;
    std::optional<DeviceLink> cable;
};

TEST_F(SerialPortTest, BytesPassAsTheyAreInBothDirections) {
    plug();
    ASSERT_TRUE(open());
    const std::string traffic("ST2\r\n\x03\x11\x13\x00\xFF", 10);
    port.write(traffic);
    EXPECT_EQ(heard(traffic.size()), traffic);
    generator->write(traffic);
    EXPECT_TRUE(waitFor([&] { return received.size() >= traffic.size(); }));
    EXPECT_EQ(received, traffic);

    port.close();
    generator->write("old\r\n");
    ASSERT_TRUE(open());
    generator->write("new\r\n");
    received.clear();
    EXPECT_TRUE(waitFor([&] { return received.size() >= 5; }));
    EXPECT_EQ(received, "new\r\n") << "a line hears nothing while it is closed";
}

TEST_F(SerialPortTest, ADeviceThatVanishesIsClosedOnceAndComesBackByItself) {
    plug();
    ASSERT_TRUE(open());
    generator.reset();
    EXPECT_TRUE(waitFor([&] { return port.losses() == 1; }));
    EXPECT_TRUE(port.isOpen()) << "to the link nothing happened";
    EXPECT_FALSE(port.connected());
    port.write("HU\r\n\x03");
    EXPECT_EQ(port.waiting(), 0) << "thrown away";

    const std::clock_t before = std::clock();
    waitFor([] { return false; }, 1200);
    EXPECT_LT(std::clock() - before, CLOCKS_PER_SEC / 4) << "a missing device costs next to nothing";
    EXPECT_EQ(port.losses(), 1);

    plug();
    ASSERT_TRUE(waitFor([&] { return port.connected(); }));
    generator->write("ST2\r\n");
    EXPECT_TRUE(waitFor([&] { return received == "ST2\r\n"; }));
    port.write("ST\r\n\x03");
    EXPECT_EQ(heard(5), "ST\r\n\x03");
}

TEST_F(SerialPortTest, WhatWaitsForTheLineIsBoundedAndLostInWholeFrames) {
    plug();
    ASSERT_TRUE(open());
    std::string frame(997, 'x');
    frame.append("\r\n\x03");
    for (int i = 0; i < 400; ++i) {
        port.write(frame);
        turn();
        ASSERT_LE(port.waiting(), QtSerialPort::kWriteLimit);
    }
    EXPECT_GT(port.waiting(), QtSerialPort::kWriteLimit - 1000);
    std::string all;
    waitFor([&] {
        all += generator->read();
        return port.waiting() == 0;
    });
    waitFor([&] { return (all += generator->read()).size() % frame.size() == 0; }, 200);
    ASSERT_EQ(all.size() % frame.size(), 0U);
    EXPECT_LT(all.size(), 400 * frame.size());
    for (std::size_t at = 0; at < all.size(); at += frame.size()) {
        ASSERT_EQ(all.substr(at, frame.size()), frame);
    }
}

TEST_F(SerialPortTest, WhatWasWrittenIsOnTheLineWhenItIsClosed) {
    plug();
    ASSERT_TRUE(open());
    port.write("RX0\r\n\x03");
    port.write("RX1\r\n\x03");
    port.close();
    EXPECT_EQ(heard(12), "RX0\r\n\x03RX1\r\n\x03");

    ASSERT_TRUE(open());
    port.write(std::string(QtSerialPort::kWriteLimit, 'x')); // the other end takes nothing of it
    const auto before = std::chrono::steady_clock::now();
    port.close();
    EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(2));
}

TEST_F(SerialPortTest, AFirstOpenThatFailsSaysSo) {
    EXPECT_FALSE(open());
    EXPECT_FALSE(port.isOpen());
    waitFor([] { return false; }, 1100);
    EXPECT_FALSE(port.connected()) << "what was never open is not tried again";
    plug();
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
