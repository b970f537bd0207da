#include "runtime/MemoryPlatform.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

TEST(MemorySerialPort, HasOneLineOpenAtATime) {
    MemorySerialPort port;
    std::string told;
    port.onOpened = [&](int number, std::string_view settings) {
        told += "+" + std::to_string(number) + std::string(settings);
    };
    port.onClosed = [&](int number) { told += "-" + std::to_string(number); };
    std::string received;
    port.setReceiver([&](std::string_view bytes) { received += bytes; });

    port.setFailing(3, true);
    port.receive("lost");
    port.write("lost");
    EXPECT_TRUE(port.open(1, "a"));
    EXPECT_TRUE(port.open(2, "b"));
    port.receive("heard");
    port.write("x");
    EXPECT_FALSE(port.open(3, "c"));
    EXPECT_FALSE(port.isOpen());
    port.close();
    port.setFailing(3, false);
    EXPECT_TRUE(port.open(3, "c"));
    EXPECT_EQ(told, "+1a-1+2b-2+3c");
    EXPECT_EQ(received, "heard");
    EXPECT_EQ(port.takeWritten(), "x");
    EXPECT_EQ(port.takeWritten(), "");
}

TEST(MemoryFolder, FilesHaveNoCaseALimitAndCanFail) {
    MemoryFolder folder;
    const auto log = folder.create("Log.txt");
    ASSERT_TRUE(log);
    EXPECT_TRUE(log->write("abc"));
    EXPECT_EQ(folder.read("LOG.TXT", 3), "abc");
    EXPECT_EQ(folder.read("log.txt", 2), std::nullopt);
    folder.setReadOnly(true);
    EXPECT_FALSE(log->write("d"));
    EXPECT_FALSE(folder.create("log.txt"));
    EXPECT_EQ(*folder.find("log.txt"), "abc");
}

TEST(MemoryUserStore, RemovesOneSection) {
    MemoryUserStore store;
    store.write("", "a", "x", "1");
    store.write("app", "a", "x", "2");
    store.removeSection("", "a");
    EXPECT_EQ(store.read("", "a", "x"), std::nullopt);
    EXPECT_EQ(store.read("app", "a", "x"), "2");
    store.setReadOnly(true);
    store.write("app", "a", "x", "3");
    EXPECT_EQ(store.read("app", "a", "x"), "2");
}

TEST(MemoryDesktop, EveryBoxTakesOneAnswer) {
    MemoryDesktop desktop;
    desktop.answer(MemoryDesktop::Answer::Yes);
    desktop.answer(MemoryDesktop::Answer::Yes);
    desktop.message(BoxKind::Critical, "T", "X");
    EXPECT_TRUE(desktop.ask("T", "X?"));
    EXPECT_FALSE(desktop.ask("T", "X?"));
    ASSERT_EQ(desktop.boxes().size(), 3U);
    EXPECT_EQ(desktop.boxes()[0].box, MemoryDesktop::Box::Critical);
    EXPECT_EQ(desktop.boxes()[1].text, "X?");
}

} // namespace
} // namespace quillon
