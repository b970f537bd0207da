#include <algorithm>
#include <chrono>
#include <ctime>
#include <optional>

#include <unistd.h>

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
        port.setOutcome([this](std::string_view frame, bool sent) {
            outcomes += (sent ? "+" : "-") + std::string(frame.substr(0, frame.size() - 3)) + " ";
        });
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
    VirtualClock clock;
    QtSerialPort port{folder, clock};
    std::string received;
    std::string outcomes; // of the frames without their end bytes: + sent, - lost
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
    std::string told;
    port.setNotice([&told](std::string_view text) { told.append(text).append(", "); });
    ASSERT_TRUE(open());
    generator.reset();
    EXPECT_TRUE(waitFor([&] { return port.losses() == 1; }));
    folder.put("Quillon.ini", ""); // not read again before the next open()
    EXPECT_TRUE(port.isOpen()) << "to the link nothing happened";
    EXPECT_FALSE(port.connected());
    port.write("HU\r\n\x03");
    EXPECT_EQ(outcomes, "-HU ") << "thrown away";

    const std::clock_t before = std::clock();
    rest(1200);
    EXPECT_LT(std::clock() - before, CLOCKS_PER_SEC / 4) << "a missing device costs next to nothing";
    EXPECT_EQ(port.losses(), 1);

    plug();
    ASSERT_TRUE(waitFor([&] { return port.connected(); }));
    generator->write("ST2\r\n");
    EXPECT_TRUE(waitFor([&] { return received == "ST2\r\n"; }));
    port.write("ST\r\n\x03");
    EXPECT_EQ(heard(5), "ST\r\n\x03");
    EXPECT_EQ(outcomes, "-HU +ST ");
    EXPECT_EQ(told, "COM3: " + link + " is gone, COM3: " + link + " is back, ");
}

// What the far end's own buffers hold is with the far end; the rest must not get there late.
TEST_F(SerialPortTest, AFarEndThatReadsAgainGetsNoOldFrames) {
    plug();
    ASSERT_TRUE(open());
    const std::string filler(497, 'x');
    std::size_t written = 0;
    for (; port.waiting() == 0 && written < 1000; ++written) {
        port.write(filler + "\r\n\x03");
        turn();
    }
    ASSERT_GT(port.waiting(), 0) << "a far end that takes all";
    port.write("OLD\r\n\x03");
    clock.set(OutputBacklog::kLongestWait + 1);
    EXPECT_TRUE(waitFor([&] { return outcomes.ends_with("-OLD "); }));
    port.write("NEW\r\n\x03");
    EXPECT_LE(port.waiting(), static_cast<qint64>(filler.size()) + 9)
        << "one that was begun, and the new one";

    std::string all;
    waitFor([&] { return (all += generator->read()).ends_with("NEW\r\n\x03"); });
    EXPECT_TRUE(outcomes.ends_with("-OLD +NEW "));
    EXPECT_EQ(all.find("OLD"), std::string::npos);
    const auto taken = static_cast<std::size_t>(std::ranges::count(outcomes, '+'));
    EXPECT_EQ(all.size(), (taken - 1) * (filler.size() + 3) + 6) << "whole frames, and each of those told";
    EXPECT_EQ(port.waiting(), 0);
}

TEST_F(SerialPortTest, WhatWasWrittenIsOnTheLineWhenItIsClosed) {
    plug();
    ASSERT_TRUE(open());
    port.write("RX0\r\n\x03");
    port.write("RX1\r\n\x03");
    port.close();
    EXPECT_EQ(heard(12), "RX0\r\n\x03RX1\r\n\x03");

    ASSERT_TRUE(open());
    port.write(std::string(64 * 1024, 'x')); // the other end takes nothing of it
    const auto before = std::chrono::steady_clock::now();
    port.close();
    EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(2));
}

TEST_F(SerialPortTest, AnOpenThatFailsSaysSo) {
    EXPECT_FALSE(port.open(3, "fast,n,8,1") || port.isOpen());
    EXPECT_EQ(port.failure(), "COM3: no settings of a line: fast,n,8,1");
    EXPECT_FALSE(open() || port.isOpen());
    EXPECT_EQ(port.failure(), "COM3: " + link + ": No such file or directory");
}

TEST_F(SerialPortTest, ADeviceThatWasNotThereAtTheStartIsOpenedWhenItComes) {
    std::string told;
    port.setNotice([&told](std::string_view text) { told.append(text).append(", "); });
    port.setArrival([&] { told += port.isOpen() && port.present() ? "open" : "not open"; });
    EXPECT_FALSE(open());
    port.write("HU\r\n\x03");
    EXPECT_EQ(outcomes, "") << "a port that is not open";
    plug();
    ASSERT_TRUE(waitFor([&] { return port.isOpen(); }));
    EXPECT_EQ(told, "COM3: " + link + " has come, open");
    port.write("ST\r\n\x03");
    EXPECT_EQ(heard(5), "ST\r\n\x03");

    // One that is closed meanwhile is waited for no more.
    cable.reset();
    EXPECT_FALSE(open());
    port.close();
    plug();
    rest(1200);
    EXPECT_FALSE(port.isOpen() || port.connected());
}

TEST_F(SerialPortTest, ADeviceInUseIsToldWithItsOwner) {
    plug();
    QtSerialPort other(folder, clock);
    ASSERT_TRUE(other.open(3, "19200,n,8,1"));
    EXPECT_FALSE(open());
    EXPECT_THAT(port.failure(), testing::HasSubstr("locked by process " + std::to_string(getpid())));
}

TEST_F(SerialPortTest, PortsAreNamedByTheIniFileOrTheSystem) {
    EXPECT_EQ(devicePath(3, folder).toStdString(), link);
    EXPECT_EQ(devicePath(1, folder), "/dev/ttyS0");
    EXPECT_EQ(devicePath(6, MemoryFolder{}), "/dev/ttyS5");
}

TEST(LineSettings, AreReadFromOneText) {
    const auto line = LineSettings::parse("9600,e,7,2");
    ASSERT_TRUE(line.has_value());
    EXPECT_EQ(std::tie(line->baudRate, line->parity, line->dataBits, line->stopBits),
              std::tuple(9600, QSerialPort::EvenParity, QSerialPort::Data7, QSerialPort::TwoStop));
    for (const char* wrong : {"", "9600", "9600,n,8", "9600,x,8,1", "0,n,8,1", "9600,n,9,1", "9600,n,8,3"}) {
        EXPECT_FALSE(LineSettings::parse(wrong).has_value()) << wrong;
    }
}

} // namespace
} // namespace quillon
