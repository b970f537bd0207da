#include <gmock/gmock.h>

#include <algorithm>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "console/ctrQuillonConsole.h"
#include "link/TorvaneSerial.h"
#include "runtime/MemoryPlatform.h"
#include "shell/Application.h"
#include "tools/replay/Follower.h"
#include "tools/replay/Journal.h"
#include "tools/replay/Listing.h"
#include "tools/replay/ScenarioWriter.h"
#include "tools/scenario/FarEnd.h"
#include "tools/scenario/Script.h"

namespace quillon {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

std::vector<std::string> texts(const Journal& journal) {
    std::vector<std::string> all;
    for (const Entry& entry : journal.entries) {
        all.push_back((entry.kind == Entry::Kind::Sent ? ">" : "<") + entry.text);
    }
    return all;
}

/// The console with its log switched on, against the simulated generator.
class LogTest : public testing::Test {
protected:
    LogTest() {
        application.emplace(Platform{machine.time.schedule(), machine.time, machine.port, machine.store,
                                     machine.folder, machine.desktop, machine.power},
                            "-logFile");
        machine.port.onWritten = [this](std::string_view bytes) { far.written(bytes); };
        far.onFrame = [this](std::string_view frame) { traffic.push_back(">" + std::string(frame)); };
        application->link().events().forEach(
            [this]<typename... A>(int, std::string_view name, std::string_view, Signal<A...>& signal) {
                signal.observe([this, name = std::string(name)](const A&...) { events.push_back(name); });
            });
        application->start();
    }
    void receive(const std::string& frame) {
        traffic.push_back("<" + frame);
        machine.port.receive(frame + "\r\n");
    }
    [[nodiscard]] const std::string& log() const { return *machine.folder.find("log.txt"); }

    MemoryPlatform machine;
    FarEnd far{machine.time.schedule(), machine.port};
    std::optional<Application> application;
    std::vector<std::string> traffic;
    std::vector<std::string> events;
};

TEST_F(LogTest, EachRecordIsFoundWhateverTheDebugViewHolds) {
    const auto talk = [this](int frames) {
        for (int i = 0; i < frames; ++i) {
            receive("KV" + std::to_string(40 + i));
            receive("INF(Rx)\rMA100\r\rHE" + std::to_string(i));
            machine.time.advance(1400);
        }
    };
    receive("ST2");
    talk(4);
    application->link().setDebugActive(true);
    talk(90); // the view is cut, in the middle of lines
    (*application).link()["txtDebugComm"].on.click();
    talk(3);
    application->link().setDebugActive(false); // its text stays
    talk(3);
    application->link()["cmbToggleDebug"].on.click();
    talk(3);
    application->link()["cmbToggleDebug"].on.click(); // and now it is wiped
    talk(3);
    const Journal journal = readJournal(log());
    EXPECT_THAT(journal.problems, IsEmpty());
    EXPECT_EQ(texts(journal), traffic);
    EXPECT_THAT(traffic, SizeIs(testing::Gt(300U)));
}

TEST_F(LogTest, TheScenarioOfALogBringsTheConsoleToTheSameEvents) {
    far.simulate({});
    machine.time.advance(21'000);
    const std::string scenario = scenarioOf(readJournal(log()));
    std::ostringstream out;
    Script script(scenario, out);
    EXPECT_TRUE(script.run());
    std::vector<std::string> played;
    std::istringstream lines(out.str());
    for (std::string line; std::getline(lines, line);) {
        const auto name = line.find("event TorvaneSerial.");
        if (name != std::string::npos) {
            played.push_back(line.substr(name + 20, line.find('(') - name - 20));
        }
    }
    EXPECT_THAT(played, SizeIs(testing::Gt(20U)));
    EXPECT_EQ(played, events);
}

TEST(LogReader, DamageIsToldAndTheRestIsRead) {
    const Journal journal =
        readJournal("rest of a record\r\n\r\n(Rx)ST2\r\n\r\n(Tx)HU\r\nscribble\r\n(Rx)HE1\r\n\r\n(Tx)S");
    EXPECT_THAT(texts(journal), ElementsAre("<ST2", ">HU", "<HE1", ">S"));
    EXPECT_THAT(journal.problems,
                ElementsAre("line 1: no record begins here", "line 6: this does not end the record before it",
                            "line 6: no record begins here"));
    EXPECT_THAT(texts(readJournal("(Rx)ST2\n\n(Tx)\n\n")), ElementsAre("<ST2", ">")) << "an edited copy";
}

TEST(LogReader, AFrameThatWasLostIsNoTransmission) {
    const std::string log = "(Nx)CF1\r\n\r\n(Tx)CF1\r\n\r\n(--)the port\r\n\r\n(Rx)AK\r\n\r\n";
    EXPECT_THAT(listing(readJournal(log)),
                AllOf(HasSubstr("     1  -x  CF1"),
                      HasSubstr("  not sent: the device did not take it\n     2  ->  CF1"),
                      HasSubstr("  acknowledged by 4\n     3  --  the port\n"), HasSubstr("for 2\n")));
    std::ostringstream out;
    const std::string scenario = scenarioOf(readJournal(log));
    Script script(scenario, out);
    EXPECT_TRUE(script.run());

    const std::string recording = "# Recorded by Quillon 1\nstart\n# 350 tx \"CF1\"\n# 700 tx \"HU\"\n"
                                  "# 2400 lost \"CF1\"\n";
    EXPECT_THAT(listing(readJournal(recording)), AllOf(HasSubstr("350  -x  CF1"), HasSubstr("700  ->  HU")));
}

/// The notes of a log whose lines are given, without the head.
std::vector<std::string> notes(const std::vector<std::string>& lines) {
    Journal journal;
    for (const std::string& line : lines) {
        journal.entries.push_back(
            {line.front() == '>' ? Entry::Kind::Sent : Entry::Kind::Received, line.substr(1)});
    }
    std::vector<std::string> found;
    std::istringstream text(listing(journal));
    for (std::string line; std::getline(text, line);) {
        if (line.find("->") != std::string::npos || line.find("<-") != std::string::npos) {
            constexpr std::size_t kNote = 76;
            found.push_back(line.size() > kNote ? line.substr(kNote) : "");
        }
    }
    return found;
}

TEST(Listing, WhatBecameOfEachCommandIsTold) {
    EXPECT_THAT(notes({">CF1", "<AK\rST8", "<AK"}),
                ElementsAre("acknowledged by 2", "for 1", "", "late or twice: nothing waits for it"));
    EXPECT_THAT(notes({">CF1", "<HE1", ">CF1", "<AK"}),
                ElementsAre("", "", "repeats 1, transmission 2, acknowledged by 4", "for 3"));
    EXPECT_THAT(notes({">RF", ">RF", ">RF", ">RF", ">ST", ">ST", ">KV+"}),
                ElementsAre("", "repeats 1, transmission 2", "repeats 1, transmission 3",
                            "repeats 1, transmission 4, no acknowledgement: given up, refused or not heard",
                            "", "", ""))
        << "polls and steps never ask";
    EXPECT_THAT(notes({">VR?", ">ST"}), ElementsAre("no acknowledgement", ""));
}

TEST(Follower, TellsEachRowOnceWhenItsFateIsKnown) {
    const std::string recording =
        "# Recorded by Quillon 1\nstart\n# 350 tx \"CF1\"\nwait 390\nrx \"AK\\r\\nST8\\r\\n\"\n"
        "# 700 tx \"CF0\"\nwait 700\nrx \"ST2\\r\\n\"\n# 1400 tx \"CF0\"\n# 1750 lost \"CF0\"\n"
        "# 1800 tx \"ST\"\n";
    Follower follower;
    std::string told;
    for (const char c : recording) {
        told += follower.take({&c, 1});
    }
    EXPECT_THAT(told, AllOf(HasSubstr("     1        350  ->  CF1             configuration: on"),
                            HasSubstr("acknowledged after 40 ms by 2\n     2        390  <-  AK"),
                            HasSubstr("repeats 4, transmission 2, no acknowledgement\n"),
                            HasSubstr("     7       1090  -x  CF0")));
    EXPECT_EQ(std::ranges::count(told, '\n'), 8);
}

} // namespace
} // namespace quillon
