#include <gmock/gmock.h>

#include <fstream>
#include <iterator>
#include <set>
#include <string>

#include "base/Text.h"
#include "console/ctrQuillonConsole.h"
#include "runtime/MemoryPlatform.h"
#include "shell/Application.h"
#include "sim/Options.h"
#include "tools/protocol/Document.h"
#include "tools/protocol/Workflows.h"
#include "tools/visit/ReportTexts.h"

namespace quillon {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string contentOf(const std::string& name) {
    std::ifstream file(QUILLON_SOURCE_DIR "/" + name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

TEST(CommittedFiles, DocumentsAreWhatTheTablesSay) {
    EXPECT_TRUE(contentOf("docs/protocol.md") == protocolDocument())
        << "run quillon-protocol > docs/protocol.md and commit it";
    EXPECT_TRUE(contentOf("docs/workflows.md") == workflowsDocument())
        << "run quillon-protocol workflows > docs/workflows.md and commit it";
    EXPECT_TRUE(contentOf("samples/default.machine") == simulator::profileOf({}))
        << "run generator-sim --print-machine > samples/default.machine and commit it";
}

/// A number of times that each of the places %1, %2 stands in a text.
std::multiset<char> places(std::string_view text) {
    std::multiset<char> found;
    for (auto at = text.find('%'); at != std::string_view::npos; at = text.find('%', at + 1)) {
        found.insert(text.substr(at + 1, 1)[0]);
    }
    return found;
}

TEST(CommittedFiles, TheGermanReportHasEachTextAndItsPlaces) {
    const std::string german = contentOf("samples/report-de.txt");
    ReportTexts texts;
    EXPECT_THAT(texts.replace(german), IsEmpty());
    std::set<std::string> given;
    for (const std::string_view line : split(german, "\n")) {
        if (!line.empty() && !line.starts_with('#')) {
            EXPECT_TRUE(given.emplace(line.substr(0, line.find('='))).second) << line << " stands twice";
        }
    }
    for (const ReportText& row : kReportTexts) {
        EXPECT_EQ(given.erase(std::string(row.name)), 1U) << row.name << " is not translated";
        EXPECT_EQ(places(texts.named(row.name)), places(row.english)) << row.name;
    }
    EXPECT_THAT(given, IsEmpty());
    EXPECT_THAT(ReportTexts().replace("x\n# y\nTitle = a\r\nNone=b\n"),
                ElementsAre("line 1: there is no such text", "line 4: there is no such text"));
}

class TextsTest : public testing::Test {
protected:
    Application& start(std::string_view texts, std::string_view commandLine = "") {
        machine.folder.put("texts.txt", texts);
        application.emplace(Platform{machine.time.schedule(), machine.time, machine.port, machine.store,
                                     machine.folder, machine.desktop, machine.power},
                            commandLine);
        application->start();
        return *application;
    }
    [[nodiscard]] const Control& control(std::string_view name) {
        return application->console().ControlHost::at(name);
    }

    MemoryPlatform machine;
    std::optional<Application> application;
};

TEST_F(TextsTest, TheGermanFileNamesEveryTextAndNoOther) {
    const std::string german = contentOf("samples/texts-de.txt");
    const auto names = start(german).console().textNames();
    EXPECT_THAT(machine.desktop.boxes(), IsEmpty()) << "each name exists, each character can be shown";
    std::set<std::string> given;
    for (const std::string_view line : split(german, "\n")) {
        if (!line.empty() && !line.starts_with('#')) {
            EXPECT_TRUE(given.emplace(line.substr(0, line.find('='))).second) << line << " stands twice";
        }
    }
    EXPECT_EQ(given, std::set<std::string>(names.begin(), names.end()));
}

TEST_F(TextsTest, TextsReachPromptsCaptionsAndDialogs) {
    start("\xEF\xBB\xBFscmbClose = Schlie\xC3\x9F"
          "en\r\n"
          "SEnterConfiguration=a\\nb\\\\n\\c\r\n"
          "sResetTubeCounter=L\r\n"
          "ctrSelWS.sOK=Weiter\r\n");
    EXPECT_THAT(machine.desktop.boxes(), IsEmpty());
    EXPECT_EQ(control("cmbClose").caption(), "Schlie\xDF"
                                             "en");
    EXPECT_EQ(control("cmdResetT3").caption(), "L");
    machine.port.receive("ST2\r\n");
    machine.time.advance(12'000);
    application->input().click(application->console()["cmbManualCalibration"]);
    ASSERT_NE(application->console().keyed("SelWSCal"), nullptr);
    EXPECT_EQ((*application->console().keyed("SelWSCal"))["cmdOK"].caption(), "Weiter");
    EXPECT_EQ((*application->console().keyed("SelWSCal"))["cmbWSUp"].caption(), "Up");
    application->console().removeKeyed("SelWSCal");
    machine.port.receive("ST8\r\n");
    machine.port.receive("ST2\r\n");
    machine.time.advance(12'000);
    application->console()["cmbConfiguration"].on.click();
    EXPECT_EQ(control("lblHelp").caption(), "a\r\nb\\n\\c\r\nPlease Wait");
}

TEST_F(TextsTest, MessageBoxesSayWhatTheTextsSay) {
    std::string texts;
    for (const std::string_view name : {"sBoxTitle", "sShutdownQuestion", "sRestartRefused", "sNoNumber",
                                        "sNoBaudrate", "sNoPort", "sCannotOpenPort"}) {
        texts.append(name).append("=").append(name).append(" %2 %1%\n");
    }
    for (int port = 0; port < 10; ++port) {
        machine.port.setFailing(port, true);
    }
    machine.power.setRefusal("%1");
    start(texts, "-P99 -S%2 -S1");
    machine.desktop.answer(MemoryDesktop::Answer::Yes);
    application->input().press(application->console()["cmbClose"]);
    machine.time.advance(4000);
    std::vector<std::string> said;
    for (const MemoryDesktop::Shown& box : machine.desktop.boxes()) {
        EXPECT_EQ(box.title, "sBoxTitle %2 %1%");
        said.push_back(box.text);
    }
    EXPECT_THAT(said, ElementsAre("sNoNumber %2 -S%", "sNoPort %2 99%", "sNoBaudrate %2 1%",
                                  "sCannotOpenPort %2 99%", "sShutdownQuestion %2 %1%",
                                  "sCannotOpenPort %2 99%", "sRestartRefused %2 %1%"));
}

TEST_F(TextsTest, WhatCannotBeUsedIsToldInOneBoxAndTheRestIsUsed) {
    start("# Texte\n\n"
          "sPleaseWait\n"
          "StopBits=2\n"
          "sClosing=\xCE\xB1\n"
          "ctrQuillonError.sMessage=x\n"
          "scmbClose=Ende\n");
    ASSERT_EQ(machine.desktop.boxes().size(), 1U);
    EXPECT_THAT(split(machine.desktop.boxes()[0].text, "\r\n"),
                ElementsAre("Not all of \"texts.txt\" can be used.", "Line 3: no \"=\" behind a name",
                            "Line 4: StopBits: there is no such text",
                            "Line 5: sClosing: a character that cannot be shown, or no UTF-8",
                            "Line 6: ctrQuillonError.sMessage: there is no such text"));
    EXPECT_EQ(control("cmbClose").caption(), "Ende");
}

} // namespace
} // namespace quillon
