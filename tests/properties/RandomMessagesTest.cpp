#include <cstdlib>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "link/InboundTable.h"
#include "link/OutboundTable.h"
#include "link/TorvaneSerial.h"
#include "runtime/MemoryPlatform.h"
#include "shell/Application.h"

namespace quillon {
namespace {

/// A value that some message could carry, and some that none should.
std::string valueOf(std::mt19937& random) {
    switch (random() % 9) {
    case 0:
        return {};
    case 1:
        return std::to_string(random() % 2);
    case 2:
        return std::to_string(random() % 14);
    case 3:
        return std::to_string(random() % 200);
    case 4:
        return std::to_string(static_cast<std::int32_t>(random()));
    case 5:
        return std::to_string(random() % 1000) + "." + std::to_string(random() % 100);
    case 6:
        return (random() % 2 == 0 ? "1E" : "-1E") + std::to_string(random() % 400);
    case 7:
        return std::to_string(random() % 100) + "-" + std::to_string(random() % 100) + ",x";
    default: {
        std::string text(random() % 40, ' ');
        for (char& c : text) {
            c = static_cast<char>(random());
        }
        return text;
    }
    }
}

TEST(RandomMessages, AHundredThousandOfThemLeaveTheConsoleAtWork) {
    const char* asked = std::getenv("QUILLON_MESSAGES");
    const long messages = asked == nullptr ? 100'000 : std::strtol(asked, nullptr, 10);
    std::mt19937 random(7);
    MemoryPlatform machine;
    Application application(Platform{machine.time.schedule(), machine.time, machine.port, machine.store,
                                     machine.folder, machine.desktop, machine.power},
                            "-swsync");
    application.start();
    for (long i = 0; i < messages; ++i) {
        const bool inbound = random() % 4 != 0;
        std::string text(inbound ? kInboundTable[random() % kInboundTable.size()].key
                                 : kOutboundTable[random() % kOutboundTable.size()].mnemonic);
        machine.port.receive(text + valueOf(random) + (random() % 8 == 0 ? "\r" : "\r\n"));
        if (i % 16 == 0) {
            machine.time.advance(random() % 400);
        }
    }
    // Whatever it was told: a phase reported now is shown, and the poll asks.
    (void)machine.port.takeWritten();
    machine.port.receive("\r\nST1\r\nST2\r\n");
    EXPECT_EQ(application.link()["txtPHASE"].caption(), "Normal Operation");
    machine.time.advance(90'000);
    EXPECT_NE(machine.port.takeWritten().find("ST\r\n\x03"), std::string::npos);
}

} // namespace
} // namespace quillon
