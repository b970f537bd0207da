#include <gmock/gmock.h>

#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "console/ctrQuillonConsole.h"
#include "link/TorvaneSerial.h"
#include "runtime/MemoryPlatform.h"
#include "shell/Recorder.h"
#include "tools/scenario/FarEnd.h"
#include "tools/scenario/Script.h"

namespace quillon {
namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

/// Lines of an output that hold the mark, without what stands in front of the time.
std::vector<std::string> linesWith(const std::string& output, std::string_view mark,
                                   std::size_t skipped = 0) {
    std::vector<std::string> found;
    std::istringstream in(output);
    for (std::string line; std::getline(in, line);) {
        if (line.find(mark) != std::string::npos) {
            found.push_back(line.substr(skipped));
        }
    }
    return found;
}

/// A machine that is never on time: it looks at its timers a few ms after they are due, as a busy PC does.
class LateMachine final : public EventLoop {
public:
    void processEvents() override { schedule.runDue(); }
    void pass(Milliseconds ms) {
        for (const Milliseconds end = clock.now() + ms; clock.now() < end;) {
            lateness_ = (lateness_ * 7 + 3) % 11; // 0 to 10
            clock.set(std::min(end, clock.now() + 1 + lateness_));
            schedule.runDue();
        }
    }

    VirtualClock clock;
    Schedule schedule{clock};
    MemorySerialPort port;
    MemoryUserStore store;
    MemoryFolder folder;
    MemoryDesktop desktop;
    MemoryPowerControl power;

private:
    Milliseconds lateness_ = 0;
};

class RecorderTest : public testing::Test {
protected:
    void start(std::string_view commandLine = {}, std::function<WallTime()> wallClock = {}) {
        recorder = std::make_unique<Recorder>(Platform{machine.schedule, machine, machine.port, machine.store,
                                                       machine.folder, machine.desktop, machine.power},
                                              disk.create("session"), commandLine, std::move(wallClock));
        application = std::make_unique<Application>(recorder->platform(), commandLine);
        application->onEnded = [this] { recorder->end(); };
        machine.port.onWritten = [this](std::string_view bytes) { far.written(bytes); };
        recorder->begin(*application);
        application->start();
        recorder->started();
    }
    void TearDown() override { application.reset(); }

    void pass(Milliseconds ms) { machine.pass(ms); }
    void click(ControlHost* host, std::string_view name) {
        press(host, name);
        application->input().release((*host)[name]);
    }
    void press(ControlHost* host, std::string_view name) {
        ASSERT_NE(host, nullptr);
        recorder->catchUp();
        ASSERT_TRUE(application->input().press((*host)[name])) << name;
    }
    ControlHost* console() { return &application->console(); }
    ControlHost* link() { return &application->link(); }
    ControlHost* panel(std::string_view key) { return application->console().keyed(key); }

    [[nodiscard]] const std::string& recording() const { return *disk.find("session"); }
    /// What the recording gives when it is played.
    [[nodiscard]] std::string replay(bool beyondGaps = false) const {
        std::ostringstream out;
        Script script(recording(), out, beyondGaps);
        EXPECT_NO_THROW((void)script.run()) << "line " << script.line() << " of\n" << recording();
        return out.str();
    }

    MemoryFolder disk;
    LateMachine machine;
    FarEnd far{machine.schedule, machine.port};
    std::unique_ptr<Recorder> recorder;
    std::unique_ptr<Application> application;
};

TEST_F(RecorderTest, AWholeSessionOnALateMachineComesBackToTheMillisecond) {
    machine.folder.put("Quillon.ini", "[CONFIG]\r\nPORT=3\r\nend\r\nWidth=15000\r\nHeight=11000\r\n");
    simulator::Options options;
    options.noisePercent = 3;
    start();
    far.simulate(options);
    pass(25'000);
    click(console(), "cmbManualCalibration");
    pass(2'000);
    click(panel("SelWSCal"), "cmdOK");
    pass(12'000);
    ASSERT_EQ(valueTo<std::int32_t>(application->link().operations().get("Phase")), 6);
    press(link(), "cmbCalValueUp");
    pass(6'000);
    application->input().release((*link())["cmbCalValueUp"]);
    pass(3'000);
    recorder->catchUp();
    application->input().slide((*link())["sldCalValue"], 77);
    recorder->windowResized(12'000, 9'000);
    application->resizeWindow(12'000, 9'000);
    pass(2'500);
    click(console(), "cmbClose");
    pass(20'000);
    press(console(), "cmbClose");
    recorder->catchUp();
    application->input().release((*console())["cmbClose"], false);
    pass(3'000);
    ASSERT_FALSE(application->ended()) << "the finger slid off";
    click(console(), "cmbClose");
    pass(10'000);
    ASSERT_TRUE(application->ended());

    const std::string played = replay();
    const auto sent = linesWith(recording(), " tx ", 2);
    EXPECT_THAT(sent, SizeIs(testing::Gt(40U)));
    EXPECT_GT(linesWith(recording(), "tx \"C+\"").size(), 8U) << "the held key repeats";
    EXPECT_EQ(linesWith(recording(), "tx \"CV0077\"").size(), 1U);
    EXPECT_EQ(linesWith(played, " tx "), sent);
    EXPECT_EQ(linesWith(recording(), "release Quillon.cmbClose outside").size(), 1U);
    EXPECT_THAT(linesWith(played, "refused"), IsEmpty());
    EXPECT_THAT(played, AllOf(StartsWith("0 opened 3"), EndsWith(" end\n")));
}

TEST_F(RecorderTest, WhatTheDeviceDidNotTakeIsToldBesideTheFrameAndInTheLog) {
    start("-logFile");
    pass(600);
    machine.port.setGone(true);
    pass(1400);
    const auto lost = linesWith(recording(), " lost ", 2);
    ASSERT_THAT(lost, SizeIs(1));
    EXPECT_THAT(recording(), HasSubstr("tx \"HU\"\n# " + lost[0]));
    EXPECT_EQ(*machine.folder.find("log.txt"), "(Tx)ST\r\n\r\n(--)the device is gone\r\n\r\n(Nx)HU\r\n\r\n");
}

TEST_F(RecorderTest, WhatTheConsoleDoesAndEveryFaultAreToldWithTheirCause) {
    start();
    machine.port.receive("ST2\r\n");
    pass(12'000);
    application->link().setDebugActive(true);
    const auto fail = [] { throw Fault(Fault::kTypeMismatch); };
    console()->timer("tmrResetTubeCounter").setTick(fail);
    (*console())["cmbReadExposureCounters"].on.click = fail;
    struct Row {
        const char* told;
        std::function<void()> happens;
        Milliseconds passes = 1100;
    };
    const Row rows[] = {
        {"fault 6 ended message \"HE99999\" (fmessHU)", [this] { machine.port.receive("HE99999\r\n"); }},
        {"fault 6 ended message \"URSCG99999,5,\" (fmessURS)",
         [this] { machine.port.receive("URSCG99999,5,\r\n"); }},
        {"fault 13 ended key Quillon.cmbReadExposureCounters",
         [this] { EXPECT_THROW(click(console(), "cmbReadExposureCounters"), Fault); }},
        {"fault 13 ended timer tmrResetTubeCounter",
         [this] {
             console()->timer("tmrResetTubeCounter").start(5);
             EXPECT_THROW(pass(1100), Fault);
             console()->timer("tmrResetTubeCounter").stop();
         }},
        {"run nothing -> entering configuration by key Quillon.cmbConfiguration",
         [this] { click(console(), "cmbConfiguration"); }},
        {"run entering configuration -> nothing by timer tmrConfigON",
         [this] { machine.port.receive("ST8\r\n"); }, 4000},
        {"run leaving configuration -> nothing by message \"ST6\" (fmessGeneratorPhase)",
         [this] {
             click(console(), "cmbConfiguration");
             machine.port.receive("ST6\r\n");
         }},
        {"run choosing a workstation -> nothing by the loss of the generator",
         [this] {
             machine.port.receive("ST2\r\n");
             pass(12'000);
             click(console(), "cmbManualCalibration");
             application->link().events().GeneratorERROR.raise(33, {}, 2);
         }},
    };
    for (const Row& row : rows) {
        const std::size_t before = recording().size();
        row.happens();
        pass(row.passes);
        EXPECT_EQ(linesWith(recording().substr(before), row.told).size(), 1U) << row.told << " in\n"
                                                                              << recording().substr(before);
        EXPECT_EQ((*link())["txtDebugComm"].text().find("(--)" + std::string(row.told)) != std::string::npos,
                  std::string_view(row.told).starts_with("fault"));
    }
}

TEST_F(RecorderTest, TheEndOfTheProgramComesBackWithWhatWasHeld) {
    start();
    machine.port.receive("ST2\r\n");
    pass(12'000);
    recorder->closeRequested();
    machine.clock.set(machine.clock.now() + 3);
    recorder->closeRequested();
    application->requestClose(); // is refused
    EXPECT_THAT(recording(), HasSubstr("\nclose\nwait 3\nclose\n"));
    press(console(), "cmbClose");
    pass(400);
    recorder->catchUp();
    application->input().releaseAll();
    recorder->leaveRequested();
    application->leave();
    pass(3'000);
    ASSERT_TRUE(application->ended());
    EXPECT_THAT(recording(), HasSubstr("release Quillon.cmbClose outside\ncall Quillon.LeaveNow\n"));
    const std::string played = replay();
    EXPECT_EQ(linesWith(played, " tx "), linesWith(recording(), " tx ", 2));
    EXPECT_THAT(played, EndsWith(" end\n"));
}

TEST_F(RecorderTest, TheHeaderHoldsWhatTheSessionStartedFrom) {
    machine.folder.put("temp.ini", "[TM]\nTM=3\n end \n");
    machine.desktop.setScreen(800, 600);
    machine.port.setFailing(4, true);
    machine.desktop.onBox = [this](const MemoryDesktop::Shown&) {
        pass(2500);
        machine.port.arrive(4);
        pass(1500);
    };
    start("-P4 -\"x\" -\x7F\xFC");
    EXPECT_THAT(
        recording(),
        HasSubstr("file temp.ini\n[TM]\nTM=3\n# end\nend\n"
                  "args \"-P4 -\\\"x\\\" -\\x7F\\xFC\"\nscreen 800 600\nport 4 fail\nstart\nbox stands\n"));
    EXPECT_THAT(recording(), Not(HasSubstr("file log.txt")));
    pass(5000);
    recorder->end();
    EXPECT_THAT(recording(), testing::ContainsRegex("\nport 4 comes\n(# .*\n|wait .*\n)*box goes\n"));
    const std::string played = replay();
    EXPECT_EQ(linesWith(played, "box critical \"Torvane Generator Service\" \"Cannot Open Port: 4\"").size(),
              1U);
    EXPECT_EQ(linesWith(played, "opened 4").size(), 1U);
    EXPECT_EQ(linesWith(played, " tx "), linesWith(recording(), " tx ", 2));
    EXPECT_THAT(linesWith(played, " tx "), SizeIs(testing::Ge(4U)));
}

TEST_F(RecorderTest, AQuestionsAnswerStandsInFrontOfWhatCameWhileItStood) {
    machine.desktop.onBox = [this](const MemoryDesktop::Shown& box) {
        if (box.box == MemoryDesktop::Box::Question) {
            pass(900);
            machine.port.receive("HE12\r\n");
            pass(1700);
        }
    };
    start("-d");
    machine.port.receive("ST2\r\n");
    pass(12'000);
    machine.desktop.answer(MemoryDesktop::Answer::Yes);
    press(console(), "cmbClose");
    pass(9'000);
    EXPECT_FALSE(machine.port.isOpen()) << "yes closes the port";
    const auto answer = recording().find("answer yes\n");
    ASSERT_NE(answer, std::string::npos);
    EXPECT_LT(recording().find("press Quillon.cmbClose"), answer);
    EXPECT_GT(recording().find("rx \"HE12\\r\\n\""), answer);
    EXPECT_THAT(replay(), HasSubstr("box question \"Torvane Generator Service\" "
                                    "\"Close the port and restart the PC?\" yes"));
}

TEST_F(RecorderTest, ARestartThatIsRefusedIsKnownToTheReplay) {
    machine.power.setRefusal("not \"now\"");
    start();
    machine.port.receive("ST2\r\n");
    pass(12'000);
    machine.desktop.answer(MemoryDesktop::Answer::Yes);
    press(console(), "cmbClose");
    pass(9'000);
    EXPECT_TRUE(machine.port.isOpen());
    recorder->end();
    EXPECT_THAT(recording(), HasSubstr("\npower refuse \"not \\\"now\\\"\"\n"));
    EXPECT_EQ(linesWith(replay(), " tx "), linesWith(recording(), " tx ", 2));
}

TEST_F(RecorderTest, WhatTheDiskDidNotTakeIsAGapThatIsToldAndEndsTheReplay) {
    std::int64_t set = 0;
    start({}, [this, &set] { return WallTime{machine.clock.now() + set, 60}; });
    machine.port.receive("ST2\r\n");
    pass(5'000);
    disk.setReadOnly(true);
    machine.port.receive("HE20\r\n");
    pass(3'300);
    disk.setReadOnly(false);
    const auto before = recording().size();
    set = 3'600'000;
    pass(4'000);
    machine.port.receive(std::string(2'000, '\xFF'));
    pass(4'000);
    EXPECT_THAT(recording().substr(before), testing::ContainsRegex("^wait [0-9]+\ngap 3[0-9]+ [0-9]+\n"));
    EXPECT_THAT(linesWith(recording().substr(before), " clock 1970-01-01T02:00:"), SizeIs(1));
    for (const std::string& line : linesWith(recording(), "rx ")) {
        EXPECT_LT(line.size(), 4'000U);
    }
    const std::string played = replay();
    EXPECT_EQ(linesWith(played, " tx "), linesWith(recording().substr(0, before), " tx ", 2));
    EXPECT_THAT(played, testing::ContainsRegex(" gap [0-9]+ [0-9]+\n$"));
    EXPECT_GT(linesWith(replay(true), " tx ").size(), linesWith(played, " tx ").size() + 4);
}

TEST_F(RecorderTest, BytesThatComeInsideAHandlerWaitForItsEnd) {
    start();
    machine.port.receive("ST2\r\n");
    pass(12'000);
    bool once = true;
    application->link().events().HUUpdate.connect([&](std::int16_t) {
        if (std::exchange(once, false)) {
            machine.port.receive("HE30\r\n");
            EXPECT_NE((*link())["txtHU"].caption(), "HU 30%");
        }
    });
    machine.port.receive("HE20\r\n");
    pass(20);
    EXPECT_EQ((*link())["txtHU"].caption(), "HU 30%");
}

} // namespace
} // namespace quillon
