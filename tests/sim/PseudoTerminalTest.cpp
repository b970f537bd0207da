#include "sim/PseudoTerminal.h"

#include <gtest/gtest.h>

#include <array>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>
#include <unistd.h>

namespace simulator::test {
namespace {

namespace fs = std::filesystem;

Descriptor openDevice(const std::string& path) {
    return Descriptor(::open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK));
}

std::string readFrom(const Descriptor& device) {
    std::array<char, 256> bytes{};
    const ssize_t count = ::read(device.number(), bytes.data(), bytes.size());
    return count > 0 ? std::string(bytes.data(), static_cast<std::size_t>(count)) : std::string();
}

TEST(PseudoTerminal, PassesEveryByteUnchangedAndEchoesNothing) {
    PseudoTerminal terminal;
    const Descriptor device = openDevice(terminal.path());
    std::string every;
    for (int byte = 0; byte < 256; ++byte) {
        every += static_cast<char>(byte);
    }
    ASSERT_EQ(::write(device.number(), every.data(), every.size()), 256);
    EXPECT_EQ(terminal.read(), every);
    EXPECT_EQ(readFrom(device), "");
    terminal.write(every);
    EXPECT_EQ(readFrom(device), every);
}

TEST(PseudoTerminal, ALineNobodyReadsLosesWholeMessages) {
    PseudoTerminal terminal;
    const std::string message = std::string(98, 'x') + "\r\n";
    for (int count = 0; count < 2000; ++count) {
        terminal.write(message);
    }
    EXPECT_TRUE(terminal.hasUnwritten());
    EXPECT_GT(terminal.lostMessages(), 0U);
    const Descriptor device = openDevice(terminal.path());
    std::size_t read = 0;
    for (std::string bytes = readFrom(device); !bytes.empty(); bytes = readFrom(device)) {
        read += bytes.size();
        terminal.flush();
    }
    EXPECT_EQ(read, (2000 - terminal.lostMessages()) * message.size());
}

class DeviceLinkTest : public testing::Test {
protected:
    void SetUp() override { fs::create_directory(folder_); }
    void TearDown() override { fs::remove_all(folder_); }

    fs::path folder_ = fs::temp_directory_path() / ("device-link-" + std::to_string(::getpid()));
    fs::path link_ = folder_ / "generator";
};

TEST_F(DeviceLinkTest, ReplacesAStaleLinkAndGoesWithItsOwner) {
    fs::create_symlink("nowhere", link_);
    {
        const DeviceLink link(link_, "device");
        EXPECT_EQ(fs::read_symlink(link_), "device");
    }
    EXPECT_FALSE(fs::exists(fs::symlink_status(link_)));
    EXPECT_TRUE(fs::is_empty(folder_));
}

TEST_F(DeviceLinkTest, LeavesWhatBelongsToOthers) {
    {
        const DeviceLink link(link_, "device");
        fs::remove(link_);
        fs::create_symlink("another", link_);
    }
    EXPECT_EQ(fs::read_symlink(link_), "another");
    fs::remove(link_);
    std::ofstream(link_) << "a file";
    EXPECT_THROW(DeviceLink(link_, "device"), std::system_error);
    EXPECT_TRUE(fs::is_regular_file(link_));
}

} // namespace
} // namespace simulator::test
