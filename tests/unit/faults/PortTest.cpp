#include <string>

#include <gtest/gtest.h>

#include "FaultyMachine.h"

namespace quillon {
namespace {

TEST(Port, WhatWaitedForAPortThatCannotBeReopenedIsGone) {
    FaultyMachine machine;
    machine.start();
    machine.open.failing = 2;
    for (int i = 0; i < 5; ++i) {
        machine.application->link().SendMessage("M" + std::to_string(i), 16383);
    }
    (void)machine.memory.port.takeWritten();
    machine.application->console().PortOpen(true);
    EXPECT_FALSE(machine.application->link().PortOpen());
    machine.wait(5000);
    EXPECT_EQ(machine.memory.port.takeWritten(), "");
    machine.application->console().PortOpen(true);
    machine.wait(400);
    EXPECT_EQ(machine.memory.port.takeWritten(), "ST\r\n\x03");
}

// A device that takes nothing any more looks to the link as a generator that is silent.
TEST(Port, WritesThatFailForGoodAreToldAsALostGeneratorOnce) {
    FaultyMachine machine;
    machine.start();
    machine.hear("ST2");
    machine.wait(12000);
    machine.hear("HE10");
    machine.write = {1, true};
    machine.read = {1, true};
    int errors = 0;
    machine.application->link().events().GeneratorERROR.connect(
        [&errors](std::int16_t code, const std::string&, std::int16_t) { errors += code == 33 ? 1 : 0; });
    machine.wait(41'000);
    EXPECT_EQ(errors, 0);
    machine.wait(3'600'000);
    EXPECT_EQ(errors, 1);
    EXPECT_EQ(machine.console("lblHelp").caption(), "Communications ERROR");
    EXPECT_TRUE(machine.console("cmbClose").enabled());
    // It is back: no key has to be pressed.
    machine.write = {};
    machine.read = {};
    machine.hear("ST2");
    machine.wait(11000);
    EXPECT_FALSE(machine.console("lblHelp").visible());
    EXPECT_TRUE(machine.console("cmbConfiguration").enabled());
}

TEST(Port, TheLogTellsWhatTheDeviceTookAndWhatItDidNot) {
    FaultyMachine machine;
    machine.open.failing = 1;
    machine.write = {2, false};
    machine.start("-logFile");
    machine.application->console().PortOpen(true);
    machine.wait(4000);
    EXPECT_EQ(machine.memory.port.takeWritten(), "ST\r\n\x03ST\r\n\x03");
    EXPECT_EQ(*machine.memory.folder.find("log.txt"),
              "(--)COM1: gone\r\n\r\n(Tx)ST\r\n\r\n(Nx)HU\r\n\r\n(Tx)ST\r\n\r\n");
}

// Noise can turn a report into one of a phase that does not exist. The poll must go on, or nobody would ever
// learn the true phase.
TEST(Port, AGarbledPhaseDoesNotSilenceThePoll) {
    for (const char* report : {"ST0", "ST14", "ST15", "ST20", "ST31", "ST32", "ST99999", "ST-7", "ST1E9"}) {
        SCOPED_TRACE(report);
        FaultyMachine machine;
        machine.start();
        machine.hear("ST2");
        machine.wait(12000);
        machine.hear(report);
        (void)machine.memory.port.takeWritten();
        machine.wait(4000);
        const std::string written = machine.memory.port.takeWritten();
        EXPECT_NE(written.find("ST\r\n"), std::string::npos);
        machine.hear("ST2");
        EXPECT_EQ(machine.application->link()["txtPHASE"].caption(), "Normal Operation");
    }
}

} // namespace
} // namespace quillon
