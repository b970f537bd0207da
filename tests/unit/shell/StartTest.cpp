#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

#include "console/ctrQuillonConsole.h"
#include "runtime/MemoryPlatform.h"
#include "shell/Application.h"
#include "shell/SwitchHints.h"
#include "shell/frmMain.h"

namespace quillon {
namespace {

/// The application on a machine in memory.
class StartTest : public testing::Test {
protected:
    StartTest() {
        machine.port.onOpened = [this](int port, std::string_view settings) {
            opened = std::to_string(port) + " " + std::string(settings);
        };
    }

    void start(std::string_view commandLine, std::string_view configuration = {}) {
        application.reset();
        machine.folder.put("Quillon.ini", "[CONFIG]\r\n" + std::string(configuration));
        application = std::make_unique<Application>(Platform{machine.time.schedule(), machine.time,
                                                             machine.port, machine.store, machine.folder,
                                                             machine.desktop, machine.power},
                                                    commandLine);
        application->start();
    }

    [[nodiscard]] std::vector<std::string> boxes() const {
        std::vector<std::string> texts;
        for (const auto& box : machine.desktop.boxes()) {
            texts.push_back((box.box == MemoryDesktop::Box::Critical ? "!" : "") + box.text);
        }
        return texts;
    }
    [[nodiscard]] std::string title() const {
        const std::string& caption = application->form().caption();
        return caption.substr(std::min(caption.find('('), caption.size()));
    }

    MemoryPlatform machine;
    std::string opened;
    std::unique_ptr<Application> application;
};

struct Row {
    const char* commandLine;
    const char* configuration;
    const char* opened;
    const char* title;
    std::vector<std::string> boxes;
};

class StartTable : public StartTest, public testing::WithParamInterface<Row> {};

TEST_P(StartTable, PortTitleAndBoxes) {
    const Row& row = GetParam();
    start(row.commandLine, row.configuration);
    EXPECT_EQ(opened, row.opened);
    EXPECT_EQ(title(), row.title);
    EXPECT_EQ(boxes(), row.boxes);
    EXPECT_EQ(application->form().caption().find("Torvane Generator Service  Application (COM"), 0U);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(CommandLineAndFile, StartTable, testing::Values(
    Row{"",               "",            "1 19200,n,8,1", "(COM1, 19200, 8, 1)", {}},
    Row{"",               "port= \"4\"", "4 19200,n,8,1", "(COM4, 19200, 8, 1)", {}},
    Row{"",               "PORT=7",      "2 19200,n,8,1", "(COM7, 19200, 8, 1)", {"Cannot open port COM7"}},
    Row{"",               "PORT=\"\"",    "1 19200,n,8,1", "(COM1, 19200, 8, 1)", {}},
    Row{"",               "PORT=COM2",   "1 19200,n,8,1", "(COM1, 19200, 8, 1)", {"Not a valid number: PORT COM2"}},
    Row{"",               "PORT=40000",  "1 19200,n,8,1", "(COM1, 19200, 8, 1)", {"Not a valid number: PORT 40000"}},
    Row{"-P3 -S9600",     "PORT=5",      "3 19200,n,8,1", "(COM3, 9600, 8, 1)",  {}},
    Row{"-p3",            "PORT=5",      "1 19200,n,8,1", "(COM1, 19200, 8, 1)", {}},
    Row{"P6 -",           "PORT=5",      "6 19200,n,8,1", "(COM6, 19200, 8, 1)", {}},
    Row{"-P2-P4",         "",            "4 19200,n,8,1", "(COM4, 19200, 8, 1)", {}},
    Row{"-P99 -S0",       "",            "2 19200,n,8,1", "(COM99, 0, 8, 1)",    {"Cannot open port COM99",
                                                                                  "Not a valid baudrate: 0"}},
    Row{"-Sabc -P1e9",    "",            "1 19200,n,8,1", "(COM1, 19200, 8, 1)", {"Not a valid number: -S abc",
                                                                                  "Not a valid number: -P 1e9"}},
    Row{"-S115200 -P",    "",            "1 19200,n,8,1", "(COM1, 19200, 8, 1)", {"Not a valid number: -S 115200",
                                                                                  "Not a valid number: -P "}},
    Row{"-logFile",       "PORT=5",      "1 19200,n,8,1", "(COM1, 19200, 8, 1)",
        {"Log file active. Remember to remove -logFile from command line"}}
));
// clang-format on

struct Size {
    const char* configuration;
    Place window;
    Twips consoleHeight;
    bool topMost;
    std::size_t boxes;
};

class SizeTable : public StartTest, public testing::WithParamInterface<Size> {};

TEST_P(SizeTable, WindowConsoleAndOrder) {
    const Size& row = GetParam();
    machine.desktop.setScreen(1024, 768);
    start("", row.configuration);
    EXPECT_EQ(application->form().place(), row.window);
    EXPECT_EQ(application->console().place(), (Place{0, 0, row.window.width, row.consoleHeight}));
    EXPECT_EQ(application->main().topMost(), row.topMost);
    EXPECT_EQ(machine.desktop.topMost(), row.topMost);
    EXPECT_EQ(boxes().size(), row.boxes);

    const Twips below = row.window.height - row.consoleHeight;
    application->resizeWindow(8000, 5000);
    EXPECT_EQ(application->console().place(), (Place{0, 0, 8000, 5000 - below}));
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(File, SizeTable, testing::Values(
    Size{"",                                             {0, 0, 9510, 6840},   6840,  false, 0},
    Size{"Width=12000\nHeight=9000\nICON_SIZE=2",        {0, 0, 12000, 9000},  8750,  true,  0},
    Size{"FitToScreen=YES",                              {0, 0, 15180, 11340}, 11090, false, 0},
    Size{"FitToScreen=yes",                              {0, 0, 9510, 6840},   6840,  false, 0},
    Size{"Height=9000",                                  {0, 0, 9510, 6840},   6840,  false, 0},
    Size{"Width=12000",                                  {0, 0, 9510, 6840},   6840,  false, 1},
    Size{"Width=12000\nHeight=-1",                       {0, 0, 9510, 6840},   6840,  false, 1},
    Size{"Width=0.4\nHeight=0\nFitToScreen=YES",         {0, 0, 15180, 11340}, 11090, false, 2},
    Size{"Width=99999\nHeight=tall\nICON_SIZE=x",        {0, 0, 9510, 6840},   6840,  false, 3}
));
// clang-format on

TEST_F(StartTest, TheLampsHaveThePictureForTheConsolesSize) {
    // The console has 12 pixels less in its width and 28.7 less in its height.
    for (const auto& [width, height, size] : {std::tuple{1037, 798, 0},
                                              {1037, 796, 3},
                                              {1036, 798, 3},
                                              {813, 630, 3},
                                              {813, 628, 2},
                                              {812, 630, 2},
                                              {653, 509, 2},
                                              {653, 508, 1},
                                              {652, 509, 1}}) {
        machine.desktop.setScreen(width, height);
        start("-FitToScreen");
        EXPECT_EQ(application->console()["cmdExposure"].artSize(), size) << width << "x" << height;
    }
}

TEST_F(StartTest, TheHandLetsGoOfWhatGoes) {
    start("");
    ControlFactory factory;
    factory.add("panel", [this] {
        return std::make_unique<ControlHost>(Kind::User, "panel", machine.time.schedule());
    });
    ControlHost& panel = application->console().addByClass("panel", "Extra", factory);
    Control& key = panel.add(Kind::Button, "key");
    panel.setVisible(true);
    int releases = 0;
    key.on.release = [&releases] { ++releases; };
    application->input().press(key);
    application->console().removeKeyed("Extra");
    application->input().release(key);
    EXPECT_EQ(releases, 0);
    application.reset();
    EXPECT_FALSE(machine.port.isOpen());
}

TEST(SwitchHints, AreGivenForWhatTheConsoleDoesNotKnow) {
    using testing::ElementsAre;
    EXPECT_THAT(switchHints("-P2 -S9600 -FitToScreen -ResetCounters -ORLA -LOGFILE -swSync -D"),
                ElementsAre());
    EXPECT_THAT(switchHints("-P2-ORLA"), ElementsAre());
    EXPECT_THAT(switchHints("P4 -S9600"), ElementsAre()) << "it is obeyed";
    EXPECT_THAT(switchHints("d -S9600"), ElementsAre("\"d\" is no switch: they begin with a hyphen"));
    EXPECT_THAT(switchHints("-orla"), ElementsAre("\"-orla\" is no switch; it is written -ORLA"));
    EXPECT_THAT(switchHints("-debug"), ElementsAre("\"-debug\" is no switch, and is taken for -d"));
    EXPECT_THAT(switchHints("-ORLAndo"), ElementsAre("\"-ORLAndo\" is no switch"));
    EXPECT_THAT(switchHints("--wibble -P2"), ElementsAre("\"-wibble\" is no switch"));
    EXPECT_THAT(switchHints("ORLA"), ElementsAre("\"ORLA\" is no switch: they begin with a hyphen"));
}

} // namespace
} // namespace quillon
