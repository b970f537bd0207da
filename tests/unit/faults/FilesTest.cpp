#include <string>
#include <tuple>

#include <gmock/gmock.h>

#include "FaultyMachine.h"
#include "link/CommunicationLog.h"
#include "link/LinkSettings.h"

namespace quillon {
namespace {

using testing::HasSubstr;

constexpr std::string_view kPowerUp = "POWER UP THE GENERATOR";

/// The service is there: a generator that answers now is shown.
void expectService(FaultyMachine& machine) {
    machine.wait(4000);
    EXPECT_EQ(machine.console("lblHelp").caption(), kPowerUp);
    machine.hear("ST2");
    machine.wait(11000);
    EXPECT_TRUE(machine.console("cmbConfiguration").enabled());
    machine.hear("ST7\rER12");
    EXPECT_EQ(machine.console("lblError").caption(), "12");
}

struct BadFile {
    const char* name;
    std::string content;
    const char* box; ///< what the operator is told; empty for nothing
};

class BadFiles : public testing::TestWithParam<BadFile> {};

TEST_P(BadFiles, LeaveTheServiceAtWork) {
    FaultyMachine machine;
    machine.memory.folder.put(GetParam().name, GetParam().content);
    machine.start();
    EXPECT_EQ(machine.box(), GetParam().box);
    EXPECT_TRUE(machine.application->link().PortOpen());
    expectService(machine);
}

std::string binary(std::size_t size) {
    std::string bytes(size, '\0');
    std::uint32_t state = 1;
    for (char& c : bytes) {
        state = state * 1664525U + 1013904223U;
        c = static_cast<char>(state >> 24U);
    }
    return bytes;
}

std::string huge(std::string_view begin) {
    return std::string(begin) + std::string(std::size_t{3} << 20, ' ');
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Kinds, BadFiles, testing::Values(
    BadFile{"Quillon.ini",    binary(5000),                         ""},
    BadFile{"Quillon.ini",    huge("[CONFIG]\r\nPORT=nonsense\r\n"), ""}, // larger than any configuration: not read
    BadFile{"Quillon.ini",    "[CONFIG]\r\nPORT=non",               "Not a valid number: PORT non"},
    BadFile{"Quillon.ini",    "[CONFIG]\r\nPORT=7\r\nWid",          "Cannot open port COM7"},
    BadFile{"temp.ini",       huge("[TM]\r\nTM=3\r\n"),             ""},
    BadFile{"error_info.txt", binary(5000),                         ""},
    BadFile{"error_info.txt", "12=Door op",                         ""}));
// clang-format on

TEST(Files, AFactThatCannotBeUsedIsTheDefault) {
    const auto read = [](const char* file) {
        MemoryFolder folder;
        folder.put("temp.ini", file);
        const auto facts = InstallationFacts::read(folder);
        return std::tuple(facts.techniqueMode, facts.ThirdTube, facts.SolapeFocos,
                          facts.AutocalibrationRetry);
    };
    EXPECT_EQ(read(""), std::tuple(4, false, false, false));
    EXPECT_EQ(read("[TM]\nTM=x\n[ThirdTube]\nThirdTube=?\n[SolapeFocos]\nSolapeFocos=x\n[AutocalRetry]"
                   "\nAutocalRetry=x"),
              std::tuple(4, false, false, false));
    EXPECT_EQ(read("[TM]\nTM=3\n[ThirdTube]\nThirdTube=1"), std::tuple(3, true, false, false));
    EXPECT_EQ(read("[SolapeFocos]\nSolapeFocos=True\n[ThirdTube]\nThirdTube= false "),
              std::tuple(4, false, true, false));
    EXPECT_EQ(read("[AutocalRetry]\nAutocalRetry=-1"), std::tuple(4, false, false, true));
}

// The log is an aid: a full disk or a folder that can't be written is no reason to disturb the service, and
// the warning that it was asked for comes up all the same.
TEST(Files, ALogThatCannotBeWrittenIsNoFaultOfTheService) {
    for (const int n : {1, 2, 5, 9}) {
        SCOPED_TRACE("write " + std::to_string(n));
        FaultyMachine machine;
        machine.logWrite = {n, true};
        machine.start("-logFile");
        EXPECT_THAT(machine.box(), HasSubstr("Log file active"));
        expectService(machine);
        EXPECT_GE(machine.logWrite.passed, n);
    }
    FaultyMachine machine;
    machine.folderFull = true;
    machine.start("-logFile");
    EXPECT_THAT(machine.box(), HasSubstr("Log file active"));
    EXPECT_EQ(machine.memory.folder.find("log.txt"), nullptr);
    expectService(machine);
}

TEST(Files, AFullLogGoesOnInANewOneAndTheOneBeforeIsKept) {
    MemoryPlatform machine;
    PanelHost panel(Kind::User, "panel", machine.time.schedule());
    for (const auto& [kind, name] :
         {std::pair{Kind::Frame, "fraDebug"}, {Kind::Frame, "fraStatus"}, {Kind::TextBox, "txtDebugComm"}}) {
        panel.add(kind, name);
    }
    CommunicationLog log(panel, machine.folder, machine.desktop);
    log.setLogActive(true);
    const std::string message(999'992, 'x'); // with its marks, a record of a million bytes
    for (int file = 0; file < 2; ++file) {
        for (int record = 0; record < 10; ++record) {
            log.sent(message);
        }
        EXPECT_EQ(machine.folder.find("log.txt")->size(), 10'000'000);
        log.sent(std::to_string(file));
        EXPECT_EQ(*machine.folder.find("log.txt"), "(Tx)" + std::to_string(file) + "\r\n\r\n");
        EXPECT_EQ(machine.folder.find("log-older.txt")->size(), 10'000'000);
        log.setLogActive(true);
    }
}

} // namespace
} // namespace quillon
